#include "DrawLineH.h"
#include "DrawLineV.h"
#include "DrawRectangle.h"
#include "PatchBoard.h"
#include "compass.h"
#include "randomness.h"

#include <QCoreApplication>
#include <QImage>
#include <QPalette>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>
#include <vector>

/// The board of patches has, pixel for pixel, the picture of 80 times three stimuli, of which one
/// moves.
class tst_PatchBoard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePatchesFillAGridWithoutItsCentre();
    void aPatchStandsInItsGroup_data();
    void aPatchStandsInItsGroup();
    void aRingPatchLiesInItsDirection_data();
    void aRingPatchLiesInItsDirection();
    void theBoardHasRoomForAllPatches();
    void aFieldAtRestLooksAsItsStimuli();
    void aDriftingFieldLooksAsItsStimuli_data();
    void aDriftingFieldLooksAsItsStimuli();
    void patchesOfAllDirectionsDriftSideBySide();
    void everyStepOfADriftCanBeSeen_data();
    void everyStepOfADriftCanBeSeen();
    void theBoardStandsAboutItsOwnCentre();
    void onADenseScreenTheBoardLooksAsItsStimuliToo();
    void afterFifteenStepsTheDriftBeginsAgain();
    void aPatchMovesInItsDirection_data();
    void aPatchMovesInItsDirection();
    void atRestNoPatchIsMoved();
    void theDirectionsAreThoseOfTheField();
    void aBoardWithoutAFieldIsAtRest();
};

namespace {
constexpr int groups = 8;
constexpr int groupSize = 9;
constexpr int ring = 8;
constexpr int patches = groups * groupSize + ring;

/// Where the patches are, from the centre, y growing downwards.
constexpr std::array<QPoint, groups> groupCentres{
    QPoint(-252, 252), QPoint(0, 252),     QPoint(252, 252), QPoint(-252, 0),
    QPoint(252, 0),    QPoint(-252, -252), QPoint(0, -252),  QPoint(252, -252)};
constexpr std::array<QPoint, groupSize> points{QPoint(-84, 84),  QPoint(0, 84),  QPoint(84, 84),
                                               QPoint(-84, 0),   QPoint(0, 0),   QPoint(84, 0),
                                               QPoint(-84, -84), QPoint(0, -84), QPoint(84, -84)};
constexpr std::array<QPoint, ring> ringPoints{QPoint(84, 0),   QPoint(84, 84), QPoint(0, 84),
                                              QPoint(-84, 84), QPoint(-84, 0), QPoint(-84, -84),
                                              QPoint(0, -84),  QPoint(84, -84)};

std::vector<QPoint> places()
{
    std::vector<QPoint> all;
    for (const QPoint &group : groupCentres) {
        for (const QPoint &point : points)
            all.push_back(group + point);
    }
    all.insert(all.end(), ringPoints.begin(), ringPoints.end());
    return all;
}

/// A black window, as the task is one.
class Ground : public QWidget
{
public:
    explicit Ground(const QSize &size = {720, 720})
    {
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::black);
        setPalette(palette);
        setAutoFillBackground(true);
        resize(size);
    }
    QImage picture() { return grab().toImage().convertToFormat(QImage::Format_RGB32); }
};

/// 80 patches of three stimuli each, one on top of the other.
class Stimuli : public Ground
{
public:
    Stimuli()
    {
        for (const QPoint &place : places()) {
            const QPoint centre = QPoint(360, 360) + place;
            auto *frame = new DrawRectangle(this);
            auto *across = new DrawLineH(this);
            auto *upright = new DrawLineV(this);
            frame->setGeometry(QRect(centre - QPoint(21, 21), QSize(42, 42)));
            across->resize(48, 48);
            upright->resize(48, 48);
            m_rest.push_back(centre - QPoint(24, 24));
            m_across.push_back(across);
            m_upright.push_back(upright);
        }
    }

