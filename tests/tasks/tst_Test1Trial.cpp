#include "VisionDesk.h"

#include "randomness.h"
#include "tables.h"

#include <QCursor>
#include <QSet>

#include <vector>

using namespace column;

/// One trial: what is seen, what is timed, how it is judged, what it leaves behind.
class tst_Test1Trial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTrialTakesItsTimes_data();
    void aTrialTakesItsTimes();
    void everyLinkShowsWhatBelongsToIt_data();
    void everyLinkShowsWhatBelongsToIt();
    void theStimulusStandsForTheWholeExposureAndTheMaskFollowsAtOnce_data();
    void theStimulusStandsForTheWholeExposureAndTheMaskFollowsAtOnce();
    void thePointerIsSeenDuringTheAnswerOnly();
    void aTrialWaitsForItsAnswer();
    void aRowIsWrittenWhenTheRestIsOver();
    void aRowHasThirtyColumns_data();
    void aRowHasThirtyColumns();
    void everyFigureIsJudged_data();
    void everyFigureIsJudged();
    void everyPositionIsJudged_data();
    void everyPositionIsJudged();
    void aDualTrialTakesItsAnswersInBothOrders_data();
    void aDualTrialTakesItsAnswersInBothOrders();
    void theAnswerTimeOfADualTrialIsThatOfTheSecondAnswer();
    void aBlockOfThreeHoldsEverySubtaskOnce();
    void everyShuffleIsUsedUpBeforeTheNext_data();
    void everyShuffleIsUsedUpBeforeTheNext();
    void aSubtaskMovesOnlyTheShufflesItUses();
    void theFirstTrialRunsAtTheStoredThreshold_data();
    void theFirstTrialRunsAtTheStoredThreshold();
    void aScreenOf120HertzHasItsOwnExposures();
    void aStepIsShownAtOnce_data();
    void aStepIsShownAtOnce();
    void everySubtaskWalksOnItsOwnTrack();
    void aWalkAgainstALimitTakesTwoPlaces_data();
    void aWalkAgainstALimitTakesTwoPlaces();
    void underFixedDurationEveryTrialLastsTheCycle_data();
    void underFixedDurationEveryTrialLastsTheCycle();
    void aTrialThatTimesOutLeavesItsRow_data();
    void aTrialThatTimesOutLeavesItsRow();
    void aFirstTrialThatTimesOutHasNoFigureAndNoAnswer();
    void aDualTrialThatTimesOutKeepsItsHalf_data();
    void aDualTrialThatTimesOutKeepsItsHalf();
    void aTrialThatTimesOutMakesNoStep();
    void aTrialThatTimesOutHitsNoLimit();
    void aTrialThatTimesOutMovesBothShuffles();
    void aRunUnderFixedDurationLeavesItsRows();
    void aCycleThatIsUsedUpDoesNotStopTheChain();
};

namespace {

constexpr int answerLimit = 5000; // ms, under "Fixed duration"

bool hasFigures(int subtask)
{
    return subtask != 1;
}

bool hasTriangles(int subtask)
{
    return subtask != 0;
}

void addModes()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("central") << 1;
    QTest::newRow("peripheral") << 2;
    QTest::newRow("dual") << 3;
}

/// The stored threshold of the patient at the desk, by the mode of one subtask.
int stored(int mode)
{
    constexpr std::array thresholds{283, 367, 483};
    return thresholds.at(std::size_t(mode - 1));
}

/// The exposures of a screen of 60 Hz, by the step of the staircase.
constexpr std::array ladder{17,  17,  33,  33,  50,   67,   83,   117,  150,  217,  283,
                            367, 483, 650, 850, 1133, 1500, 1983, 2633, 3500, 4633, 4633};

/// A walk over most of the ladder, 50 trials long, with too few turning points to end before. It
/// starts at 283 or 367 ms.
bool wideWalk(int trial)
{
    constexpr int down = 8;
    constexpr int across = 17;
    return trial < down || (trial >= down + across && trial < down + 2 * across);
}

/// The two shuffles as they should run: each is drawn when a trial needs it and it is used up.
struct Shuffles
{
    std::vector<int> figures;
    std::vector<int> places;
    int figure = 10;
    int place = 6;

    void drawForTrial(int subtask, const VirtualTime &time)
    {
        if (hasFigures(subtask) && figure > 9) {
            figure = 0;
            figures = randomness::shuffled(10, time.seedSeconds());
        }
        if (hasTriangles(subtask) && place > 5) {
            place = 0;
            places = randomness::shuffled(6, time.seedSeconds());
        }
    }
    int figureNumber() const { return figures.at(std::size_t(figure)); }
    int placeNumber() const { return places.at(std::size_t(place)); }
    QString figureCode() const { return tables::_shapeDef.at(std::size_t(figureNumber())); }
    QString placeCode() const { return tables::_triDef.at(std::size_t(placeNumber())); }
    /// What is to be seen of the figures: the two identical pairs look the same.
    int look() const { return figureNumber() == 5 ? 0 : figureNumber(); }
};

/// The trial's own fields of a row, from its exposure to the step at a limit.
QString ownFields(const QStringList &row)
{
    return row.mid(Exposure, 8).join(u';');
}

