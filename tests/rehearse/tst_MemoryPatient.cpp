#include "DrawCrossThick.h"
#include "MemoryPatient.h"
#include "Screen.h"
#include "SessionStore.h"
#include "VirtualTime.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

#include <array>
#include <cmath>
#include <memory>

namespace {

constexpr double mmAcross = 0.25; // per pixel
constexpr double mmUp = 0.5;

struct Click
{
    QPoint place;
    int at = 0; ///< ms since the start
};

int now()
{
    return int(TimeSource::current().nanoseconds() / 1'000'000);
}

/// A task as a patient sees it: the crosses, the questions, the pointer, the assessor's buttons. It
/// notes the clicks; one for the last cross brings the question for the first one.
class FakeTask : public QDialog
{
    Q_OBJECT

public:
    FakeTask()
    {
        resize(1280, 1024);
        last->setObjectName(QStringLiteral("lbl_lastCross"));
        first->setObjectName(QStringLiteral("lbl_firstCross"));
        go = newButton("pb_go");
        next = newButton("pb_next");
        onwards = newButton("pb_continue");
        for (QWidget *widget : findChildren<QWidget *>())
            widget->hide();
        for (DrawCrossThick *cross : {m_firstTarget, m_lastTarget})
            cross->resize(40, 40);
        setCursor(Qt::BlankCursor);
        show();
    }

    void showCross(const QPoint &place)
    {
        DrawCrossThick *target = m_shown++ == 0 ? m_firstTarget : m_lastTarget;
        target->move(place - QPoint(20, 20));
        target->show();
    }

    void hideCrosses()
    {
        m_firstTarget->hide();
        m_lastTarget->hide();
    }

    void ask()
    {
        m_shown = 0;
        last->show();
        setCursor(Qt::ArrowCursor);
    }

    /// The trial is over, and waits for the next one.
    void hold()
    {
        setCursor(Qt::ArrowCursor);
        onwards->show();
    }

    void goOn()
    {
        for (QPushButton *button : {go, onwards})
            button->hide();
        setCursor(Qt::BlankCursor);
    }

    QList<Click> clicks;
    QLabel *last = new QLabel(this);
    QLabel *first = new QLabel(this);
    QPushButton *go = nullptr;
    QPushButton *next = nullptr;
    QPushButton *onwards = nullptr;

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        const QPoint place = event->position().toPoint();
        clicks.append({place, now()});
        if (last->isVisible()) {
            m_lastTarget->move(place - QPoint(20, 20));
            m_lastTarget->show();
            last->hide();
            first->show();
        } else if (first->isVisible()) {
            m_firstTarget->move(place - QPoint(20, 20));
            m_firstTarget->show();
            first->hide();
        }
    }

private:
    QPushButton *newButton(const char *name)
    {
        auto *button = new QPushButton(this);
        button->setObjectName(QLatin1String(name));
        button->setFocusPolicy(Qt::NoFocus);
        return button;
    }

    DrawCrossThick *m_firstTarget = new DrawCrossThick(this);
    DrawCrossThick *m_lastTarget = new DrawCrossThick(this);
    int m_shown = 0;
};

/// Clicks where the crosses have stood, a second after each question.
MemoryObserver exact()
{
    return {{0.0, 1.0}, {0.0, 1.0}, 0.0, 0.0, {1000.0, 0.0, 0.0}};
}

/// The same with a scatter around the first and around the last cross, in mm.
MemoryObserver scattering(const MemoryObserver::Trace &first, const MemoryObserver::Trace &last)
{
    MemoryObserver observer = exact();
    observer.first = first;
    observer.last = last;
    return observer;
}

/// So many places, far from each other and from the edge.
QList<QPoint> places(int crosses)
{
    const QList<QPoint> all{{400, 300}, {800, 700}, {640, 250}, {350, 600},
                            {900, 400}, {560, 760}, {830, 330}};
    return all.mid(0, crosses);
}

/// Standard deviation on an axis of clicks that scatter around their places: in mm, by both axes.
class Scatter
{
public:
    void add(const QPoint &offset)
    {
        m_squares += std::pow(offset.x() * mmAcross, 2.0) + std::pow(offset.y() * mmUp, 2.0);
        ++m_count;
    }
    double spread() const { return std::sqrt(m_squares / (2.0 * m_count)); }
    /// The same within three standard errors, and what the rounding to pixels adds.
    bool is(double expected) const
    {
        return std::abs(spread() - expected) < 3.0 * expected / std::sqrt(4.0 * m_count) + 0.02;
    }

private:
    double m_squares = 0.0;
    int m_count = 0;
};

} // namespace