    /// The lines so many pixels from their rest place, each patch in its direction.
    void move(const std::vector<int> &directions, int shift)
    {
        for (std::size_t patch = 0; patch < m_rest.size(); ++patch) {
            QPoint across = m_rest[patch];
            QPoint upright = m_rest[patch];
            switch (directions[patch]) {
            case 0:
                upright.rx() += shift;
                break;
            case 1:
                across.ry() += shift;
                break;
            case 2:
                upright.rx() -= shift;
                break;
            default:
                across.ry() -= shift;
            }
            m_across[patch]->move(across);
            m_upright[patch]->move(upright);
        }
    }

private:
    std::vector<QPoint> m_rest;
    std::vector<QWidget *> m_across;
    std::vector<QWidget *> m_upright;
};

PatchField fieldOf(const std::vector<int> &directions)
{
    PatchField field;
    auto next = directions.begin();
    for (auto &group : field.dot) {
        for (int &direction : group)
            direction = *next++;
    }
    for (int &direction : field.ring)
        direction = *next++;
    return field;
}

std::vector<int> mixedDirections(quint32 seed)
{
    randomness::seed(seed);
    std::vector<int> directions(patches);
    std::ranges::generate(directions, [] { return randomness::next() % 4; });
    return directions;
}

/// Where two pictures begin to differ; nothing if they don't.
QString difference(const QImage &actual, const QImage &expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("sizes");
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y))
                return QStringLiteral("(%1, %2) is %3 and not %4")
                    .arg(x)
                    .arg(y)
                    .arg(actual.pixel(x, y), 0, 16)
                    .arg(expected.pixel(x, y), 0, 16);
        }
    }
    return {};
}

/// Whether nothing is coloured.
bool isGray(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qRed(pixel) != qGreen(pixel) || qRed(pixel) != qBlue(pixel))
                return false;
        }
    }
    return true;
}

/// The pixels of the screen that one of a widget takes; a test of its own runs at 2.
double density()
{
    return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
}

void addDirections()
{
    QTest::addColumn<int>("direction");
    QTest::newRow("right") << 0;
    QTest::newRow("down") << 1;
    QTest::newRow("left") << 2;
    QTest::newRow("up") << 3;
}
} // namespace

void tst_PatchBoard::thePatchesFillAGridWithoutItsCentre()
{
    std::set<std::pair<int, int>> seen;
    for (int patch = 0; patch < patches; ++patch) {
        const QPoint place = PatchBoard::offset(patch);
        seen.emplace(place.x(), place.y());
    }
    std::set<std::pair<int, int>> grid;
    for (int row = -4; row <= 4; ++row) {
        for (int column = -4; column <= 4; ++column)
            grid.emplace(84 * column, 84 * row);
    }
    grid.erase({0, 0});
    QCOMPARE(PatchBoard::patches, 80);
    QCOMPARE(seen, grid);
}

void tst_PatchBoard::aPatchStandsInItsGroup_data()
{
    QTest::addColumn<int>("group");
    for (int group = 0; group < groups; ++group)
        QTest::addRow("group %d", group) << group;
}

void tst_PatchBoard::aPatchStandsInItsGroup()
{
    QFETCH(const int, group);
    for (int point = 0; point < groupSize; ++point)
        QCOMPARE(PatchBoard::offset(group * groupSize + point),
                 groupCentres.at(std::size_t(group)) + points.at(std::size_t(point)));
}

void tst_PatchBoard::aRingPatchLiesInItsDirection_data()
{
    QTest::addColumn<int>("place");
    for (int place = 0; place < ring; ++place)
        QTest::addRow("ring patch %d", place) << place;
}

void tst_PatchBoard::aRingPatchLiesInItsDirection()
{
    QFETCH(const int, place);
    const QPoint offset = PatchBoard::ringOffset(place);
    QCOMPARE(offset, ringPoints.at(std::size_t(place)));
    QCOMPARE(PatchBoard::offset(groups * groupSize + place), offset);
    // Where an arrow in the centre that is turned to it points.
    const double turned = std::atan2(offset.y(), offset.x()) * 180.0 / compass::pi;
    QCOMPARE((qRound(turned) + 360) % 360, compass::_tabRot.at(std::size_t(place)));
}