/// From the answer buttons to the end of the trial without an answer.
bool letPass(VisionDesk &desk)
{
    if (!desk.reach(5))
        return false;
    desk.time.advance(answerLimit);
    return desk.task.stage() == 6 && desk.reach(1);
}

} // namespace

void tst_Test1Trial::aTrialTakesItsTimes_data()
{
    addModes();
}

void tst_Test1Trial::aTrialTakesItsTimes()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode});
    int exposure = stored(mode);
    for (int trial = 0; trial < 3; ++trial) {
        QCOMPARE(desk.task.stage(), 1);
        int stage = 1;
        for (const int length : {500, exposure, 200, 500}) {
            desk.time.advance(length - 1);
            QCOMPARE(desk.task.stage(), stage);
            desk.time.advance(1);
            QCOMPARE(desk.task.stage(), ++stage);
        }
        desk.time.advance(777);
        QCOMPARE(desk.task.stage(), 5);
        desk.answerRight();
        QCOMPARE(desk.task.stage(), 6);
        desk.time.advance(999);
        QCOMPARE(desk.task.stage(), 6);
        desk.time.advance(1);
        QCOMPARE(desk.rows().constLast()[AnswerTime], QStringLiteral("777"));
        const auto step = std::ranges::find(ladder, exposure);
        exposure = *std::prev(step); // one shorter, behind a success
    }
}

void tst_Test1Trial::everyLinkShowsWhatBelongsToIt_data()
{
    addModes();
}

void tst_Test1Trial::everyLinkShowsWhatBelongsToIt()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode});
    for (int stage = 1; stage <= 6; ++stage) {
        QVERIFY(desk.reach(stage));
        QCOMPARE(desk.cross->isVisible(), stage == 1 || stage == 6);
        QCOMPARE(desk.noise->isVisible(), stage == 3);
        QCOMPARE(desk.shownFigure() >= 0, stage == 2 && mode != 2);
        QCOMPARE(desk.shownTarget() >= 0, stage == 2 && mode != 1);
        if (stage != 2) {
            QCOMPARE(desk.shownFigure(), -1);
            QCOMPARE(desk.shownTarget(), -1);
        }
        QCOMPARE(desk.shownFigureButtons(), stage == 5 && mode != 2 ? 5 : 0);
        QCOMPARE(desk.shownPositionButtons(), stage == 5 && mode != 1 ? 6 : 0);
        for (const char *name : {"lbl_mode", "lbl_instruction", "pb_go", "pb_next", "pb_continue",
                                 "pb_results", "pb_mainMenu"})
            QVERIFY2(!desk.shown(name), name);
        if (stage == 5)
            desk.answerRight();
    }
}

void tst_Test1Trial::theStimulusStandsForTheWholeExposureAndTheMaskFollowsAtOnce_data()
{
    addModes();
}

void tst_Test1Trial::theStimulusStandsForTheWholeExposureAndTheMaskFollowsAtOnce()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    // Of the change from the stimulus to the mask: what happened, at which moment.
    struct Change : QObject
    {
        explicit Change(VisionDesk &d)
            : desk(d)
        {
        }
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::Hide && watched != desk.noise)
                hidden.append(desk.time.nanoseconds());
            if (event->type() == QEvent::Show && watched == desk.noise)
                masked.append(desk.time.nanoseconds());
            return false;
        }
        VisionDesk &desk;
        QList<qint64> hidden;
        QList<qint64> masked;
    } change(desk);

    desk.startTest({.mode = mode});
    QVERIFY(desk.reach(2));
    QList<QWidget *> seen;
    for (const auto &side : {desk.lefts, desk.rights})
        std::ranges::copy_if(side, std::back_inserter(seen), &QWidget::isVisible);
    std::ranges::copy_if(desk.arrows, std::back_inserter(seen), &QWidget::isVisible);
    QCOMPARE(seen.size(), (mode != 2 ? 2 : 0) + (mode != 1 ? 6 : 0));
    for (QWidget *widget : qAsConst(seen))
        widget->installEventFilter(&change);
    desk.noise->installEventFilter(&change);

    const qint64 onset = desk.time.nanoseconds();
    desk.time.advance(stored(mode) - 1);
    QVERIFY(change.hidden.isEmpty() && change.masked.isEmpty());
    desk.time.advance(5000);
    const qint64 offset = onset + stored(mode) * qint64(1'000'000);
    QCOMPARE(change.hidden, QList<qint64>(seen.size(), offset));
    QCOMPARE(change.masked, QList<qint64>{offset});
}

void tst_Test1Trial::thePointerIsSeenDuringTheAnswerOnly()
{
    VisionDesk desk;
    desk.go({.mode = 3});
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    desk.click("pb_go");
    for (const int stage : {1, 2, 3, 4}) {
        QVERIFY(desk.reach(stage));
        QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    }
    QCursor::setPos(3, 4);
    QVERIFY(desk.reach(5));
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(QCursor::pos(), desk.task.mapToGlobal(desk.centre()));
    QCursor::setPos(3, 4);
    desk.answerFigure(true);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor); // one half is still to come
    QCOMPARE(QCursor::pos(), QPoint(3, 4));
    desk.answerPosition(true);
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
}