class tst_MemoryPatient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void whoForgetsNothingClicksWhereTheCrossesStood_data();
    void whoForgetsNothingClicksWhereTheCrossesStood();
    void eachClickComesAfterItsTime();
    void theScatterIsThatOfTheObserver();
    void acrossAndUpAreDrawnApart();
    void eachFurtherCrossWidensTheScatter_data();
    void eachFurtherCrossWidensTheScatter();
    void practiceNarrowsTheScatterAndBeginsAnewWithABlock();
    void theShareOfConfusionsIsKept();
    void thePointerStaysOnTheScreen();
    void withoutACalibrationAPixelIsAMillimetre();

    void besideTheAssessorsButtonThePatientOnlyWatches();
    void aRunThatAPauseHasCutGoesOnAtItsLatestCross_data();
    void aRunThatAPauseHasCutGoesOnAtItsLatestCross();
    void behindAPauseAtTheQuestionANewRunBegins();
    void aQuestionLeftStandingWaitsForThePointer();
    void theLastCrossIsAnsweredFirst();
    void aStruckQuestionIsNotAnswered();
    void whoHasSeenNothingPointsAtTheMiddle();
    void aToldAnswerTakesThePlaceOfTheOwnOne_data();
    void aToldAnswerTakesThePlaceOfTheOwnOne();
    void withoutAQuestionAToldAnswerIsAClickAside();
    void theSameSeedMakesTheSamePatient();

private:
    void makePatient(const MemoryObserver &observer, quint32 seed = 1);
    void beginBlock();
    void showRun(const QList<QPoint> &run);
    /// The clicks of one trial, up to its Continue.
    QList<Click> play(const QList<QPoint> &run);
    /// How far from their places, in pixels, the click for the first and the last cross fell.
    std::array<QPoint, 2> offsets(const QList<QPoint> &run);

    std::unique_ptr<VirtualTime> m_time;
    std::unique_ptr<FakeTask> m_task;
    std::unique_ptr<Screen> m_screen;
    std::unique_ptr<MemoryPatient> m_patient;
};

void tst_MemoryPatient::init()
{
    sessionStore() = {};
    sessionStore().horzPixel = 250;
    sessionStore().vertPixel = 500;
    m_time = std::make_unique<VirtualTime>(VirtualTime::Mode::Stepped);
    m_task = std::make_unique<FakeTask>();
    m_screen = std::make_unique<Screen>();
    QApplication::setActiveWindow(m_task.get());
}

void tst_MemoryPatient::cleanup()
{
    m_patient.reset();
    m_screen.reset();
    m_task.reset();
    m_time.reset();
}

void tst_MemoryPatient::makePatient(const MemoryObserver &observer, quint32 seed)
{
    m_patient = std::make_unique<MemoryPatient>(observer, seed, *m_screen);
    beginBlock();
}

void tst_MemoryPatient::beginBlock()
{
    m_task->go->show();
    m_task->goOn();
}

void tst_MemoryPatient::showRun(const QList<QPoint> &run)
{
    for (const QPoint &place : run) {
        m_task->showCross(place);
        m_time->advance(500);
        m_task->hideCrosses();
        m_time->advance(1000);
    }
}

