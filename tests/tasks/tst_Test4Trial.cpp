#include "MemoryDesk.h"

#include "TaskTimer.h"
#include "randomness.h"

#include <QCursor>
#include <QLocale>
#include <QSet>

#include <algorithm>

using namespace column;

/// One trial: what is seen, when, and what becomes of the two clicks.
class tst_Test4Trial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aTrialHasItsTimes();
    void theTimesFollowTheirParameters();
    void aParameterTakesEffectAtItsNextLink();
    void aParameterThatIsNoNumberIsNoWait();
    void theAnswersHaveNoTimeLimit();
    void everyStageShowsWhatBelongsToIt();
    void thePointerIsWhereItIsNeeded();
    void onlyTheFirstTrialOfABlockStartsByItself_data();
    void onlyTheFirstTrialOfABlockStartsByItself();
    void everyLoadComesOnceInSixValidTrials();
    void aLoadHasItsNumberOfCrosses();
    void theSectorsAreDrawnAnewInEveryTrial();
    void noLaterCrossStandsInTheSectorOfTheFirstOrBesideIt();
    void thePlacesFillTheRing();
    void thePanelFollowsTheTrial();
    void aNewBlockClearsThePanel_data();
    void aNewBlockClearsThePanel();
    void theLastCrossIsAskedForBeforeTheFirst();
    void theCrossesComeBackWhereTheClicksFell();
    void aDistanceIsInMillimetresOfTheScreen_data();
    void aDistanceIsInMillimetresOfTheScreen();
    void aDistanceIsNeverBelowOneMillimetre_data();
    void aDistanceIsNeverBelowOneMillimetre();
    void onAScreenThatWasNeverCalibratedEveryDistanceIsOne();
    void aClickFarFromTheRingIsALongDistance();
    void aDistanceIsWrittenInTheMannerOfTheLocale_data();
    void aDistanceIsWrittenInTheMannerOfTheLocale();
    void onlyTheLeftButtonAnswers();
    void aClickBeforeTheQuestionIsIgnored_data();
    void aClickBeforeTheQuestionIsIgnored();
    void aThirdClickIsIgnored();
    void aClickBetweenTwoTrialsIsIgnored();
    void aDoubleClickAnswersTwice();
    void aClickOnSomethingThatIsShownIsAClick();
    void aTrialLeavesItsRow();
    void theRowBearsTheFirstCross();
    void theSubtaskIsTheLoadCountedFromZero();
    void theRowsOfATestAreOnTheDiskAtOnce();
    void aTimeLimitThatWereCalledWouldStrikeTheTrial_data();
    void aTimeLimitThatWereCalledWouldStrikeTheTrial();
    void behindSuchALimitNoClickIsTakenBeforeTheQuestion();
};

namespace {

constexpr int oneHour = 3'600'000; // ms

/// The times that a run begins with, ms.
constexpr int opening = 1000;
constexpr int cross = 500;
constexpr int gap = 1000;
constexpr int closing = 1000;

/// A run whose parameters are entered while the panel is hidden, so that it is in nobody's way.
void startWith(MemoryDesk &desk, const QMap<const char *, QString> &parameters)
{
    desk.go({});
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it)
        desk.type(it.key(), it.value());
    desk.click("pb_go");
}

qint64 since(const QDateTime &start, const MemoryDesk &desk)
{
    return start.msecsTo(desk.time.currentDateTime());
}

/// Goes on until the trial enters its next link; the ms that it took.
int nextLink(MemoryDesk &desk)
{
    int entered = 0;
    const auto connection = QObject::connect(&desk.task, &TaskDialog::stageEntered, &desk.task,
                                             [&entered] { ++entered; });
    int ms = 0;
    while (entered == 0 && ms < 20'000) {
        desk.time.advance(1);
        ++ms;
    }
    QObject::disconnect(connection);
    return ms;
}

/// A point of the dialog's lower right that no cross, button or label is near to.
constexpr QPoint elsewhere(770, 690);

} // namespace

void tst_Test4Trial::aTrialHasItsTimes()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 6; ++trial) {
        if (trial > 0)
            desk.click("pb_continue");
        QCOMPARE(desk.task.stage(), 1);
        QCOMPARE(nextLink(desk), opening);
        int crosses = 0;
        while (desk.task.stage() == 2) {
            ++crosses;
            QCOMPARE(nextLink(desk), cross);
            QCOMPARE(desk.task.stage(), 3);
            QCOMPARE(nextLink(desk), gap); // the question waits as long as another cross
        }
        QCOMPARE(desk.task.stage(), 4);
        QCOMPARE(desk.seen.size(), qsizetype{crosses});
        desk.answer(elsewhere, elsewhere);
        QCOMPARE(desk.task.stage(), 5);
        QCOMPARE(nextLink(desk), closing);
        QCOMPARE(desk.task.stage(), 0);
    }
}

