#include "MovementDesk.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QSet>
#include <QTemporaryDir>

using namespace column;

/// From the press of the test button to the first thing that the patient sees.
class tst_Test3Setup : public QObject
{
    Q_OBJECT

public:
    /// All runs are on a screen with room for the field and the controls, odd in width and height.
    static void initMain();

private Q_SLOTS:
    void aRunTakesTheWholeScreen();
    void theStimuliStandInTheMiddleAtTheirSizes();
    void theFrameStandsAroundTheSouthWesternPatch();
    void thePadStandsEdgeToEdgeAroundTheCentre();
    void thePadShowsItsArrows_data();
    void thePadShowsItsArrows();
    void theControlsStandInTheirFrame();
    void aRunBeginsWithWhatItsOptionsSay_data();
    void aRunBeginsWithWhatItsOptionsSay();
    void theParametersAreResetOnEveryRun();
    void theSubtaskIsShownAsAskedFor_data();
    void theSubtaskIsShownAsAskedFor();
    void thePitchIsThatOfTheScreen();
    void thePanelIsShownOnRequest();
    void thePanelStaysThroughATrial();
    void theLabelsOfThePanelNameTheirEdits_data();
    void theLabelsOfThePanelNameTheirEdits();
    void theCycleIsTheSumOfItsIntervals_data();
    void theCycleIsTheSumOfItsIntervals();
    void withoutFixedDurationThereIsNoCycle();
    void driftAndNumberAreNoPartOfTheCycle();
    void aTextThatIsNoNumberIsZero_data();
    void aTextThatIsNoNumberIsZero();
    void anEditChangesItsInterval_data();
    void anEditChangesItsInterval();
    void theIntervalOfTheDriftCanBeEdited();
    void aTestStopsAtTheEditedNumber();
    void theConditionIsThatOfTheSubtask_data();
    void theConditionIsThatOfTheSubtask();
    void aSubtaskOfZeroDrawsAmongTheConditions();
    void aSecondRunBeginsFromZero();
    void aRunAfterABrokenOneShowsNothingOfIt();
    void theLogIsOpenInTheTestAlone_data();
    void theLogIsOpenInTheTestAlone();
    void aLogThatCannotBeOpenedIsTold();
    void escapeBeforeTheFirstTrialLeavesAMarker();
};

namespace {
constexpr std::array links{"le_timer01", "le_timer02", "le_timer03",
                           "le_timer04", "le_timer05", "le_timer06"};

/// How many of the ring drift as the shown patch does, itself included.
int companions(const MovementDesk &desk)
{
    return int(std::ranges::count(desk.task.field().ring, desk.askedDirection()));
}

/// How many of all 80 patches do.
int crowd(const MovementDesk &desk)
{
    int count = companions(desk);
    for (const auto &group : desk.task.field().dot)
        count += int(std::ranges::count(group, desk.askedDirection()));
    return count;
}

/// The condition that a field shows, 0 to 2.
int condition(const MovementDesk &desk)
{
    if (companions(desk) == 7 && crowd(desk) == 71)
        return 1;
    return companions(desk) == 1 && crowd(desk) == 9 ? 2 : 0;
}
} // namespace

void tst_Test3Setup::initMain()
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("screens.json")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(R"({"screens": [{"name": "odd", "x": 0, "y": 0, "width": 1281, "height": 1025,)"
                   R"("logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})") < 0)
        qFatal("no description of a screen");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toLocal8Bit());
}

void tst_Test3Setup::aRunTakesTheWholeScreen()
{
    MovementDesk desk;
    QVERIFY(!desk.task.isRunning());
    desk.go({});
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.task.isFullScreen());
    QCOMPARE(desk.task.geometry(), QGuiApplication::primaryScreen()->geometry());
    QCOMPARE(desk.task.size(), QSize(1281, 1025));
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QCOMPARE(desk.task.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QVERIFY(desk.nothingIsShown());
}

// The centre of 1281 by 1025 is (640, 512).

