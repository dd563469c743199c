#include "DrawArrow.h"
#include "PatchBoard.h"
#include "PatchGlance.h"

#include <QTest>

#include <memory>
#include <vector>

/// What the simulated patient sees of the patch to which an arrow points.
class tst_PatchGlance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theDirectionIsSeenAtEveryPlaceAndAnyTwoMoments_data();
    void theDirectionIsSeenAtEveryPlaceAndAnyTwoMoments();
    void theOtherPatchesDoNotMatter();
    void whatIsCoveredIsNotSeen();
    void behindTheEdgeOfTheWindowNothingIsSeen();
    void fourOfTheEightPlacesAreOblique();
    void onlyAnArrowIsAnArrow();

private:
    void point(int place) { m_arrow->rotation = 45.0 * place; }
    /// All patches of the ring and of the groups in directions of their own, but this one.
    void setField(int place, int direction);
    PatchGlance at(int step);

    std::unique_ptr<QWidget> m_window;
    PatchBoard *m_board = nullptr;
    DrawArrow *m_arrow = nullptr;
};

namespace {
constexpr int spacing = 15; // pixels from line to line

using Direction = PatchGlance::Direction;

/// 0 to 3, or -1 for none.
int seen(const std::optional<Direction> &direction)
{
    return direction ? int(*direction) : -1;
}

/// What anybody sees of lines that moved in a direction by so many pixels: the shorter way.
int shorterWay(int direction, int pixels)
{
    if (pixels == 0)
        return -1;
    return pixels <= spacing / 2 ? direction : (direction + 2) % 4;
}
} // namespace

void tst_PatchGlance::init()
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(1280, 1024);
    m_board = new PatchBoard(m_window.get());
    m_board->move(640 - 360, 512 - 360);
    m_arrow = new DrawArrow(m_window.get());
    m_arrow->setGeometry(640 - 50, 512 - 50, 100, 100);
    m_window->show();
}

void tst_PatchGlance::setField(int place, int direction)
{
    PatchField field;
    for (std::size_t group = 0; group < field.dot.size(); ++group) {
        for (std::size_t point = 0; point < field.dot[group].size(); ++point)
            field.dot[group][point] = int(group + point + 1) % 4;
    }
    for (int ring = 0; ring < int(field.ring.size()); ++ring)
        field.ring.at(std::size_t(ring)) = ring == place ? direction : (direction + 1 + ring) % 4;
    m_board->setField(field);
}

PatchGlance tst_PatchGlance::at(int step)
{
    m_board->drift(step);
    return PatchGlance(*m_arrow);
}

void tst_PatchGlance::theDirectionIsSeenAtEveryPlaceAndAnyTwoMoments_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("direction");
    constexpr const char *places[] = {"E", "SE", "S", "SW", "W", "NW", "N", "NE"};
    constexpr const char *directions[] = {"right", "down", "left", "up"};
    for (int place = 0; place < 8; ++place) {
        for (int direction = 0; direction < 4; ++direction)
            QTest::addRow("%s, %s", places[place], directions[direction]) << place << direction;
    }
}

void tst_PatchGlance::theDirectionIsSeenAtEveryPlaceAndAnyTwoMoments()
{
    QFETCH(int, place);
    QFETCH(int, direction);
    point(place);
    setField(place, direction);
    std::vector<PatchGlance> glances;
    for (int step = 0; step < spacing; ++step)
        glances.push_back(at(step));
    for (int first = 0; first < spacing; ++first) {
        for (int second = 0; second < spacing; ++second) {
            const int moved = (second - first + spacing) % spacing;
            const auto found = glances[std::size_t(second)].movedSince(glances[std::size_t(first)]);
            QVERIFY2(
                seen(found) == shorterWay(direction, moved),
                qPrintable(
                    QStringLiteral("from %1 to %2: %3").arg(first).arg(second).arg(seen(found))));
        }
    }
}

void tst_PatchGlance::theOtherPatchesDoNotMatter()
{
    point(3);
    setField(3, 1);
    const PatchGlance one = at(4);
    PatchField field; // the others turn round in between
    for (auto &group : field.dot)
        group.fill(2);
    field.ring = {2, 2, 2, 1, 2, 2, 2, 2};
    m_board->setField(field);
    QCOMPARE(seen(at(7).movedSince(one)), 1);
}

void tst_PatchGlance::whatIsCoveredIsNotSeen()
{
    point(0);
    setField(0, 2);
    QWidget cover(m_window.get());
    cover.setAutoFillBackground(true);
    cover.setGeometry(640 + 84 - 30, 512 - 30, 60, 60);
    cover.show();
    const PatchGlance covered = at(2);
    QCOMPARE(seen(at(5).movedSince(covered)), -1);
    cover.hide();
    const PatchGlance open = at(2);
    QCOMPARE(seen(at(5).movedSince(open)), 2);
}

void tst_PatchGlance::behindTheEdgeOfTheWindowNothingIsSeen()
{
    m_window->resize(640 + 60, 1024);
    point(0);
    setField(0, 3);
    const PatchGlance before = at(2);
    QCOMPARE(seen(at(5).movedSince(before)), -1);
    point(4);
    setField(4, 3);
    const PatchGlance opposite = at(2);
    QCOMPARE(seen(at(5).movedSince(opposite)), 3);
}

void tst_PatchGlance::fourOfTheEightPlacesAreOblique()
{
    for (int place = 0; place < 8; ++place) {
        point(place);
        QCOMPARE(PatchGlance::isOblique(*m_arrow), place % 2 == 1);
    }
}

void tst_PatchGlance::onlyAnArrowIsAnArrow()
{
    QCOMPARE(PatchGlance::arrow(m_arrow), m_arrow);
    QVERIFY(!PatchGlance::arrow(m_board));
    QVERIFY(!PatchGlance::arrow(m_window.get()));
}

QTEST_MAIN(tst_PatchGlance)
#include "tst_PatchGlance.moc"