void tst_Test4Trial::theTimesFollowTheirParameters()
{
    MemoryDesk desk;
    startWith(desk, {{"le_timer01", QStringLiteral("120")},
                     {"le_timer02", QStringLiteral("90")},
                     {"le_timer03", QStringLiteral("310")},
                     {"le_timer05", QStringLiteral("2200")}});
    QCOMPARE(nextLink(desk), 120);
    while (desk.task.stage() == 2) {
        QCOMPARE(nextLink(desk), 90);
        QCOMPARE(nextLink(desk), 310);
    }
    QCOMPARE(desk.task.stage(), 4);
    desk.answer(elsewhere, elsewhere);
    QCOMPARE(nextLink(desk), 2200);
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test4Trial::aParameterTakesEffectAtItsNextLink()
{
    MemoryDesk desk;
    desk.startTest();
    desk.time.advance(300);
    desk.type("le_timer01", QStringLiteral("5000")); // too late for this trial
    desk.type("le_timer02", QStringLiteral("200"));
    QCOMPARE(nextLink(desk), opening - 300);
    QCOMPARE(nextLink(desk), 200);
    QVERIFY(desk.reach(4));
    desk.type("le_timer05", QStringLiteral("70"));
    desk.answer(elsewhere, elsewhere);
    desk.type("le_timer05", QStringLiteral("900"));
    QCOMPARE(nextLink(desk), 70);
    desk.click("pb_continue");
    QCOMPARE(nextLink(desk), 5000);
}

void tst_Test4Trial::aParameterThatIsNoNumberIsNoWait()
{
    MemoryDesk desk;
    startWith(desk, {{"le_timer01", QStringLiteral("abc")},
                     {"le_timer02", QStringLiteral("x")},
                     {"le_timer03", QStringLiteral("-")},
                     {"le_timer05", QStringLiteral("1 s")}});
    desk.time.advance(0);
    QVERIFY(desk.seen.size() >= 2);
    QCOMPARE(desk.task.stage(), 4);
    desk.answer(elsewhere, elsewhere);
    desk.time.advance(0);
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Trial::theAnswersHaveNoTimeLimit()
{
    MemoryDesk desk;
    startWith(desk, {{"le_timer04", QStringLiteral("200")}}); // nothing reads it
    for (int trial = 0; trial < 2; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        desk.time.advance(oneHour);
        QCOMPARE(desk.task.stage(), 4);
        QVERIFY(desk.shown("lbl_lastCross"));
        desk.clickAt(places.constLast());
        desk.time.advance(oneHour);
        QCOMPARE(desk.task.stage(), 4);
        QVERIFY(desk.shown("lbl_firstCross"));
        desk.type("le_timer04", QStringLiteral("1"));
        desk.time.advance(oneHour);
        QCOMPARE(desk.task.stage(), 4);
        desk.clickAt(places.constFirst());
        QVERIFY(desk.finishTrial());
        QCOMPARE(desk.rows().size(), trial + 1);
        QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
        desk.time.advance(oneHour); // nor has the pause before the next one
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(desk.shown("pb_continue"));
    }
    for (const TaskTimer *timer : desk.task.findChildren<TaskTimer *>())
        QVERIFY(!timer->isActive());
}

void tst_Test4Trial::everyStageShowsWhatBelongsToIt()
{
    MemoryDesk desk;
    enum { FirstTarget = 1, LastTarget = 2, AskLast = 4, AskFirst = 8, Continue = 16 };
    const auto verifyShown = [&desk](int what, Qt::CursorShape cursor) {
        QVERIFY(desk.cross->isVisible()); // all the time
        QCOMPARE(desk.first->isVisible(), (what & FirstTarget) != 0);
        QCOMPARE(desk.last->isVisible(), (what & LastTarget) != 0);
        QCOMPARE(desk.shown("lbl_lastCross"), (what & AskLast) != 0);
        QCOMPARE(desk.shown("lbl_firstCross"), (what & AskFirst) != 0);
        QCOMPARE(desk.shown("pb_continue"), (what & Continue) != 0);
        QCOMPARE(desk.task.cursor().shape(), cursor);
        for (const char *name : {"lbl_mode", "lbl_instruction", "lbl_localisation", "pb_go",
                                 "pb_next", "pb_results", "pb_mainMenu"})
            QVERIFY2(!desk.shown(name), name);
        QVERIFY(!desk.firstMarker->isVisible() && !desk.lastMarker->isVisible());
        QVERIFY(!desk.outerRing->isVisible() && !desk.innerRing->isVisible());
        QVERIFY(!desk.sectorLines->isVisible());
    };
    desk.startTest();
    for (int trial = 0; trial < 3; ++trial) {
        if (trial > 0) {
            verifyShown(Continue, Qt::ArrowCursor);
            desk.click("pb_continue");
        }
        verifyShown(0, Qt::BlankCursor);
        nextLink(desk);
        for (int shownCrosses = 0; desk.task.stage() == 2; ++shownCrosses) {
            verifyShown(shownCrosses == 0 ? FirstTarget : LastTarget, Qt::BlankCursor);
            desk.time.advance(cross - 1);
            verifyShown(shownCrosses == 0 ? FirstTarget : LastTarget, Qt::BlankCursor);
            desk.time.advance(1);
            verifyShown(0, Qt::BlankCursor);
            nextLink(desk);
        }
        verifyShown(AskLast, Qt::ArrowCursor);
        desk.clickAt(elsewhere);
        verifyShown(LastTarget | AskFirst, Qt::ArrowCursor);
        desk.clickAt(elsewhere);
        verifyShown(FirstTarget | LastTarget, Qt::ArrowCursor);
        desk.time.advance(closing - 1);
        verifyShown(FirstTarget | LastTarget, Qt::ArrowCursor);
        desk.time.advance(1);
    }
}

void tst_Test4Trial::thePointerIsWhereItIsNeeded()
{
    MemoryDesk desk;
    const auto pointer = [&desk] { return desk.task.mapFromGlobal(QCursor::pos()); };
    constexpr QPoint outOfTheWay(10, 700);
    constexpr QPoint hand(300, 310);
    desk.startTest();
    for (int trial = 0; trial < 2; ++trial) {
        if (trial > 0) {
            QCOMPARE(pointer(), desk.widget("pb_continue")->geometry().center());
            desk.click("pb_continue");
        }
        QCOMPARE(pointer(), outOfTheWay);
        while (desk.task.stage() != 4) {
            QCOMPARE(pointer(), outOfTheWay);
            nextLink(desk);
        }
        QCOMPARE(pointer(), desk.centre());
        QCursor::setPos(desk.task.mapToGlobal(hand)); // from here on it is the patient's
        desk.clickAt(hand);
        QCOMPARE(pointer(), hand);
        desk.clickAt(hand);
        QCOMPARE(pointer(), hand);
        desk.time.advance(closing - 1);
        QCOMPARE(pointer(), hand);
        desk.time.advance(1);
    }
}

void tst_Test4Trial::onlyTheFirstTrialOfABlockStartsByItself_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by the button") << false;
    QTest::newRow("by the key C") << true;
}

void tst_Test4Trial::onlyTheFirstTrialOfABlockStartsByItself()
{
    QFETCH(const bool, byKey);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.task.stage(), 1);
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.reach(4));
        desk.answer(elsewhere, elsewhere);
        QVERIFY(desk.finishTrial());
        QVERIFY(desk.shown("pb_continue"));
        desk.time.advance(oneHour);
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(desk.shown("pb_continue"));
        QCOMPARE(desk.widget("pb_continue")->shortcut(), QKeySequence(Qt::Key_C));
        if (byKey) // where the panel has the focus no shortcut would come through
            QTest::keyClick(desk.widget<QLineEdit>("le_timer01"), Qt::Key_C);
        else
            desk.click("pb_continue");
        QCOMPARE(desk.task.stage(), 1);
        QVERIFY(!desk.shown("pb_continue"));
    }
}

