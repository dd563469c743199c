#include "Random.h"

#include "TimeSource.h"
#include "randomness.h"

namespace {
std::vector<int> draw(int n, quint32 offset = 0)
{
    return randomness::shuffled(n, TimeSource::current().seedSeconds() + offset);
}
} // namespace

Random::Random(QWidget *parent)
    : QWidget(parent)
{
    hide(); // it shows nothing, and must not catch a click of the patient
}

std::vector<int> Random::generateRand3() const
{
    return draw(3);
}
std::vector<int> Random::generateRand5() const
{
    return draw(5);
}
std::vector<int> Random::generateRand6() const
{
    return draw(6);
}
std::vector<int> Random::generateRand8() const
{
    return draw(8);
}
std::vector<int> Random::generateRand8_a() const
{
    return draw(8);
}
std::vector<int> Random::generateRand8_b() const
{
    return draw(8, 500);
}
std::vector<int> Random::generateRand8_c() const
{
    return draw(8, 1000);
}
std::vector<int> Random::generateRand9() const
{
    return draw(9);
}
std::vector<int> Random::generateRand10() const
{
    return draw(10);
}
std::vector<int> Random::generateRand12() const
{
    return draw(12);
}

std::vector<int> Random::generateRand12_3() const
{
    return randomness::sectors(TimeSource::current().seedSeconds());
}