void tst_Test3Setup::theStimuliStandInTheMiddleAtTheirSizes()
{
    MovementDesk desk;
    desk.go({});
    QCOMPARE(desk.cross->geometry(), QRect(640 - 20, 512 - 20, 40, 40));
    QCOMPARE(desk.arrow->geometry(), QRect(640 - 50, 512 - 50, 100, 100));
    QCOMPARE(desk.board->geometry(), QRect(640 - 360, 512 - 360, 720, 720));
    for (int patch = 0; patch < PatchBoard::patches; ++patch)
        QCOMPARE(desk.board->displacement(patch), QPoint(0, 0));
}

void tst_Test3Setup::theFrameStandsAroundTheSouthWesternPatch()
{
    MovementDesk desk;
    desk.go({});
    const QRect frame = desk.border->geometry();
    QCOMPARE(frame, QRect(640 - 115, 512 + 53, 62, 62));
    constexpr int southWest = 3;
    const QPoint centre = QPoint(640, 512) + PatchBoard::ringOffset(southWest);
    QCOMPARE(QRect(centre - QPoint(21, 21), QSize(42, 42)), frame.adjusted(10, 10, -10, -10));
}

void tst_Test3Setup::thePadStandsEdgeToEdgeAroundTheCentre()
{
    MovementDesk desk;
    desk.go({});
    const QRect middle(640 - 36, 512 - 36, 72, 72);
    QCOMPARE(desk.widget("pb_center")->geometry(), middle);
    QCOMPARE(desk.widget("pb_right")->geometry(), QRect(640 + 36, 512 - 36, 72, 72));
    QCOMPARE(desk.widget("pb_left")->geometry(), QRect(640 - 108, 512 - 36, 72, 72));
    QCOMPARE(desk.widget("pb_down")->geometry(), QRect(640 - 36, 512 + 36, 72, 72));
    QCOMPARE(desk.widget("pb_up")->geometry(), QRect(640 - 36, 512 - 108, 72, 72));
    QCOMPARE(desk.shownPad(), 0);
    for (const char *name : MovementDesk::padButtons)
        QCOMPARE(desk.widget(name)->focusPolicy(), Qt::NoFocus); // the keys stay with the task
}

void tst_Test3Setup::thePadShowsItsArrows_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("image");
    for (const char *name : {"right", "left", "up", "down"})
        QTest::newRow(name)
            << QStringLiteral("pb_%1").arg(QLatin1String(name))
            << QStringLiteral(":/Kelmoran/Icons/%1Arrow.png").arg(QLatin1String(name));
}

void tst_Test3Setup::thePadShowsItsArrows()
{
    QFETCH(const QString, button);
    QFETCH(const QString, image);
    MovementDesk desk;
    desk.startTest();
    QVERIFY(desk.pressSpace(600));
    auto *arrow = desk.widget(qPrintable(button));
    QVERIFY(arrow->isVisible());
    QCOMPARE(arrow->text(), QString());
    QCOMPARE(desk.widget("pb_center")->text(), QStringLiteral("?"));

    const QImage icon(image);
    QVERIFY(!icon.isNull());
    QImage expected(72, 72, QImage::Format_RGB32);
    expected.fill(Qt::black);
    QPainter painter(&expected);
    painter.drawImage((72 - icon.width()) / 2, (72 - icon.height()) / 2, icon);
    painter.end();
    QCOMPARE(arrow->grab().toImage().convertToFormat(QImage::Format_RGB32), expected);
}

void tst_Test3Setup::theControlsStandInTheirFrame()
{
    MovementDesk desk;
    desk.go({});
    for (const char *name : {"pb_next", "pb_continue"}) {
        const QRect button = desk.widget(name)->geometry();
        QCOMPARE(button.bottomRight() + QPoint(1, 1), QPoint(640 + 512, 512 + 384));
    }
    const QRect mode = desk.widget<QLabel>("lbl_mode")->geometry();
    QCOMPARE(mode.topRight() + QPoint(1, 0), QPoint(640 + 512, 512 - 384));
    const QPoint centre(640, 512);
    const auto halved = [](const QRect &area) {
        return area.topLeft() + QPoint(area.width() / 2, area.height() / 2);
    };
    QCOMPARE(halved(desk.widget<QLabel>("lbl_instruction")->geometry()), centre);
    QCOMPARE(halved(desk.widget("pb_go")->geometry()), centre);
    QCOMPARE(halved(desk.widget("pb_results")->geometry()), centre - QPoint(100, 0));
    QCOMPARE(halved(desk.widget("pb_mainMenu")->geometry()), centre + QPoint(100, 0));
}