void tst_Test4Trial::everyLoadComesOnceInSixValidTrials()
{
    MemoryDesk desk;
    desk.startTest();
    desk.time.advance(opening - 1);
    const quint32 seed = desk.time.seedSeconds() + 1; // of the second of the first cross
    QVERIFY(desk.runTrials(30));
    QVERIFY(desk.shown("pb_results"));

    QStringList loads;
    const QList<QStringList> rows = desk.rows();
    for (const QStringList &row : rows)
        loads.append(row[Subtask]);
    QCOMPARE(loads.size(), 30);
    QSet<QString> orders;
    for (qsizetype block = 0; block < 5; ++block) {
        QStringList six = loads.mid(6 * block, 6);
        orders.insert(six.join(QString()));
        std::ranges::sort(six);
        QCOMPARE(six.join(QString()), QStringLiteral("012345"));
    }
    QVERIFY(orders.size() > 1); // each is drawn anew
    const std::vector<int> drawn = randomness::shuffled(6, seed);
    for (std::size_t trial = 0; trial < drawn.size(); ++trial)
        QCOMPARE(loads[qsizetype(trial)], QString::number(drawn[trial]));
}

void tst_Test4Trial::aLoadHasItsNumberOfCrosses()
{
    MemoryDesk desk;
    desk.startTest();
    QSet<qsizetype> runs;
    for (int trial = 0; trial < 12; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        desk.answer(elsewhere, elsewhere);
        QVERIFY(desk.finishTrial());
        QCOMPARE(desk.rows().constLast()[Subtask], QString::number(places.size() - 2));
        runs.insert(places.size());
    }
    QCOMPARE(runs, (QSet<qsizetype>{2, 3, 4, 5, 6, 7}));
}