void tst_Test1Trial::aTrialWaitsForItsAnswer()
{
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    desk.time.advance(3'600'000);
    QCOMPARE(desk.task.stage(), 5);
    desk.answerFigure(true);
    desk.time.advance(3'600'000);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.shownFigureButtons(), 0);
    QCOMPARE(desk.shownPositionButtons(), 6);
    desk.answerPosition(true);
    QVERIFY(desk.reach(1));
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row[AnswerTime], QStringLiteral("7200000"));
    QCOMPARE(row[Error], QStringLiteral("0"));
}

void tst_Test1Trial::aRowIsWrittenWhenTheRestIsOver()
{
    VisionDesk desk;
    desk.startTest({.mode = 1});
    for (int trial = 0; trial < 3; ++trial) {
        QVERIFY(desk.reach(5));
        desk.answerRight();
        desk.time.advance(999);
        QCOMPARE(desk.rows().size(), trial);
        desk.time.advance(1);
        QCOMPARE(desk.rows().size(), trial + 1); // read back while the log is open
    }
    QVERIFY(!desk.root.exists(QStringLiteral("Results/valid-output.csv")));
}

void tst_Test1Trial::aRowHasThirtyColumns_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("right");
    QTest::addColumn<QString>("head"); // task, session, onset
    QTest::addColumn<QString>("judged");
    const auto onset = QStringLiteral("06/01/2025;09:00:00.500;");
    QTest::newRow("central, right") << 1 << true << QStringLiteral("5;6;") + onset << "0";
    QTest::newRow("central, wrong") << 1 << false << QStringLiteral("5;6;") + onset << "1";
    QTest::newRow("peripheral, right") << 2 << true << QStringLiteral("6;7;") + onset << "0";
    QTest::newRow("peripheral, wrong") << 2 << false << QStringLiteral("6;7;") + onset << "2";
    QTest::newRow("dual, right") << 3 << true << QStringLiteral("7;8;") + onset << "0";
    QTest::newRow("dual, wrong") << 3 << false << QStringLiteral("7;8;") + onset << "3";
}

void tst_Test1Trial::aRowHasThirtyColumns()
{
    QFETCH(const int, mode);
    QFETCH(const bool, right);
    QFETCH(const QString, head);
    QFETCH(const QString, judged);
    VisionDesk desk;
    sessionStore().siteCode = QStringLiteral("UKB");
    desk.startTest({.mode = mode});
    QVERIFY(desk.reach(2));
    Shuffles expected;
    expected.drawForTrial(mode - 1, desk.time);
    QVERIFY(desk.runTrial(right, 512));

    constexpr std::array kinds{"Id", "Sh", "Cn", "Or", "Sz"};
    constexpr std::array places{"TL", "ML", "BL", "TR", "MR", "BR"};
    QString figures = QStringLiteral(";");
    if (mode != 2) {
        const int answer = (expected.figureNumber() + (right ? 0 : 1)) % 5;
        figures = expected.figureCode() + u';' + QLatin1String(kinds.at(std::size_t(answer)));
    }
    QString triangles = QStringLiteral(";");
    if (mode != 1) {
        const int answer = (expected.placeNumber() + (right ? 0 : 1)) % 6;
        triangles = expected.placeCode() + u';' + QLatin1String(places.at(std::size_t(answer)));
    }
    const QString row = QStringLiteral("UKB;Mrs.;Doe;Jane;01/02/1950;%1%2;1;1;%3;%4;%5;512;%6;0;"
                                       ";;;;;;;;;0\n")
                            .arg(head, QString::number(mode), QString::number(stored(mode)),
                                 figures, triangles, judged);
    QCOMPARE(desk.rows().constFirst().size(), int(Count));
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")),
             tables::_headerArchive + row.toLatin1());
}

void tst_Test1Trial::everyFigureIsJudged_data()
{
    QTest::addColumn<int>("beside"); // how far the pressed button stands from the right one
    for (int beside = 0; beside < 5; ++beside)
        QTest::addRow("%d beside", beside) << beside;
}

void tst_Test1Trial::everyFigureIsJudged()
{
    QFETCH(const int, beside);
    constexpr std::array codes{"Id", "Sh", "Cn", "Or", "Sz"};
    const QString judged = beside == 0 ? QStringLiteral("0") : QStringLiteral("1");
    const QString result = beside == 0 ? QStringLiteral("1") : QStringLiteral("0");
    VisionDesk desk;
    desk.startTest({.mode = 1});
    QSet<QString> shown;
    for (int trial = 0; trial < 10; ++trial) {
        QVERIFY(desk.reach(5));
        const int kind = desk.seenFigure % 5;
        const auto pressed = std::size_t((kind + beside) % 5);
        desk.click(VisionDesk::figureButtons[pressed]);
        QCOMPARE(desk.text("le_result"), result);
        QVERIFY(desk.reach(1));

        const QStringList row = desk.rows().constLast();
        QVERIFY(row[Figure].startsWith(QLatin1String(codes.at(std::size_t(kind)))));
        if (kind != 0)
            QCOMPARE(row[Figure].at(2), desk.seenFigure < 5 ? u'R' : u'L');
        QCOMPARE(row[FigureAnswer], QLatin1String(codes.at(pressed)));
        QCOMPARE(row[Place] + row[PlaceAnswer], QString());
        QCOMPARE(row[Answer], judged);
        shown.insert(row[Figure]);
    }
    QCOMPARE(shown.size(), 10);
}