void tst_Test3Setup::aRunBeginsWithWhatItsOptionsSay_data()
{
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("button");
    const QString title = QStringLiteral("Movement\ndetection");
    QTest::newRow("test") << false << false << QString() << QString() << QStringLiteral("pb_go");
    QTest::newRow("instruction") << true << false << QStringLiteral("INSTRUCTIONS") << title
                                 << QStringLiteral("pb_next");
    QTest::newRow("training") << false << true << QStringLiteral("TRAINING") << title
                              << QStringLiteral("pb_go");
    QTest::newRow("both") << true << true << QStringLiteral("INSTRUCTIONS") << title
                          << QStringLiteral("pb_next");
}

void tst_Test3Setup::aRunBeginsWithWhatItsOptionsSay()
{
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    QFETCH(const QString, mode);
    QFETCH(const QString, title);
    QFETCH(const QString, button);
    MovementDesk desk;
    desk.go({.instruction = instruction, .training = training});
    QCOMPARE(desk.mode(), mode);
    QCOMPARE(desk.instruction(), title);
    for (const char *name : {"pb_go", "pb_next", "pb_continue", "pb_results", "pb_mainMenu"})
        QCOMPARE(desk.shown(name), button == QLatin1String(name));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test3Setup::theParametersAreResetOnEveryRun()
{
    MovementDesk desk;
    const QList<std::pair<const char *, QString>> defaults{{"le_timer01", QStringLiteral("400")},
                                                           {"le_timer02", QStringLiteral("0")},
                                                           {"le_timer03", QStringLiteral("500")},
                                                           {"le_timer04", QStringLiteral("2500")},
                                                           {"le_timer05", QStringLiteral("2500")},
                                                           {"le_timer06", QStringLiteral("600")},
                                                           {"le_timerMov", QStringLiteral("15")},
                                                           {"le_number", QStringLiteral("40")},
                                                           {"le_task", QStringLiteral("3")},
                                                           {"le_subtask", QStringLiteral("1")},
                                                           {"le_result", QString()},
                                                           {"le_elapsed", QString()},
                                                           {"le_rt_delta", QString()}};
    for (int run = 0; run < 3; ++run) {
        desk.go({.parameters = true});
        for (const auto &[edit, value] : defaults)
            QCOMPARE(desk.text(edit), value);
        for (const auto &[edit, value] : defaults)
            desk.type(edit, QStringLiteral("7"));
        desk.click("pb_go");
        QVERIFY(desk.pressSpace(10));
        QCOMPARE(desk.text("le_elapsed"), QStringLiteral("10"));
        desk.answerRight();
        QCOMPARE(desk.text("le_result"), QStringLiteral("1"));
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
    }
}

void tst_Test3Setup::theSubtaskIsShownAsAskedFor_data()
{
    QTest::addColumn<int>("subtask");
    for (int subtask = 0; subtask <= 3; ++subtask)
        QTest::addRow("%d", subtask) << subtask;
}

void tst_Test3Setup::theSubtaskIsShownAsAskedFor()
{
    QFETCH(const int, subtask);
    MovementDesk desk;
    desk.go({.subtask = subtask});
    QCOMPARE(desk.text("le_subtask"), QString::number(subtask));
}

void tst_Test3Setup::thePitchIsThatOfTheScreen()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_pitch"), QStringLiteral("   0.000"));
    desk.key(Qt::Key_Escape);
    sessionStore().horzPixel = 270;
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_pitch"), QStringLiteral("   0.270"));
}