void tst_Test4Trial::theSectorsAreDrawnAnewInEveryTrial()
{
    MemoryDesk desk;
    desk.startTest();
    QList<QList<QPoint>> runs;
    QList<quint32> seeds;
    for (int trial = 0; trial < 12; ++trial) {
        if (trial > 0)
            desk.click("pb_continue");
        QVERIFY(desk.reach(2));
        seeds.append(desk.time.seedSeconds());
        runs.append(desk.runToQuestion());
        desk.answer(elsewhere, elsewhere);
        QVERIFY(desk.finishTrial());
    }
    QSet<int> firsts;
    for (qsizetype trial = 0; trial < runs.size(); ++trial) {
        const std::vector<int> sectors = randomness::sectors(seeds[trial]);
        QCOMPARE(desk.sector(runs[trial].at(0)), sectors[0]);
        for (qsizetype i = 1; i < runs[trial].size(); ++i)
            QCOMPARE(desk.sector(runs[trial].at(i)), sectors.at(std::size_t(i) + 2));
        firsts.insert(sectors[0]);
    }
    QVERIFY(firsts.size() > 5);
}

void tst_Test4Trial::noLaterCrossStandsInTheSectorOfTheFirstOrBesideIt()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 30; ++trial) {
        QSet<int> taken;
        const QList<QPoint> places = desk.runToQuestion();
        const int first = desk.sector(places.constFirst());
        for (qsizetype i = 1; i < places.size(); ++i) {
            const int sector = desk.sector(places[i]);
            const int apart = std::abs(sector - first);
            QVERIFY2(std::min(apart, 12 - apart) > 1, qPrintable(QString::number(sector)));
            QVERIFY(!taken.contains(sector));
            taken.insert(sector);
        }
        desk.answer(elsewhere, elsewhere);
        QVERIFY(desk.finishTrial());
    }
}

void tst_Test4Trial::thePlacesFillTheRing()
{
    MemoryDesk desk;
    desk.startTest();
    double nearest = 1000.0;
    double farthest = 0.0;
    QSet<int> sectors;
    QSet<int> within; // degrees within a sector
    for (int trial = 0; trial < 30; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        for (const QPoint &place : places) {
            const QPoint away = place - desk.centre();
            const double radius = std::hypot(away.x(), away.y());
            QVERIFY(radius > 180 - 1.5 && radius < 359 + 1.5); // the cut takes less than a pixel
            nearest = std::min(nearest, radius);
            farthest = std::max(farthest, radius);
            sectors.insert(desk.sector(place));
            within.insert(desk.angle(place) % 30);
        }
        desk.answer(elsewhere, elsewhere);
        QVERIFY(desk.finishTrial());
    }
    QVERIFY(nearest < 190 && farthest > 349);
    QCOMPARE(sectors.size(), 12);
    QVERIFY(within.size() > 24);
}

void tst_Test4Trial::thePanelFollowsTheTrial()
{
    MemoryDesk desk;
    desk.startTest();
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    for (const char *edit : {"le_posFirst", "le_posLast", "le_distFirst", "le_distLast"})
        QCOMPARE(desk.text(edit), QString());
    QString formerLast;
    QString formerDistance;
    for (int trial = 0; trial < 3; ++trial) {
        if (trial > 0) {
            QCOMPARE(desk.text("le_no"), QString::number(trial + 1)); // before "Continue"
            desk.click("pb_continue");
        }
        QVERIFY(desk.reach(2));
        const QString first = QString::number(desk.sector(MemoryDesk::place(desk.first)) + 1);
        QCOMPARE(desk.text("le_posFirst"), first);
        QCOMPARE(desk.text("le_posLast"), formerLast); // until the second cross
        while (nextLink(desk) > 0 && desk.task.stage() != 4) {
            if (desk.task.stage() == 2)
                formerLast = QString::number(desk.sector(MemoryDesk::place(desk.last)) + 1);
            QCOMPARE(desk.text("le_posLast"), formerLast);
            QCOMPARE(desk.text("le_posFirst"), first);
        }
        QCOMPARE(desk.text("le_distLast"), formerDistance); // until it is answered
        desk.clickAt(desk.seen.constLast() + QPoint(8 + 4 * trial, 0));
        const QString last = QStringLiteral("    %1.00").arg(2 + trial);
        QCOMPARE(desk.text("le_distLast"), last);
        QCOMPARE(desk.text("le_distFirst"), formerDistance);
        desk.clickAt(desk.seen.constFirst() + QPoint(-8 - 4 * trial, 0));
        QCOMPARE(desk.text("le_distFirst"), last);
        formerDistance = last;
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[PosFirst], first);
        QCOMPARE(row[PosLast], formerLast);
    }
}