void tst_Test1Trial::everyPositionIsJudged_data()
{
    QTest::addColumn<int>("beside");
    for (int beside = 0; beside < 6; ++beside)
        QTest::addRow("%d beside", beside) << beside;
}

void tst_Test1Trial::everyPositionIsJudged()
{
    QFETCH(const int, beside);
    constexpr std::array codes{"TL", "ML", "BL", "TR", "MR", "BR"};
    const QString judged = beside == 0 ? QStringLiteral("0") : QStringLiteral("2");
    const QString result = beside == 0 ? QStringLiteral("1") : QStringLiteral("0");
    VisionDesk desk;
    desk.startTest({.mode = 2});
    QSet<QString> shown;
    for (int trial = 0; trial < 6; ++trial) {
        QVERIFY(desk.reach(5));
        const auto pressed = std::size_t((desk.seenTarget + beside) % 6);
        desk.click(VisionDesk::positionButtons[pressed]);
        QCOMPARE(desk.text("le_result"), result);
        QVERIFY(desk.reach(1));

        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Place], QLatin1String(codes.at(std::size_t(desk.seenTarget))));
        QCOMPARE(row[PlaceAnswer], QLatin1String(codes.at(pressed)));
        QCOMPARE(row[Figure] + row[FigureAnswer], QString());
        QCOMPARE(row[Answer], judged);
        shown.insert(row[Place]);
    }
    QCOMPARE(shown.size(), 6);
}

void tst_Test1Trial::aDualTrialTakesItsAnswersInBothOrders_data()
{
    QTest::addColumn<bool>("figureFirst");
    QTest::addColumn<bool>("figureRight");
    QTest::addColumn<bool>("positionRight");
    QTest::addColumn<QString>("judged");
    for (const bool figureFirst : {true, false}) {
        const char *order = figureFirst ? "figure first" : "position first";
        QTest::addRow("%s, both right", order) << figureFirst << true << true << "0";
        QTest::addRow("%s, figure wrong", order) << figureFirst << false << true << "1";
        QTest::addRow("%s, position wrong", order) << figureFirst << true << false << "2";
        QTest::addRow("%s, both wrong", order) << figureFirst << false << false << "3";
    }
}

void tst_Test1Trial::aDualTrialTakesItsAnswersInBothOrders()
{
    QFETCH(const bool, figureFirst);
    QFETCH(const bool, figureRight);
    QFETCH(const bool, positionRight);
    QFETCH(const QString, judged);
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    if (figureFirst)
        desk.answerFigure(figureRight);
    else
        desk.answerPosition(positionRight);
    QCOMPARE(desk.task.stage(), 5);
    QCOMPARE(desk.shownFigureButtons(), figureFirst ? 0 : 5);
    QCOMPARE(desk.shownPositionButtons(), figureFirst ? 6 : 0);
    QVERIFY(!desk.cross->isVisible());
    QCOMPARE(desk.text("le_result"), QString());
    QCOMPARE(desk.text("le_timer02_S3"), QStringLiteral("483"));
    if (figureFirst)
        desk.answerPosition(positionRight);
    else
        desk.answerFigure(figureRight);
    QCOMPARE(desk.task.stage(), 6);
    QCOMPARE(desk.shownFigureButtons() + desk.shownPositionButtons(), 0);

    const bool success = figureRight && positionRight;
    QCOMPARE(desk.text("le_result"), success ? QStringLiteral("1") : QStringLiteral("0"));
    QCOMPARE(desk.text("le_timer02_S3"), success ? QStringLiteral("367") : QStringLiteral("650"));
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.rows().constFirst()[Answer], judged);
    QCOMPARE(desk.rows().constFirst()[Error], QStringLiteral("0"));
}

void tst_Test1Trial::theAnswerTimeOfADualTrialIsThatOfTheSecondAnswer()
{
    VisionDesk desk;
    desk.startTest({.mode = 3});
    QVERIFY(desk.reach(5));
    desk.time.advance(400);
    desk.answerPosition(true);
    desk.time.advance(350);
    desk.answerFigure(true);
    QVERIFY(desk.reach(1));
    QCOMPARE(desk.rows().constFirst()[AnswerTime], QStringLiteral("750"));
}

