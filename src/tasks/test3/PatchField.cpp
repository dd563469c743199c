#include "PatchField.h"

#include "randomness.h"

namespace {

int draw(int n)
{
    return randomness::next() % n;
}

/// One of the three directions other than this one.
int other(int direction)
{
    const int drawn = draw(PatchField::directions - 1);
    return drawn < direction ? drawn : drawn + 1;
}

template <std::size_t N>
void drawEach(std::array<int, N> &patches)
{
    for (int &patch : patches)
        patch = draw(PatchField::directions);
}

template <std::size_t N>
void drawOthers(std::array<int, N> &patches, int than)
{
    for (int &patch : patches)
        patch = other(than);
}

PatchField scattered()
{
    PatchField field;
    drawEach(field.ring);
    for (auto &group : field.dot)
        drawEach(group);
    return field;
}

PatchField crowded(int shown)
{
    PatchField field;
    const int common = draw(PatchField::directions);
    field.ring.fill(common);
    const int stray = draw(PatchField::ringSize - 1);
    field.ring[std::size_t(stray < shown ? stray : stray + 1)] = other(common);
    for (auto &group : field.dot) {
        group.fill(common);
        const int patch = draw(PatchField::groupSize); // before its direction
        group[std::size_t(patch)] = other(common);
    }
    return field;
}

PatchField singled(int shown)
{
    PatchField field;
    const int own = draw(PatchField::directions);
    drawOthers(field.ring, own);
    field.ring[std::size_t(shown)] = own;
    for (auto &group : field.dot) {
        drawOthers(group, own);
        group[std::size_t(draw(PatchField::groupSize))] = own;
    }
    return field;
}

} // namespace

PatchField PatchField::drawn(Condition condition, int shown)
{
    switch (condition) {
    case Crowd:
        return crowded(shown);
    case Single:
        return singled(shown);
    default:
        return scattered();
    }
}