void tst_Test4Trial::aNewBlockClearsThePanel_data()
{
    QTest::addColumn<bool>("training");
    QTest::newRow("after a test") << false;
    QTest::newRow("after a training") << true;
}

void tst_Test4Trial::aNewBlockClearsThePanel()
{
    QFETCH(const bool, training);
    MemoryDesk desk;
    desk.startTest({.training = training});
    QVERIFY(desk.runTrials(3, 40));
    if (!training) {
        desk.key(Qt::Key_Escape);
        desk.go({});
    } else {
        QCOMPARE(desk.text("le_distLast"), QStringLiteral("   10.00")); // up to the go
    }
    desk.click("pb_go");
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    for (const char *edit : {"le_posFirst", "le_posLast", "le_distFirst", "le_distLast"})
        QCOMPARE(desk.text(edit), QString());
}

void tst_Test4Trial::theLastCrossIsAskedForBeforeTheFirst()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 6; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        desk.answer(places.constLast() + QPoint(12, 0), places.constFirst() - QPoint(0, 30));
        QCOMPARE(desk.text("le_distLast"), QStringLiteral("    3.00"));
        QCOMPARE(desk.text("le_distFirst"), QStringLiteral("    6.00"));
        QVERIFY(desk.finishTrial());
        QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("    3.00"));
        QCOMPARE(desk.rows().constLast()[DistFirst], QStringLiteral("    6.00"));
    }
}

void tst_Test4Trial::theCrossesComeBackWhereTheClicksFell()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 2; ++trial) {
        const QList<QPoint> places = desk.runToQuestion();
        const QPoint forLast = places.constLast() + QPoint(5, -7);
        const QPoint forFirst = places.constFirst() - QPoint(11, 2);
        desk.clickAt(forLast);
        QCOMPARE(MemoryDesk::place(desk.last), forLast);
        desk.clickAt(forFirst);
        QCOMPARE(MemoryDesk::place(desk.first), forFirst);
        QCOMPARE(MemoryDesk::place(desk.last), forLast);
        QVERIFY(desk.finishTrial());
    }
}

void tst_Test4Trial::aDistanceIsInMillimetresOfTheScreen_data()
{
    QTest::addColumn<int>("across"); // pitch, micrometres
    QTest::addColumn<int>("up");
    QTest::addColumn<QPoint>("aside");
    QTest::addColumn<QString>("distance");
    QTest::newRow("right") << 250 << 200 << QPoint(40, 0) << u"   10.00"_qs;
    QTest::newRow("left") << 250 << 200 << QPoint(-40, 0) << u"   10.00"_qs;
    QTest::newRow("below") << 250 << 200 << QPoint(0, 40) << u"    8.00"_qs;
    QTest::newRow("above") << 250 << 200 << QPoint(0, -40) << u"    8.00"_qs;
    QTest::newRow("a triangle of 3, 4 and 5") << 250 << 250 << QPoint(-12, 16) << u"    5.00"_qs;
    QTest::newRow("aslant") << 250 << 200 << QPoint(30, 40) << u"   10.97"_qs; // 7.5, 8
    QTest::newRow("a tight screen") << 155 << 156 << QPoint(11, -7) << u"    2.02"_qs;
    QTest::newRow("a wide screen") << 1021 << 998 << QPoint(-19, 13) << u"   23.34"_qs;
    QTest::newRow("one pixel") << 1250 << 200 << QPoint(1, 0) << u"    1.25"_qs;
}

void tst_Test4Trial::aDistanceIsInMillimetresOfTheScreen()
{
    QFETCH(const int, across);
    QFETCH(const int, up);
    QFETCH(const QPoint, aside);
    QFETCH(const QString, distance);
    MemoryDesk desk;
    MemoryDesk::setPitch(across, up);
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.answer(places.constLast() + aside, places.constFirst() - aside);
    QCOMPARE(desk.text("le_distLast"), distance);
    QCOMPARE(desk.text("le_distFirst"), distance);
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().constLast()[DistLast], distance);
    QCOMPARE(desk.rows().constLast()[DistFirst], distance);
}

void tst_Test4Trial::aDistanceIsNeverBelowOneMillimetre_data()
{
    QTest::addColumn<QPoint>("aside");
    QTest::addColumn<QString>("distance");
    QTest::newRow("on the place") << QPoint(0, 0) << u"    1.00"_qs;
    QTest::newRow("a quarter of a millimetre") << QPoint(1, 0) << u"    1.00"_qs;
    QTest::newRow("three quarters") << QPoint(-3, 0) << u"    1.00"_qs;
    QTest::newRow("0.98 mm") << QPoint(3, 3) << u"    1.00"_qs; // 0.75, 0.6
    QTest::newRow("one") << QPoint(4, 0) << u"    1.00"_qs;
    QTest::newRow("just above") << QPoint(4, 1) << u"    1.02"_qs; // 1, 0.2
    QTest::newRow("five quarters") << QPoint(5, 0) << u"    1.25"_qs;
}