QList<Click> tst_MemoryPatient::play(const QList<QPoint> &run)
{
    m_task->clicks.clear();
    showRun(run);
    m_task->ask();
    m_time->advance(20'000);
    m_task->hideCrosses();
    m_task->hold();
    m_task->goOn();
    return m_task->clicks;
}

std::array<QPoint, 2> tst_MemoryPatient::offsets(const QList<QPoint> &run)
{
    const auto clicks = play(run);
    if (clicks.size() != 2)
        return {QPoint(9999, 9999), QPoint(9999, 9999)};
    return {clicks.at(1).place - run.constFirst(), clicks.at(0).place - run.constLast()};
}

void tst_MemoryPatient::whoForgetsNothingClicksWhereTheCrossesStood_data()
{
    QTest::addColumn<int>("crosses");
    for (int crosses = 2; crosses <= 7; ++crosses)
        QTest::addRow("%d", crosses) << crosses;
}

void tst_MemoryPatient::whoForgetsNothingClicksWhereTheCrossesStood()
{
    QFETCH(int, crosses);
    makePatient(exact());
    for (int trial = 0; trial < 3; ++trial) { // the patient's own clicks are no crosses
        const auto clicks = play(places(crosses));
        QCOMPARE(clicks.size(), 2);
        QCOMPARE(clicks.at(0).place, places(crosses).constLast());
        QCOMPARE(clicks.at(1).place, places(crosses).constFirst());
    }
}

void tst_MemoryPatient::eachClickComesAfterItsTime()
{
    makePatient(exact());
    m_time->advance(123);
    const auto clicks = play(places(2)); // 3 s until the question
    QCOMPARE(clicks.at(0).at, 123 + 3000 + 1000);
    QCOMPARE(clicks.at(1).at, 123 + 3000 + 2000);
}

void tst_MemoryPatient::theScatterIsThatOfTheObserver()
{
    makePatient(scattering({8.0, 1.0}, {3.0, 1.0}));
    Scatter first;
    Scatter last;
    for (int trial = 0; trial < 1000; ++trial) {
        const auto offset = offsets(places(3));
        first.add(offset.at(0));
        last.add(offset.at(1));
    }
    QVERIFY2(first.is(8.0), qPrintable(QString::number(first.spread())));
    QVERIFY2(last.is(3.0), qPrintable(QString::number(last.spread())));
}

void tst_MemoryPatient::acrossAndUpAreDrawnApart()
{
    makePatient(scattering({10.0, 1.0}, {10.0, 1.0}));
    constexpr int trials = 1000;
    double across = 0.0;
    double up = 0.0;
    double together = 0.0;
    for (int trial = 0; trial < trials; ++trial) {
        const QPoint offset = offsets(places(2)).at(0);
        across += std::pow(offset.x() * mmAcross, 2.0);
        up += std::pow(offset.y() * mmUp, 2.0);
        together += offset.x() * mmAcross * offset.y() * mmUp;
    }
    for (const double squares : {across, up}) {
        const double spread = std::sqrt(squares / trials);
        QVERIFY2(std::abs(spread - 10.0) < 3.0 * 10.0 / std::sqrt(2.0 * trials),
                 qPrintable(QString::number(spread)));
    }
    QVERIFY(std::abs(together / trials) < 3.0 * 100.0 / std::sqrt(trials));
}

void tst_MemoryPatient::eachFurtherCrossWidensTheScatter_data()
{
    QTest::addColumn<double>("firstGrowth");
    QTest::addColumn<double>("lastGrowth");
    QTest::newRow("alike") << 1.0 << 1.0;
    QTest::newRow("the first one more") << 1.5 << 1.1;
    QTest::newRow("the last one less") << 1.2 << 0.8;
}

void tst_MemoryPatient::eachFurtherCrossWidensTheScatter()
{
    QFETCH(double, firstGrowth);
    QFETCH(double, lastGrowth);
    makePatient(scattering({4.0, firstGrowth}, {6.0, lastGrowth}));
    for (int crosses = 2; crosses <= 7; ++crosses) {
        Scatter first;
        Scatter last;
        for (int trial = 0; trial < 300; ++trial) {
            const auto offset = offsets(places(crosses));
            first.add(offset.at(0));
            last.add(offset.at(1));
        }
        QVERIFY2(first.is(4.0 * std::pow(firstGrowth, crosses - 2)),
                 qPrintable(QString::number(first.spread())));
        QVERIFY2(last.is(6.0 * std::pow(lastGrowth, crosses - 2)),
                 qPrintable(QString::number(last.spread())));
    }
}

void tst_MemoryPatient::practiceNarrowsTheScatterAndBeginsAnewWithABlock()
{
    MemoryObserver observer = scattering({16.0, 1.0}, {8.0, 1.0});
    observer.practice = 0.5;
    makePatient(observer);
    constexpr int ranks = 16;
    std::array<Scatter, ranks> first;
    std::array<Scatter, ranks> last;
    for (int block = 0; block < 200; ++block) {
        beginBlock();
        for (std::size_t rank = 0; rank < ranks; ++rank) {
            const auto offset = offsets(places(2));
            first.at(rank).add(offset.at(0));
            last.at(rank).add(offset.at(1));
        }
    }
    for (const int rank : {1, 4, 9, 16}) {
        QVERIFY(first.at(std::size_t(rank) - 1).is(16.0 / std::sqrt(rank)));
        QVERIFY(last.at(std::size_t(rank) - 1).is(8.0 / std::sqrt(rank)));
    }
}

void tst_MemoryPatient::theShareOfConfusionsIsKept()
{
    MemoryObserver observer = exact();
    observer.confusions = 0.3;
    makePatient(observer);
    constexpr int trials = 500;
    int confused = 0;
    for (int trial = 0; trial < trials; ++trial) {
        const auto clicks = play(places(4));
        const QList<QPoint> run = places(4);
        const bool swapped = clicks.at(0).place == run.constFirst();
        QCOMPARE(clicks.at(0).place, swapped ? run.constFirst() : run.constLast());
        QCOMPARE(clicks.at(1).place, swapped ? run.constLast() : run.constFirst());
        confused += swapped ? 1 : 0;
    }
    QVERIFY2(std::abs(confused - 150) < 3 * 10.3, qPrintable(QString::number(confused)));
}

void tst_MemoryPatient::thePointerStaysOnTheScreen()
{
    makePatient(scattering({200.0, 5.0}, {200.0, 5.0}));
    const QRect screen = m_task->rect();
    int atTheEdge = 0;
    for (int trial = 0; trial < 20; ++trial) {
        const auto clicks = play(places(7));
        for (const Click &click : clicks) {
            QVERIFY(screen.contains(click.place));
            atTheEdge += screen.adjusted(1, 1, -1, -1).contains(click.place) ? 0 : 1;
        }
    }
    QVERIFY(atTheEdge > 30);
}

void tst_MemoryPatient::withoutACalibrationAPixelIsAMillimetre()
{
    sessionStore().horzPixel = 0;
    sessionStore().vertPixel = 0;
    makePatient(scattering({30.0, 1.0}, {30.0, 1.0}));
    double squares = 0.0;
    constexpr int trials = 500;
    for (int trial = 0; trial < trials; ++trial) {
        const QPoint offset = offsets(places(2)).at(0);
        squares += std::pow(offset.x(), 2.0) + std::pow(offset.y(), 2.0);
    }
    const double spread = std::sqrt(squares / (2.0 * trials));
    QVERIFY2(std::abs(spread - 30.0) < 3.0 * 30.0 / std::sqrt(4.0 * trials),
             qPrintable(QString::number(spread)));
}

void tst_MemoryPatient::besideTheAssessorsButtonThePatientOnlyWatches()
{
    makePatient(exact());
    m_task->next->show();
    QVERIFY(play(places(4)).isEmpty());
    m_task->last->hide();
    m_task->next->hide();
    beginBlock();
    const auto clicks = play({{700, 300}, {500, 700}}); // the example is forgotten
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks.at(0).place, QPoint(500, 700));
    QCOMPARE(clicks.at(1).place, QPoint(700, 300));
}