void tst_Test1Trial::aBlockOfThreeHoldsEverySubtaskOnce()
{
    VisionDesk desk;
    desk.startTest({.mode = 0});
    QSet<QString> orders;
    for (int block = 0; block < 12; ++block) {
        const std::vector<int> order = randomness::shuffled(3, desk.time.seedSeconds());
        QString names;
        for (const int subtask : order) {
            QCOMPARE(desk.text("le_subtask"), QString::number(subtask + 1));
            QVERIFY(desk.reach(5));
            QCOMPARE(desk.shownFigureButtons() > 0, hasFigures(subtask));
            QCOMPARE(desk.shownPositionButtons() > 0, hasTriangles(subtask));
            QVERIFY(desk.runTrial(block % 2 == 0));
            QCOMPARE(desk.rows().constLast()[Subtask], QString::number(subtask + 1));
            names += desk.rows().constLast()[Subtask];
        }
        QCOMPARE(QSet<QChar>(names.begin(), names.end()).size(), 3);
        orders.insert(names);
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test1Trial::everyShuffleIsUsedUpBeforeTheNext_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("field");
    QTest::addColumn<int>("size");
    QTest::newRow("figures") << 1 << int(Figure) << 10;
    QTest::newRow("positions") << 2 << int(Place) << 6;
}

void tst_Test1Trial::everyShuffleIsUsedUpBeforeTheNext()
{
    QFETCH(const int, mode);
    QFETCH(const int, field);
    QFETCH(const int, size);
    VisionDesk desk;
    desk.startTest({.mode = mode});
    for (int trial = 0; trial < 4 * size; ++trial)
        QVERIFY(desk.runTrial(wideWalk(trial)));
    QStringList shown;
    for (const QStringList &row : desk.rows())
        shown.append(row[field]);
    QSet<QStringList> orders;
    for (int shuffle = 0; shuffle < 4; ++shuffle) {
        const QStringList part = shown.mid(qsizetype(shuffle) * size, size);
        QCOMPARE(QSet<QString>(part.begin(), part.end()).size(), size);
        orders.insert(part);
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test1Trial::aSubtaskMovesOnlyTheShufflesItUses()
{
    VisionDesk desk;
    desk.startTest({.mode = 0});
    Shuffles expected;
    for (int trial = 0; trial < 45; ++trial) {
        const int subtask = desk.text("le_subtask").toInt() - 1;
        QVERIFY(desk.reach(2));
        expected.drawForTrial(subtask, desk.time);
        QCOMPARE(desk.shownFigure(), hasFigures(subtask) ? expected.look() : -1);
        QCOMPARE(desk.shownTarget(), hasTriangles(subtask) ? expected.placeNumber() : -1);
        QVERIFY(desk.runTrial(trial % 2 == 0));
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[Figure], hasFigures(subtask) ? expected.figureCode() : QString());
        QCOMPARE(row[Place], hasTriangles(subtask) ? expected.placeCode() : QString());
        expected.figure += hasFigures(subtask) ? 1 : 0;
        expected.place += hasTriangles(subtask) ? 1 : 0;
    }
}

void tst_Test1Trial::theFirstTrialRunsAtTheStoredThreshold_data()
{
    QTest::addColumn<int>("threshold");
    QTest::addColumn<int>("shorter"); // the second exposure, behind a success
    QTest::addColumn<int>("longer");  // and behind a failure
    QTest::newRow("on the ladder") << 283 << 217 << 367;
    QTest::newRow("between two steps") << 300 << 283 << 483;
    QTest::newRow("one below a step") << 282 << 217 << 367;
    QTest::newRow("one above a step") << 284 << 283 << 483;
    QTest::newRow("of two equal steps the first") << 33 << 17 << 33;
    QTest::newRow("below the ladder") << 5 << 17 << 33;
    QTest::newRow("the shortest") << 17 << 17 << 33;
    QTest::newRow("the longest") << 4633 << 3500 << 4633;
    QTest::newRow("beyond the ladder") << 5000 << 3500 << 4633;
}

void tst_Test1Trial::theFirstTrialRunsAtTheStoredThreshold()
{
    QFETCH(const int, threshold);
    QFETCH(const int, shorter);
    QFETCH(const int, longer);
    for (const bool right : {true, false}) {
        VisionDesk desk;
        desk.writePatient(QByteArray::number(threshold) + ";0;0");
        desk.startTest({.mode = 1});
        QVERIFY(desk.reach(2));
        desk.time.advance(threshold - 1);
        QCOMPARE(desk.task.stage(), 2);
        desk.time.advance(1);
        QCOMPARE(desk.task.stage(), 3);
        QVERIFY(desk.runTrial(right));
        QVERIFY(desk.runTrial(true));
        QCOMPARE(desk.rows().at(0)[Exposure], QString::number(threshold));
        QCOMPARE(desk.rows().at(1)[Exposure], QString::number(right ? shorter : longer));
    }
}

void tst_Test1Trial::aScreenOf120HertzHasItsOwnExposures()
{
    VisionDesk desk;
    sessionStore().frequency = 1;
    desk.startTest({.mode = 1});
    for (const bool right : {true, true, true, false, false, false, false})
        QVERIFY(desk.runTrial(right));
    QStringList exposures;
    for (const QStringList &row : desk.rows())
        exposures.append(row[Exposure]);
    // 283 isn't a step of this ladder: the walk starts at 367.
    QCOMPARE(exposures.join(u' '), QStringLiteral("283 275 208 158 208 275 367"));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("492"));
}

void tst_Test1Trial::aStepIsShownAtOnce_data()
{
    addModes();
}

void tst_Test1Trial::aStepIsShownAtOnce()
{
    QFETCH(const int, mode);
    constexpr std::array edits{"le_timer02_S1", "le_timer02_S2", "le_timer02_S3"};
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true});
    auto step = std::ranges::find(ladder, stored(mode));
    for (const bool right : {true, true, false, true, false, false, false}) {
        QVERIFY(desk.reach(5));
        desk.answer(right);
        right ? --step : ++step;
        for (int subtask = 0; subtask < 3; ++subtask) {
            const int shown = subtask == mode - 1 ? *step : stored(subtask + 1);
            QCOMPARE(desk.text(edits.at(std::size_t(subtask))), QString::number(shown));
        }
        QCOMPARE(desk.text("le_result"), right ? QStringLiteral("1") : QStringLiteral("0"));
        QVERIFY(desk.reach(1));
    }
}