void tst_Test4Trial::aDistanceIsNeverBelowOneMillimetre()
{
    QFETCH(const QPoint, aside);
    QFETCH(const QString, distance);
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.answer(places.constLast() + aside, places.constFirst() + aside);
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().constLast()[DistLast], distance);
    QCOMPARE(desk.rows().constLast()[DistFirst], distance);
}

void tst_Test4Trial::onAScreenThatWasNeverCalibratedEveryDistanceIsOne()
{
    MemoryDesk desk;
    MemoryDesk::setPitch(0, 0);
    desk.startTest();
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.answer(elsewhere, QPoint(20, 20));
    QVERIFY(desk.finishTrial());
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("    1.00"));
    QCOMPARE(desk.rows().constLast()[DistFirst], QStringLiteral("    1.00"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test4Trial::aClickFarFromTheRingIsALongDistance()
{
    MemoryDesk desk;
    desk.startTest();
    for (const QPoint &click : {QPoint(0, 0), QPoint(desk.task.width() - 1, 0),
                                QPoint(0, desk.task.height() - 1), desk.centre(), elsewhere}) {
        const QList<QPoint> places = desk.runToQuestion();
        desk.answer(click, click);
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        const auto distance = [&click](const QPoint &place) {
            const QPoint away = click - place;
            return std::hypot(away.x() * 0.25, away.y() * 0.2);
        };
        QVERIFY(std::abs(row[DistLast].toDouble() - distance(places.constLast())) < 0.006);
        QVERIFY(std::abs(row[DistFirst].toDouble() - distance(places.constFirst())) < 0.006);
        QVERIFY(row[DistFirst].toDouble() > 30);
        QCOMPARE(row[Error], QStringLiteral("0"));
    }
}

void tst_Test4Trial::aDistanceIsWrittenInTheMannerOfTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("inTheRow");
    QTest::addColumn<QString>("onThePanel");
    QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedStates) << u"   10.97"_qs
                             << u"   10.97"_qs;
    QTest::newRow("German") << QLocale(QLocale::German, QLocale::Germany) << u"   10,97"_qs
                            << u"   10,97"_qs;
    QTest::newRow("French") << QLocale(QLocale::French, QLocale::France) << u"   10,97"_qs
                            << u"   10,97"_qs;
    // A row is made of letters that every program reads.
    QTest::newRow("Persian") << QLocale(QLocale::Persian, QLocale::Iran) << u"   10.97"_qs
                             << u"   ۱۰٫۹۷"_qs;
    QTest::newRow("Arabic") << QLocale(QLocale::Arabic, QLocale::Egypt) << u"   10.97"_qs
                            << u"   ١٠٫٩٧"_qs;
}

void tst_Test4Trial::aDistanceIsWrittenInTheMannerOfTheLocale()
{
    QFETCH(const QLocale, locale);
    QFETCH(const QString, inTheRow);
    QFETCH(const QString, onThePanel);
    QLocale::setDefault(locale);
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.answer(places.constLast() + QPoint(30, 40), places.constFirst() - QPoint(30, 40));
    QCOMPARE(desk.text("le_distLast"), onThePanel);
    QCOMPARE(desk.text("le_distFirst"), onThePanel);
    QVERIFY(desk.finishTrial());
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row.size(), int(Count));
    QCOMPARE(row[DistFirst], inTheRow);
    QCOMPARE(row[DistLast], inTheRow);
    QCOMPARE(row[Date], QStringLiteral("06/01/2025"));
    const int pos = desk.sector(places.constFirst()) + 1;
    QCOMPARE(row[PosFirst], QString::fromLatin1(QByteArray::number(pos)));
}

void tst_Test4Trial::onlyTheLeftButtonAnswers()
{
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    const auto pressOthers = [&desk] {
        desk.rightClickAt(elsewhere);
        for (const Qt::MouseButton button :
             {Qt::RightButton, Qt::MiddleButton, Qt::BackButton, Qt::ForwardButton})
            desk.clickAt(elsewhere, button);
    };
    pressOthers();
    QCOMPARE(desk.text("le_distLast"), QString());
    QVERIFY(desk.shown("lbl_lastCross") && !desk.last->isVisible());
    desk.clickAt(places.constLast() + QPoint(20, 0));
    pressOthers();
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    QCOMPARE(desk.text("le_distFirst"), QString());
    QCOMPARE(desk.task.stage(), 4);
    desk.clickAt(places.constFirst() + QPoint(20, 0));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("    5.00"));
    QCOMPARE(desk.task.stage(), 5);
}