void tst_PatchBoard::theBoardHasRoomForAllPatches()
{
    const PatchBoard board(nullptr);
    QCOMPARE(board.size(), QSize(720, 720));
    const QRect around(-360, -360, 720, 720);
    for (int patch = 0; patch < patches; ++patch)
        QVERIFY(around.contains(QRect(PatchBoard::offset(patch) - QPoint(21, 21), QSize(42, 42))));
}

void tst_PatchBoard::aFieldAtRestLooksAsItsStimuli()
{
    Ground ground;
    PatchBoard board(&ground);
    QCOMPARE(board.devicePixelRatioF(), density());
    board.setField(fieldOf(mixedDirections(1)));
    board.rest();
    Stimuli stimuli;
    stimuli.move(mixedDirections(1), 0);
    const QImage picture = ground.picture();
    QCOMPARE(picture.size(), QSize(720, 720) * density());
    QCOMPARE(difference(picture, stimuli.picture()), QString());
    QVERIFY(isGray(picture));
    // A white middle between two lines, a line, the black between two patches, and in the centre
    // none.
    const auto at = [&picture](int x, int y) {
        return QColor(picture.pixel(QPoint(360 + x, 360 + y) * density()));
    };
    QCOMPARE(at(84, 0), QColor(Qt::white));
    QCOMPARE(at(84 - 7, 0), QColor(Qt::black));
    QCOMPARE(at(42, 0), QColor(Qt::black));
    QCOMPARE(at(0, 0), QColor(Qt::black));
}

void tst_PatchBoard::aDriftingFieldLooksAsItsStimuli_data()
{
    addDirections();
}

void tst_PatchBoard::aDriftingFieldLooksAsItsStimuli()
{
    QFETCH(const int, direction);
    const std::vector<int> directions(patches, direction);
    Ground ground;
    PatchBoard board(&ground);
    board.setField(fieldOf(directions));
    Stimuli stimuli;
    for (int shift = 0; shift < 15; ++shift) {
        board.drift(shift);
        stimuli.move(directions, shift);
        QCOMPARE(difference(ground.picture(), stimuli.picture()), QString());
    }
}

void tst_PatchBoard::patchesOfAllDirectionsDriftSideBySide()
{
    Ground ground;
    PatchBoard board(&ground);
    Stimuli stimuli;
    for (quint32 seed = 1; seed <= 5; ++seed) {
        const std::vector<int> directions = mixedDirections(seed);
        board.setField(fieldOf(directions));
        for (const int shift : {1, 4, 7, 14}) {
            board.drift(shift);
            stimuli.move(directions, shift);
            QCOMPARE(difference(ground.picture(), stimuli.picture()), QString());
        }
    }
}

void tst_PatchBoard::everyStepOfADriftCanBeSeen_data()
{
    addDirections();
}

void tst_PatchBoard::everyStepOfADriftCanBeSeen()
{
    QFETCH(const int, direction);
    Ground ground;
    PatchBoard board(&ground);
    board.setField(fieldOf(std::vector<int>(patches, direction)));
    const QImage rest = ground.picture();
    QImage last = rest;
    for (int shift = 1; shift < 15; ++shift) {
        board.drift(shift);
        const QImage next = ground.picture();
        QVERIFY(next != last);
        QVERIFY(next != rest);
        last = next;
    }
}

void tst_PatchBoard::theBoardStandsAboutItsOwnCentre()
{
    Ground large({1000, 900});
    PatchBoard board(&large);
    board.setField(fieldOf(mixedDirections(7)));
    board.drift(5);
    board.move(140, 90);
    Stimuli stimuli;
    stimuli.move(mixedDirections(7), 5);
    const QRect place(QPoint(140, 90) * density(), QSize(720, 720) * density());
    const QImage picture = large.picture();
    QCOMPARE(difference(picture.copy(place), stimuli.picture()), QString());
}