void tst_Test1Trial::everySubtaskWalksOnItsOwnTrack()
{
    constexpr std::array ranks{"le_noS1", "le_noS2", "le_noS3"};
    VisionDesk desk;
    desk.startTest({.mode = 0, .parameters = true});
    std::array<int, 3> step{10, 11, 12};
    std::array<int, 3> trials{};
    std::array<int, 3> exposure{283, 367, 483};
    for (int trial = 0; trial < 18; ++trial) {
        QCOMPARE(desk.text("le_no"), QString::number(trial + 1));
        for (std::size_t s = 0; s < 3; ++s)
            QCOMPARE(desk.text(ranks.at(s)), QString::number(trials.at(s) + 1));
        const auto subtask = std::size_t(desk.text("le_subtask").toInt() - 1);
        const bool right = (trial * 7 + int(subtask)) % 3 != 0;
        QVERIFY(desk.runTrial(right));
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row[RankTask], QString::number(trial + 1));
        QCOMPARE(row[RankSub], QString::number(++trials.at(subtask)));
        QCOMPARE(row[Exposure], QString::number(exposure.at(subtask)));
        QCOMPARE(row[Limit], QStringLiteral("0"));
        step.at(subtask) += right ? -1 : 1;
        exposure.at(subtask) = ladder.at(std::size_t(step.at(subtask)));
    }
}

void tst_Test1Trial::aWalkAgainstALimitTakesTwoPlaces_data()
{
    QTest::addColumn<QByteArray>("threshold");
    QTest::addColumn<bool>("outwards"); // the answer that leads beyond the limit
    QTest::addColumn<QList<int>>("track");
    QTest::addColumn<QString>("back"); // the exposure after the way back
    QTest::newRow("floor") << QByteArray("17") << true << QList<int>{1, 0, 1, 0, 1, 2}
                           << QStringLiteral("33");
    QTest::newRow("ceiling") << QByteArray("4633") << false << QList<int>{20, 21, 20, 21, 20, 19}
                             << QStringLiteral("3500");
}

void tst_Test1Trial::aWalkAgainstALimitTakesTwoPlaces()
{
    QFETCH(const QByteArray, threshold);
    QFETCH(const bool, outwards);
    QFETCH(const QList<int>, track);
    QFETCH(const QString, back);
    VisionDesk desk;
    desk.writePatient(threshold + ";0;0");
    desk.startTest({.mode = 1, .parameters = true});
    QVERIFY(desk.runTrial(outwards));
    QCOMPARE(desk.text("le_no"), QStringLiteral("2"));
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("3"));
    QVERIFY(desk.runTrial(outwards));
    QCOMPARE(desk.text("le_timer02_S1"), QString::fromLatin1(threshold));
    QVERIFY(desk.runTrial(!outwards));
    QCOMPARE(desk.text("le_timer02_S1"), back);
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("6"));

    QString seen;
    for (const QStringList &row : desk.rows())
        seen += QStringList{row[RankTask], row[RankSub], row[Limit]}.join(u' ') + u',';
    QCOMPARE(seen, QStringLiteral("1 2 1,2 4 1,3 5 0,"));
    const auto entries = desk.task.staircase(Test1::Central).track();
    QCOMPARE(QList<int>(entries.begin(), entries.end()), track);
}

void tst_Test1Trial::underFixedDurationEveryTrialLastsTheCycle_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("cycle"); // 500 + 200 + 500 + 5000 + 1000 and the exposure
    QTest::newRow("interleaved") << 0 << 7200 + 483;
    QTest::newRow("central") << 1 << 7200 + 283;
    QTest::newRow("peripheral") << 2 << 7200 + 367;
    QTest::newRow("dual") << 3 << 7200 + 483;
}

void tst_Test1Trial::underFixedDurationEveryTrialLastsTheCycle()
{
    QFETCH(const int, mode);
    QFETCH(const int, cycle);
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QString::number(cycle));
    struct Trial
    {
        int thinking; // 0: no answer
        bool right;
    };
    for (const auto &[thinking, right] : {Trial{250, true}, Trial{4999, false}, Trial{0, false},
                                          Trial{1, false}, Trial{700, true}, Trial{0, false}}) {
        const QDateTime start = desk.time.currentDateTime();
        QVERIFY(thinking > 0 ? desk.runTrial(right, thinking) : letPass(desk));
        QCOMPARE(desk.task.stage(), 1);
        QCOMPARE(start.msecsTo(desk.time.currentDateTime()), cycle);
    }
    QCOMPARE(desk.text("le_timeTc"), QString::number(cycle)); // not recomputed on the way
}

void tst_Test1Trial::aTrialThatTimesOutLeavesItsRow_data()
{
    addModes();
}