void tst_MemoryPatient::aRunThatAPauseHasCutGoesOnAtItsLatestCross_data()
{
    QTest::addColumn<int>("shown");
    QTest::addColumn<int>("pauses");
    QTest::newRow("before the first cross") << 0 << 1;
    QTest::newRow("at the first cross") << 1 << 1;
    QTest::newRow("at the third cross") << 3 << 1;
    QTest::newRow("twice") << 3 << 2;
}

void tst_MemoryPatient::aRunThatAPauseHasCutGoesOnAtItsLatestCross()
{
    QFETCH(int, shown);
    QFETCH(int, pauses);
    makePatient(scattering({0.0, 1.0}, {4.0, 1.5}));
    const QList<QPoint> rest{{450, 450}, {750, 350}};
    Scatter last;
    for (int trial = 0; trial < 200; ++trial) {
        showRun(places(shown));
        for (int pause = 0; pause < pauses; ++pause) {
            m_task->hold();
            m_time->advance(1000);
            m_task->goOn();
        }
        const auto clicks = play(rest);
        QCOMPARE(clicks.size(), 2);
        // The cross of the pause has come once more, elsewhere.
        QCOMPARE(clicks.at(1).place, shown > 1 ? places(1).constFirst() : rest.constFirst());
        last.add(clicks.at(0).place - rest.constLast());
    }
    const int crosses = std::max(shown - 1, 0) + 2;
    QVERIFY2(last.is(4.0 * std::pow(1.5, crosses - 2)), qPrintable(QString::number(last.spread())));
}