void tst_Test3Setup::thePanelIsShownOnRequest()
{
    MovementDesk desk;
    for (const bool parameters : {true, false, true}) {
        desk.go({.parameters = parameters});
        for (const char *name : {"timer01", "timer02", "timer03", "timer04", "timer05", "timer06",
                                 "timerMov", "number", "pitch", "task", "subtask", "no", "elapsed",
                                 "result", "timeTc", "rt_delta"}) {
            QCOMPARE(desk.shown(qPrintable(QStringLiteral("le_%1").arg(QLatin1String(name)))),
                     parameters);
            QCOMPARE(desk.shown(qPrintable(QStringLiteral("lbl_%1").arg(QLatin1String(name)))),
                     parameters);
        }
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test3Setup::thePanelStaysThroughATrial()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    const auto edits = desk.task.findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly);
    QCOMPARE(edits.size(), 16);
    const auto areShown = [&edits] {
        return std::ranges::all_of(edits, [](const QLineEdit *edit) { return edit->isVisible(); });
    };
    for (const int stage : {1, 3, 4}) { // the second link takes no time
        QVERIFY(desk.reach(stage));
        QVERIFY(areShown());
    }
    desk.key(Qt::Key_Space);
    QVERIFY(areShown()); // beside the pad
    desk.answerRight();
    QVERIFY(areShown());
}

void tst_Test3Setup::theLabelsOfThePanelNameTheirEdits_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("lbl_timer01") << QStringLiteral("Timer_01");
    QTest::newRow("lbl_timer02") << QStringLiteral("Timer_02");
    QTest::newRow("lbl_timer03") << QStringLiteral("Timer_03");
    QTest::newRow("lbl_timer04") << QStringLiteral("Timer_04");
    QTest::newRow("lbl_timer05") << QStringLiteral("Timer_05");
    QTest::newRow("lbl_timer06") << QStringLiteral("Timer_06");
    QTest::newRow("lbl_timerMov") << QStringLiteral("Timer Mov");
    QTest::newRow("lbl_number") << QStringLiteral("Number");
    QTest::newRow("lbl_task") << QStringLiteral("Task :");
    QTest::newRow("lbl_elapsed") << QStringLiteral("Elapsed :");
    QTest::newRow("lbl_result") << QStringLiteral("Result :");
}

void tst_Test3Setup::theLabelsOfThePanelNameTheirEdits()
{
    QFETCH(const QString, label);
    MovementDesk desk;
    desk.go({.parameters = true});
    QCOMPARE(desk.label(QTest::currentDataTag()), label);
}

void tst_Test3Setup::theCycleIsTheSumOfItsIntervals_data()
{
    QTest::addColumn<QString>("edit");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("cycle");
    // 400 + 1000 + 0 + 500 + 2500 + 2500 + 600 is 7500.
    QTest::newRow("as it is") << QString() << QString() << QStringLiteral("7500");
    const auto edit = [](const char *name) { return QString::fromLatin1(name); };
    QTest::newRow("first") << edit("le_timer01") << QStringLiteral("500") << QStringLiteral("7600");
    QTest::newRow("second") << edit("le_timer02") << QStringLiteral("11") << QStringLiteral("7511");
    QTest::newRow("third") << edit("le_timer03") << QStringLiteral("400") << QStringLiteral("7400");
    QTest::newRow("fourth") << edit("le_timer04") << QStringLiteral("3500")
                            << QStringLiteral("8500");
    QTest::newRow("fifth") << edit("le_timer05") << QStringLiteral("0") << QStringLiteral("5000");
    QTest::newRow("sixth") << edit("le_timer06") << QStringLiteral("601") << QStringLiteral("7501");
    QTest::newRow("below zero") << edit("le_timer06") << QStringLiteral("-100")
                                << QStringLiteral("6800");
}

void tst_Test3Setup::theCycleIsTheSumOfItsIntervals()
{
    QFETCH(const QString, edit);
    QFETCH(const QString, typed);
    QFETCH(const QString, cycle);
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = true});
    if (!edit.isEmpty())
        desk.type(qPrintable(edit), typed);
    QCOMPARE(desk.text("le_timeTc"), cycle);
    desk.key(Qt::Key_Escape);
    desk.go({.parameters = true, .fixedDuration = true});
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7500"));
}

void tst_Test3Setup::withoutFixedDurationThereIsNoCycle()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    const QString before = desk.text("le_timeTc");
    QVERIFY(before != QStringLiteral("7500"));
    for (const char *edit : links) {
        desk.type(edit, QStringLiteral("999"));
        QCOMPARE(desk.text("le_timeTc"), before);
    }
}