void tst_Test1Trial::aTrialThatTimesOutLeavesItsRow()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.startTest({.mode = mode, .parameters = true, .fixedDuration = true});
    QVERIFY(desk.runTrial(false));
    QVERIFY(desk.reach(5));
    desk.time.advance(answerLimit - 1);
    QCOMPARE(desk.task.stage(), 5);
    desk.time.advance(1);
    QCOMPARE(desk.task.stage(), 6);
    QCOMPARE(desk.text("le_result"), QStringLiteral("0"));
    QCOMPARE(desk.shownFigureButtons() + desk.shownPositionButtons(), 0);
    QVERIFY(desk.cross->isVisible());
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QVERIFY(desk.reach(1));

    const QStringList before = desk.rows().at(0);
    const QStringList row = desk.rows().at(1);
    QCOMPARE(row.size(), int(Count));
    QCOMPARE(row[Figure], before[Figure]); // kept
    QCOMPARE(row[FigureAnswer], before[FigureAnswer]);
    QCOMPARE(row[PlaceAnswer], before[PlaceAnswer]);
    QCOMPARE(row[Place], mode == 1 ? QString() : tables::_triDef.at(std::size_t(desk.seenTarget)));
    QCOMPARE(row[AnswerTime], QStringLiteral("5000"));
    QCOMPARE(row[Answer], QStringLiteral("0"));
    QCOMPARE(row[Limit], QStringLiteral("0"));
    QCOMPARE(row[Error], QStringLiteral("1"));
    QCOMPARE(row[RankTask], QStringLiteral("2"));
    QCOMPARE(row[RankSub], QStringLiteral("2"));
    QCOMPARE(before[Error], QStringLiteral("0"));
}

void tst_Test1Trial::aFirstTrialThatTimesOutHasNoFigureAndNoAnswer()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .fixedDuration = true});
    QVERIFY(desk.runTrial(true));
    desk.key(Qt::Key_Escape);
    const qsizetype earlier = desk.rows().size();
    desk.startTest({.mode = 1, .fixedDuration = true}); // nothing is left of the run before
    QVERIFY(letPass(desk));
    QCOMPARE(ownFields(desk.rows().at(earlier)), QStringLiteral("217;;;;;5000;0;0"));
}

void tst_Test1Trial::aDualTrialThatTimesOutKeepsItsHalf_data()
{
    QTest::addColumn<bool>("figureAnswered");
    QTest::addColumn<bool>("right");
    QTest::addColumn<QString>("judged");
    QTest::newRow("figure, right") << true << true << "0";
    QTest::newRow("figure, wrong") << true << false << "1";
    QTest::newRow("position, right") << false << true << "0";
    QTest::newRow("position, wrong") << false << false << "2";
}

void tst_Test1Trial::aDualTrialThatTimesOutKeepsItsHalf()
{
    QFETCH(const bool, figureAnswered);
    QFETCH(const bool, right);
    QFETCH(const QString, judged);
    VisionDesk desk;
    desk.startTest({.mode = 3, .fixedDuration = true});
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.reach(2));
    const std::vector<int> figures = randomness::shuffled(10, 1); // of the first second
    const std::vector<int> places = randomness::shuffled(6, 1);
    QVERIFY(desk.reach(5));
    desk.time.advance(100);
    if (figureAnswered)
        desk.answerFigure(right);
    else
        desk.answerPosition(right);
    desk.time.advance(answerLimit - 100);
    QCOMPARE(desk.task.stage(), 6);
    QVERIFY(desk.reach(1));

    const QStringList before = desk.rows().at(0);
    const QStringList row = desk.rows().at(1);
    if (figureAnswered) {
        QCOMPARE(row[Figure], tables::_shapeDef.at(std::size_t(figures[1])));
        QCOMPARE(row[FigureAnswer],
                 tables::_shapeButton.at(std::size_t(figures[1] + (right ? 0 : 1)) % 5));
        QCOMPARE(row[Place], tables::_triDef.at(std::size_t(places[1])));
        QCOMPARE(row[PlaceAnswer], before[PlaceAnswer]);
    } else {
        QCOMPARE(row[Figure], before[Figure]);
        QCOMPARE(row[FigureAnswer], before[FigureAnswer]);
        QCOMPARE(row[Place], tables::_triDef.at(std::size_t(places[2]))); // it has moved on
        QCOMPARE(row[PlaceAnswer],
                 tables::_triDef.at(std::size_t(places[1] + (right ? 0 : 1)) % 6));
    }
    QCOMPARE(row[AnswerTime], QStringLiteral("5000"));
    QCOMPARE(row[Answer], judged);
    QCOMPARE(row[Error], QStringLiteral("1"));

    // The half that was answered has moved by two.
    QVERIFY(desk.reach(2));
    QCOMPARE(desk.shownTarget(), places[figureAnswered ? 2 : 3]);
    const int figure = figures[figureAnswered ? 3 : 2];
    QCOMPARE(desk.shownFigure(), figure == 5 ? 0 : figure);
}

void tst_Test1Trial::aTrialThatTimesOutMakesNoStep()
{
    VisionDesk desk;
    desk.startTest({.mode = 1, .parameters = true, .fixedDuration = true});
    QVERIFY(desk.runTrial(true));
    QVERIFY(letPass(desk));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("217"));
    QCOMPARE(desk.text("le_noS1"), QStringLiteral("3"));
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.runTrial(false));
    QStringList exposures;
    for (const QStringList &row : desk.rows())
        exposures.append(row[Exposure]);
    QCOMPARE(exposures.join(u' '), QStringLiteral("283 217 217 150"));
    const auto track = desk.task.staircase(Test1::Central).track();
    QCOMPARE(QList<int>(track.begin(), track.end()), QList<int>({10, 9, 0, 8, 9}));
}