void tst_Test4Trial::aClickBeforeTheQuestionIsIgnored_data()
{
    QTest::addColumn<int>("stage");
    QTest::newRow("before the first cross") << 1;
    QTest::newRow("on a cross") << 2;
    QTest::newRow("between two crosses") << 3;
}

void tst_Test4Trial::aClickBeforeTheQuestionIsIgnored()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 2; ++trial) {
        if (trial > 0)
            desk.click("pb_continue");
        const QString former = desk.text("le_distLast");
        QVERIFY(desk.reach(stage));
        desk.time.advance(200);
        const QPoint firstPlace = MemoryDesk::place(desk.first);
        for (const QPoint &click : {firstPlace, elsewhere, desk.centre()})
            desk.clickAt(click);
        QCOMPARE(desk.task.stage(), stage);
        QCOMPARE(desk.text("le_distLast"), former);
        QCOMPARE(desk.text("le_distFirst"), former);
        QCOMPARE(MemoryDesk::place(desk.first), firstPlace);
        QVERIFY(!desk.last->isVisible() && !desk.shown("lbl_firstCross"));
        QVERIFY(desk.runTrial(40));
        QCOMPARE(desk.rows().size(), trial + 1);
        QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
    }
}

void tst_Test4Trial::aThirdClickIsIgnored()
{
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.answer(places.constLast() + QPoint(20, 0), places.constFirst() + QPoint(20, 0));
    const QDateTime start = desk.time.currentDateTime();
    desk.time.advance(closing / 2);
    desk.clickAt(elsewhere);
    desk.clickAt(desk.centre());
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("    5.00"));
    QCOMPARE(MemoryDesk::place(desk.first), places.constFirst() + QPoint(20, 0));
    QCOMPARE(MemoryDesk::place(desk.last), places.constLast() + QPoint(20, 0));
    QVERIFY(desk.finishTrial());
    QCOMPARE(since(start, desk), qint64{closing}); // it doesn't begin again
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Trial::aClickBetweenTwoTrialsIsIgnored()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrial(20));
    for (const QPoint &click : {elsewhere, desk.centre(), QPoint(10, 700)})
        desk.clickAt(click);
    desk.time.advance(oneHour);
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_continue"));
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    5.00"));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Trial::aDoubleClickAnswersTwice()
{
    MemoryDesk desk;
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    const QPoint at = places.constLast() + QPoint(40, 0);
    desk.clickAt(at);
    QCOMPARE(desk.task.stage(), 4);
    // The second press of two quick ones comes as this. By now a cross stands under it.
    QWidget *under = desk.task.childAt(at);
    QCOMPARE(under, static_cast<QWidget *>(desk.last));
    QMouseEvent second(QEvent::MouseButtonDblClick, under->mapFrom(&desk.task, at),
                       desk.task.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(under, &second);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(MemoryDesk::place(desk.first), at);
    QVERIFY(desk.finishTrial());
    const QStringList row = desk.rows().constLast();
    const QPoint away = at - places.constFirst();
    QCOMPARE(row[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(
        row[DistFirst],
        QString::number(std::hypot(away.x() * 0.25, away.y() * 0.2), 'f', 2).rightJustified(8));
}

void tst_Test4Trial::aClickOnSomethingThatIsShownIsAClick()
{
    MemoryDesk desk;
    desk.startTest();
    desk.key(Qt::Key_S); // the guides lie over the whole ring
    QVERIFY(desk.guidesAreShown());
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(desk.rows().constLast()[DistFirst], QStringLiteral("   10.00"));
    desk.key(Qt::Key_S);
    for (QWidget *shown : {static_cast<QWidget *>(desk.cross),
                           static_cast<QWidget *>(desk.widget<QLabel>("lbl_lastCross"))}) {
        const QList<QPoint> places = desk.runToQuestion();
        const QPoint at = shown->geometry().center();
        QVERIFY(desk.task.childAt(at) == shown);
        desk.clickAt(at);
        QCOMPARE(MemoryDesk::place(desk.last), at);
        desk.clickAt(at); // on the cross that has just come back
        QCOMPARE(MemoryDesk::place(desk.first), at);
        QCOMPARE(desk.task.stage(), 5);
        QVERIFY(desk.finishTrial());
        const QPoint away = at - places.constLast();
        QCOMPARE(desk.rows().constLast()[DistLast].trimmed(),
                 QString::number(std::hypot(away.x() * 0.25, away.y() * 0.2), 'f', 2));
    }
}

void tst_Test4Trial::aTrialLeavesItsRow()
{
    MemoryDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest();
    const QList<QPoint> places = desk.runToQuestion();
    desk.answer(places.constLast() + QPoint(51, 0), places.constFirst() - QPoint(0, 62));
    QVERIFY(desk.rows().isEmpty()); // it isn't over yet
    QVERIFY(desk.finishTrial());
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    const QByteArray row = log.mid(log.indexOf('\n') + 1);
    QCOMPARE(row, QByteArray("UKB;Mrs.;Doe;Jane;01/02/1950;4;5;06/01/2025;09:00:01.000;0;1;"
                             ";;;;;;;;;;;;;;   12.40;   12.75;1;10;0\n"));
    // What was seen is what is told.
    const QStringList told = desk.rows().constFirst();
    QCOMPARE(told[Subtask], QString::number(places.size() - 2));
    QCOMPARE(told[PosFirst], QString::number(desk.sector(places.constFirst()) + 1));
    QCOMPARE(told[PosLast], QString::number(desk.sector(places.constLast()) + 1));

    const QList<QByteArray> header = log.left(log.indexOf('\n')).split(';');
    QCOMPARE(header.size(), int(Count));
    QCOMPARE(header[DistFirst], QByteArray("t4_dist_first"));
    QCOMPARE(header[DistLast], QByteArray("t4_dist_last"));
    QCOMPARE(header[PosFirst], QByteArray("t4_pos_first"));
    QCOMPARE(header[PosLast], QByteArray("t4_pos_last"));
}

void tst_Test4Trial::theRowBearsTheFirstCross()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 0; trial < 3; ++trial) {
        desk.time.advance(trial * 1234); // the patient rests before "Continue"
        if (trial > 0)
            desk.click("pb_continue");
        QVERIFY(desk.reach(2));
        const QDateTime onset = desk.time.currentDateTime();
        const QList<QPoint> places = desk.runToQuestion();
        desk.time.advance(7000);
        desk.answer(places.constLast(), places.constFirst());
        QVERIFY(desk.finishTrial());
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Date], QStringLiteral("06/01/2025"));
        QCOMPARE(row[Time], onset.toString(QStringLiteral("hh:mm:ss.zzz")));
    }
}