void tst_PatchBoard::onADenseScreenTheBoardLooksAsItsStimuliToo()
{
    QProcess dense;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    dense.setProcessEnvironment(environment);
    dense.setProcessChannelMode(QProcess::MergedChannels);
    dense.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("aFieldAtRestLooksAsItsStimuli"),
                 QStringLiteral("aDriftingFieldLooksAsItsStimuli"),
                 QStringLiteral("patchesOfAllDirectionsDriftSideBySide"),
                 QStringLiteral("theBoardStandsAboutItsOwnCentre")});
    QVERIFY(dense.waitForFinished(100'000));
    const QByteArray output = dense.readAll();
    QVERIFY2(dense.exitStatus() == QProcess::NormalExit && dense.exitCode() == 0,
             output.constData());
    // Four functions, one of them with four rows, and the framework's first and last.
    QVERIFY2(output.contains("Totals: 9 passed, 0 failed"), output.constData());
}

void tst_PatchBoard::afterFifteenStepsTheDriftBeginsAgain()
{
    Ground ground;
    PatchBoard board(&ground);
    board.setField(fieldOf(mixedDirections(3)));
    for (int shift = 0; shift < 15; ++shift) {
        board.drift(shift);
        const QImage first = ground.picture();
        for (const int step : {shift + 15, shift + 30, shift + 15 * 1000}) {
            board.drift(step);
            for (int patch = 0; patch < patches; ++patch)
                QCOMPARE(board.displacement(patch).manhattanLength(), shift);
            QCOMPARE(difference(ground.picture(), first), QString());
        }
    }
}

void tst_PatchBoard::aPatchMovesInItsDirection_data()
{
    addDirections();
}

void tst_PatchBoard::aPatchMovesInItsDirection()
{
    QFETCH(const int, direction);
    constexpr std::array<QPoint, 4> steps{QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0), QPoint(0, -1)};
    PatchBoard board(nullptr);
    board.setField(fieldOf(std::vector<int>(patches, direction)));
    for (int step = 0; step < 40; ++step) {
        board.drift(step);
        for (int patch = 0; patch < patches; ++patch)
            QCOMPARE(board.displacement(patch), steps.at(std::size_t(direction)) * (step % 15));
    }
}

void tst_PatchBoard::atRestNoPatchIsMoved()
{
    Ground ground;
    PatchBoard board(&ground);
    board.setField(fieldOf(mixedDirections(4)));
    const QImage before = ground.picture();
    board.drift(8);
    QVERIFY(ground.picture() != before);
    board.rest();
    for (int patch = 0; patch < patches; ++patch)
        QCOMPARE(board.displacement(patch), QPoint(0, 0));
    QCOMPARE(difference(ground.picture(), before), QString());
}

void tst_PatchBoard::theDirectionsAreThoseOfTheField()
{
    PatchBoard board(nullptr);
    PatchField field;
    for (std::size_t patch = 0; patch < patches; ++patch) {
        // One patch alone goes left, all others right.
        if (patch < groups * groupSize)
            field.dot[patch / groupSize][patch % groupSize] = 2;
        else
            field.ring[patch - groups * groupSize] = 2;
        board.setField(field);
        board.drift(3);
        for (std::size_t other = 0; other < patches; ++other)
            QCOMPARE(board.displacement(int(other)), QPoint(other == patch ? -3 : 3, 0));
        field = PatchField();
    }
}

void tst_PatchBoard::aBoardWithoutAFieldIsAtRest()
{
    Ground ground;
    const PatchBoard board(&ground);
    Stimuli stimuli;
    stimuli.move(std::vector<int>(patches, 0), 0);
    QCOMPARE(difference(ground.picture(), stimuli.picture()), QString());
}

QTEST_MAIN(tst_PatchBoard)
#include "tst_PatchBoard.moc"