void tst_Test3Setup::driftAndNumberAreNoPartOfTheCycle()
{
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = true});
    desk.type("le_timerMov", QStringLiteral("100"));
    desk.type("le_number", QStringLiteral("100"));
    QCOMPARE(desk.text("le_timeTc"), QStringLiteral("7500"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("100"));
}

void tst_Test3Setup::aTextThatIsNoNumberIsZero_data()
{
    QTest::addColumn<QString>("cycle");
    const std::array<const char *, 6> cycles{"7100", "7500", "7000", "5000", "5000", "6900"};
    for (std::size_t i = 0; i < links.size(); ++i)
        QTest::newRow(links.at(i)) << QString::fromLatin1(cycles.at(i));
}

void tst_Test3Setup::aTextThatIsNoNumberIsZero()
{
    QFETCH(const QString, cycle);
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = true});
    desk.type(QTest::currentDataTag(), QStringLiteral("abc"));
    QCOMPARE(desk.text("le_timeTc"), cycle);
    desk.type("le_number", QStringLiteral("abc"));
    QCOMPARE(desk.text("le_number"), QStringLiteral("0"));
}

void tst_Test3Setup::anEditChangesItsInterval_data()
{
    QTest::addColumn<int>("from");     // the link in which the interval runs
    QTest::addColumn<int>("least");    // ms
    QTest::addColumn<int>("greatest"); // ms
    QTest::newRow("le_timer01") << 1 << 3210 << 3210 + 999;
    QTest::newRow("le_timer02") << 2 << 3210 << 3210;
    QTest::newRow("le_timer03") << 3 << 3210 << 3210;
    QTest::newRow("le_timer04") << 4 << 3210 << 3210;
    QTest::newRow("le_timer05") << 5 << 3210 << 3210;
    QTest::newRow("le_timer06") << 6 << 3210 << 3210;
}

void tst_Test3Setup::anEditChangesItsInterval()
{
    QFETCH(const int, from);
    QFETCH(const int, least);
    QFETCH(const int, greatest);
    MovementDesk desk;
    desk.go({.parameters = true, .fixedDuration = from == 4 || from == 5});
    desk.type(QTest::currentDataTag(), QStringLiteral("3210"));
    desk.click("pb_go");
    if (from == 6) {
        QVERIFY(desk.pressSpace(600));
        desk.answerRight();
    }
    QVERIFY(desk.reach(from));
    int elapsed = 0;
    while (desk.task.stage() == from && elapsed < 10'000) {
        desk.time.advance(1);
        ++elapsed;
    }
    QVERIFY(elapsed >= least && elapsed <= greatest);
    QVERIFY(desk.task.stage() != from);
}

void tst_Test3Setup::theIntervalOfTheDriftCanBeEdited()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_timerMov", QStringLiteral("40"));
    desk.click("pb_go");
    QVERIFY(desk.reach(4));
    const auto shift = [&desk] { return desk.board->displacement(0).manhattanLength(); };
    int last = shift();
    QVector<int> moments;
    for (int ms = 0; ms < 400; ++ms) {
        desk.time.advance(1);
        if (shift() != last)
            moments.append(ms);
        last = shift();
    }
    QCOMPARE(moments.size(), 10);
    for (qsizetype i = 1; i < moments.size(); ++i)
        QCOMPARE(moments[i] - moments[i - 1], 40);
}

void tst_Test3Setup::aTestStopsAtTheEditedNumber()
{
    MovementDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.runTrial(600, false)); // and an invalid trial doesn't count
    QVERIFY(desk.runTrial(600));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial(600));
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 4);
}

void tst_Test3Setup::theConditionIsThatOfTheSubtask_data()
{
    QTest::addColumn<int>("subtask");
    QTest::newRow("each patch for itself") << 1;
    QTest::newRow("with the crowd") << 2;
    QTest::newRow("against the crowd") << 3;
}