void tst_Test4Trial::theSubtaskIsTheLoadCountedFromZero()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(6));
    QStringList subtasks;
    QStringList ranks;
    const QList<QStringList> rows = desk.rows();
    for (const QStringList &row : rows) {
        QCOMPARE(row.size(), int(Count));
        subtasks.append(row[Subtask]);
        ranks.append(row[RankTask]);
        QCOMPARE(row[RankSub], QString());
    }
    std::ranges::sort(subtasks);
    QCOMPARE(subtasks.join(u' '), QStringLiteral("0 1 2 3 4 5"));
    QCOMPARE(ranks.join(u' '), QStringLiteral("1 2 3 4 5 6"));
}

void tst_Test4Trial::theRowsOfATestAreOnTheDiskAtOnce()
{
    MemoryDesk desk;
    desk.startTest();
    for (int trial = 1; trial <= 4; ++trial) {
        QVERIFY(desk.runTrial(40));
        QCOMPARE(desk.rows().size(), trial); // read back while the log is open
    }
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
}

void tst_Test4Trial::aTimeLimitThatWereCalledWouldStrikeTheTrial_data()
{
    QTest::addColumn<bool>("answered");
    QTest::newRow("before a click") << false;
    QTest::newRow("behind the first click") << true;
}

void tst_Test4Trial::aTimeLimitThatWereCalledWouldStrikeTheTrial()
{
    QFETCH(const bool, answered);
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runTrials(2));
    const QList<QPoint> places = desk.runToQuestion();
    if (answered)
        desk.clickAt(places.constLast());
    desk.task.sequence4();
    QCOMPARE(desk.task.stage(), 0);
    QVERIFY(desk.shown("pb_continue"));
    QCOMPARE(desk.mode(), QString()); // no word: nobody has marked it
    QVERIFY(desk.cross->isVisible());
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    QVERIFY(!desk.shown("lbl_lastCross") && !desk.shown("lbl_firstCross"));
    const QStringList row = desk.rows().constLast();
    QCOMPARE(row[RankTask], QStringLiteral("3"));
    QCOMPARE(row[DistFirst], QString());
    QCOMPARE(row[DistLast], QString());
    QCOMPARE(row[PosFirst], QString::number(desk.sector(places.constFirst()) + 1));
    QCOMPARE(row[PosLast], QString::number(desk.sector(places.constLast()) + 1));
    QCOMPARE(row[Error], QStringLiteral("1"));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
}

void tst_Test4Trial::behindSuchALimitNoClickIsTakenBeforeTheQuestion()
{
    MemoryDesk desk;
    desk.startTest();
    QVERIFY(desk.runToQuestion().size() >= 2);
    desk.task.sequence4();
    desk.clickAt(elsewhere);
    desk.click("pb_continue");
    desk.clickAt(elsewhere);
    QCOMPARE(desk.text("le_distLast"), QString());
    QVERIFY(!desk.last->isVisible());
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.rows().constLast()[DistLast], QStringLiteral("   10.00"));
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

QTEST_MAIN(tst_Test4Trial)
#include "tst_Test4Trial.moc"