void tst_MemoryPatient::behindAPauseAtTheQuestionANewRunBegins()
{
    makePatient(exact());
    showRun(places(5));
    m_task->ask();
    m_time->advance(500); // too short for an answer
    m_task->hold();
    m_time->advance(10'000);
    QVERIFY(m_task->clicks.isEmpty());
    m_task->goOn();
    m_time->advance(10'000);
    QVERIFY(m_task->clicks.isEmpty()); // the question stands, but there is no pointer
    const auto clicks = play({{450, 450}, {750, 350}});
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks.at(0).place, QPoint(750, 350));
    QCOMPARE(clicks.at(1).place, QPoint(450, 450));
}

void tst_MemoryPatient::aQuestionLeftStandingWaitsForThePointer()
{
    makePatient(exact());
    m_task->first->show();
    showRun(places(3));
    QVERIFY(m_task->clicks.isEmpty());
    m_task->setCursor(Qt::ArrowCursor);
    m_time->advance(1000);
    QCOMPARE(m_task->clicks.size(), 1);
    QCOMPARE(m_task->clicks.at(0).place, places(3).constFirst());
}

void tst_MemoryPatient::theLastCrossIsAnsweredFirst()
{
    makePatient(exact());
    m_task->first->show(); // a pause has left it
    const auto clicks = play(places(3));
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks.at(0).place, places(3).constLast());
    QCOMPARE(clicks.at(1).place, places(3).constFirst());
}

void tst_MemoryPatient::aStruckQuestionIsNotAnswered()
{
    makePatient(exact());
    showRun(places(3));
    m_task->ask();
    m_time->advance(1500); // one click
    m_task->first->hide();
    m_task->hold();
    m_time->advance(10'000);
    QCOMPARE(m_task->clicks.size(), 1);
    m_task->hideCrosses();
    m_task->goOn();
    const auto clicks = play({{450, 450}, {750, 350}});
    QCOMPARE(clicks.size(), 2);
    QCOMPARE(clicks.at(1).place, QPoint(450, 450));
}

void tst_MemoryPatient::whoHasSeenNothingPointsAtTheMiddle()
{
    makePatient(exact());
    const auto clicks = play({});
    QCOMPARE(clicks.size(), 2);
    for (const Click &click : clicks)
        QCOMPARE(click.place, m_task->rect().center());
}

void tst_MemoryPatient::aToldAnswerTakesThePlaceOfTheOwnOne_data()
{
    QTest::addColumn<int>("told");
    QTest::newRow("at once") << 0;
    QTest::newRow("early") << 150;
    QTest::newRow("late") << 9000;
}

void tst_MemoryPatient::aToldAnswerTakesThePlaceOfTheOwnOne()
{
    QFETCH(int, told);
    makePatient(exact());
    showRun(places(2));
    m_task->ask();
    m_patient->answerIn(told);
    m_time->advance(20'000);
    QCOMPARE(m_task->clicks.size(), 2);
    QCOMPARE(m_task->clicks.at(0).at, 3000 + told);
    QCOMPARE(m_task->clicks.at(0).place, places(2).constLast());
    QCOMPARE(m_task->clicks.at(1).at, 3000 + told + 1000);
    QCOMPARE(m_task->clicks.at(1).place, places(2).constFirst());
}

void tst_MemoryPatient::withoutAQuestionAToldAnswerIsAClickAside()
{
    makePatient(exact());
    m_patient->answerIn(150);
    m_time->advance(149);
    QVERIFY(m_task->clicks.isEmpty());
    m_time->advance(1000);
    QCOMPARE(m_task->clicks.size(), 1);
    QCOMPARE(m_task->clicks.at(0).at, 150);
    QCOMPARE(m_task->clicks.at(0).place, QPoint(10, 700));
}

void tst_MemoryPatient::theSameSeedMakesTheSamePatient()
{
    const auto clicks = [this](quint32 seed) {
        QString all;
        makePatient(MemoryObserver(), seed);
        for (int trial = 0; trial < 20; ++trial) {
            const int start = now();
            const auto made = play(places(2 + trial % 6));
            for (const Click &click : made)
                all += QStringLiteral("%1,%2,%3 ")
                           .arg(click.place.x())
                           .arg(click.place.y())
                           .arg(click.at - start);
        }
        return all;
    };
    const QString first = clicks(3);
    QCOMPARE(clicks(3), first);
    QVERIFY(clicks(4) != first);
}

QTEST_MAIN(tst_MemoryPatient)
#include "tst_MemoryPatient.moc"