void tst_Test3Setup::theConditionIsThatOfTheSubtask()
{
    QFETCH(const int, subtask);
    MovementDesk desk;
    desk.startTest({.subtask = subtask, .parameters = true});
    for (int trial = 0; trial < 9; ++trial) {
        QVERIFY(desk.pressSpace(600));
        QCOMPARE(condition(desk) + 1, subtask);
        QCOMPARE(desk.text("le_subtask"), QString::number(subtask));
        desk.answer(trial % 3 == 2 ? MovementDesk::unknown : desk.askedDirection());
        QVERIFY(desk.finishTrial());
    }
    QCOMPARE(desk.rows().size(), 9);
    for (const QStringList &row : desk.rows())
        QCOMPARE(row[Subtask], QString::number(subtask));
}

void tst_Test3Setup::aSubtaskOfZeroDrawsAmongTheConditions()
{
    MovementDesk desk;
    desk.startTest({.subtask = 0, .parameters = true});
    QSet<QString> orders;
    for (int block = 0; block < 6; ++block) {
        QString order;
        for (int trial = 0; trial < 3; ++trial) {
            QVERIFY(desk.pressSpace(600));
            QCOMPARE(desk.text("le_subtask"), QString::number(condition(desk) + 1));
            order += desk.text("le_subtask");
            desk.answerRight();
            QVERIFY(desk.finishTrial());
            QCOMPARE(desk.rows().constLast()[Subtask], order.right(1));
        }
        orders.insert(order);
        std::ranges::sort(order);
        QCOMPARE(order, QStringLiteral("123")); // each once
    }
    QVERIFY(orders.size() > 1);
}

void tst_Test3Setup::aSecondRunBeginsFromZero()
{
    MovementDesk desk;
    desk.startTest({.parameters = true});
    for (int trial = 0; trial < 3; ++trial)
        QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.text("le_no"), QStringLiteral("4"));
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());

    desk.startTest({.parameters = true});
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(desk.text("le_result"), QString());
    QCOMPARE(desk.text("le_elapsed"), QString());
    desk.key(Qt::Key_Space); // the broken trial's arrow isn't waited for any more
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
}

void tst_Test3Setup::aRunAfterABrokenOneShowsNothingOfIt()
{
    MovementDesk desk;
    for (const int stage : {1, 3, 4, 5, 6}) { // the second link takes no time
        desk.startTest();
        QVERIFY(stage < 5 ? desk.reach(stage) : desk.pressSpace(600));
        if (stage == 6)
            desk.answerRight();
        QCOMPARE(desk.task.stage(), stage);
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        QVERIFY(sessionStore().escapeSeq);

        desk.go({});
        desk.time.advance(60'000);
        QVERIFY(desk.nothingIsShown());
        QCOMPARE(desk.task.stage(), 0);
        QVERIFY(desk.shown("pb_go"));
        for (const char *name :
             {"pb_next", "pb_continue", "pb_results", "pb_mainMenu", "lbl_mode", "lbl_instruction"})
            QVERIFY(!desk.shown(name));
        for (int patch = 0; patch < PatchBoard::patches; ++patch)
            QCOMPARE(desk.board->displacement(patch), QPoint(0, 0));
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test3Setup::theLogIsOpenInTheTestAlone_data()
{
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::newRow("instruction") << true << false;
    QTest::newRow("training") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_Test3Setup::theLogIsOpenInTheTestAlone()
{
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    MovementDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({.instruction = instruction, .training = training});
    QVERIFY(desk.task.isRunning());
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.boxes.take().isEmpty());
}

void tst_Test3Setup::aLogThatCannotBeOpenedIsTold()
{
    MovementDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({});
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(messages[0].text.size() > QStringLiteral("Failed to open output.csv\n").size());
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);

    desk.root.unblock(QStringLiteral("Results/output.csv"));
    resultFiles::createTrialLog();
    desk.startTest(); // and the next run is as any other
    QVERIFY(desk.runTrial(600));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test3Setup::escapeBeforeTheFirstTrialLeavesAMarker()
{
    MovementDesk desk;
    const QByteArray before = desk.root.bytes(QStringLiteral("Results/output.csv"));
    desk.go({});
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);
    const QByteArray after = desk.root.bytes(QStringLiteral("Results/output.csv"));
    QVERIFY(after.startsWith(before));
    QCOMPARE(after.mid(before.size()).count('\n'), 1);
    QVERIFY(after.endsWith(";interrupted\n"));
}

QTEST_MAIN(tst_Test3Setup)
#include "tst_Test3Setup.moc"