void tst_Test1Trial::aTrialThatTimesOutHitsNoLimit()
{
    VisionDesk desk;
    desk.writePatient("17;0;0");
    desk.startTest({.mode = 1, .fixedDuration = true});
    QVERIFY(desk.runTrial(true));
    QVERIFY(letPass(desk));
    QCOMPARE(desk.rows().at(0)[Limit], QStringLiteral("1"));
    QCOMPARE(desk.rows().at(1)[Limit], QStringLiteral("0"));
    QCOMPARE(desk.rows().at(1)[RankSub], QStringLiteral("3"));
}

void tst_Test1Trial::aTrialThatTimesOutMovesBothShuffles()
{
    VisionDesk desk;
    desk.startTest({.mode = 0, .fixedDuration = true});
    Shuffles expected;
    for (int trial = 0; trial < 40; ++trial) {
        const int subtask = desk.text("le_subtask").toInt() - 1;
        QVERIFY(desk.reach(2));
        expected.drawForTrial(subtask, desk.time);
        QCOMPARE(desk.shownFigure(), hasFigures(subtask) ? expected.look() : -1);
        QCOMPARE(desk.shownTarget(), hasTriangles(subtask) ? expected.placeNumber() : -1);
        const bool passes = subtask == 1 || trial % 4 == 3;
        QVERIFY(passes ? letPass(desk) : desk.runTrial(trial % 2 == 0));
        expected.figure += passes || hasFigures(subtask) ? 1 : 0;
        expected.place += passes || hasTriangles(subtask) ? 1 : 0;
    }
}

void tst_Test1Trial::aRunUnderFixedDurationLeavesItsRows()
{
    enum Behaviour { Right, Wrong, Nothing, FigureOnly, PositionOnly };
    VisionDesk desk;
    desk.startTest({.mode = 0, .fixedDuration = true});
    Shuffles shuffles;
    QString figure;
    QString figureAnswer;
    QString place;
    QString placeAnswer;
    for (int trial = 0; trial < 54; ++trial) {
        const int subtask = desk.text("le_subtask").toInt() - 1;
        auto behaviour = Behaviour((trial * 7 + trial / 5) % 5);
        if (behaviour >= FigureOnly && subtask != 2)
            behaviour = Right;
        const bool right = behaviour != Wrong;
        QVERIFY(desk.reach(2));
        shuffles.drawForTrial(subtask, desk.time);
        QVERIFY(desk.reach(5));
        desk.time.advance(300);

        const bool timesOut = behaviour >= Nothing;
        if (hasFigures(subtask) && behaviour != Nothing && behaviour != PositionOnly) {
            desk.answerFigure(right);
            figure = shuffles.figureCode();
            figureAnswer =
                tables::_shapeButton.at(std::size_t(shuffles.figureNumber() + (right ? 0 : 1)) % 5);
            ++shuffles.figure;
        }
        if (hasTriangles(subtask) && behaviour != Nothing && behaviour != FigureOnly) {
            desk.answerPosition(right);
            place = shuffles.placeCode();
            placeAnswer =
                tables::_triDef.at(std::size_t(shuffles.placeNumber() + (right ? 0 : 1)) % 6);
            ++shuffles.place;
        }
        if (timesOut) {
            if (hasTriangles(subtask) && shuffles.place < 6)
                place = shuffles.placeCode();
            ++shuffles.figure;
            ++shuffles.place;
        }
        if (subtask == 0) {
            place.clear();
            placeAnswer.clear();
        }
        if (subtask == 1) {
            figure.clear();
            figureAnswer.clear();
        }
        QVERIFY(desk.reach(6));
        QVERIFY(desk.reach(1));

        constexpr std::array codes{"1", "2", "3"};
        const QString judged =
            right ? QStringLiteral("0") : QLatin1String(codes.at(std::size_t(subtask)));
        const QStringList row = desk.rows().constLast();
        QCOMPARE(row.mid(Figure, 6).join(u';'),
                 QStringList({figure, figureAnswer, place, placeAnswer,
                              timesOut ? QStringLiteral("5000") : QStringLiteral("300"), judged})
                     .join(u';'));
        QCOMPARE(row[Error], timesOut ? QStringLiteral("1") : QStringLiteral("0"));
    }
}

void tst_Test1Trial::aCycleThatIsUsedUpDoesNotStopTheChain()
{
    VisionDesk desk;
    desk.writePatient("1133;0;0");
    desk.startTest({.mode = 1, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("8333"));
    for (int trial = 0; trial < 3; ++trial)
        QVERIFY(desk.runTrial(false)); // the exposure grows to 2633 ms, the cycle doesn't
    QVERIFY(desk.reach(5));
    desk.time.advance(answerLimit - 1);
    desk.answerWrong(); // 499 ms behind the cycle's end
    QCOMPARE(desk.task.stage(), 6);
    desk.time.advance(0);
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.rows().size(), 4);

    QVERIFY(desk.reach(5));
    desk.time.advance(answerLimit); // and without an answer
    QCOMPARE(desk.task.stage(), 1);
    QCOMPARE(desk.rows().size(), 5);
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("1"));
    QVERIFY(desk.runTrial(true));
}

QTEST_MAIN(tst_Test1Trial)
#include "tst_Test1Trial.moc"
