#include "MemoryDesk.h"

#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QLocale>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>

using namespace column;

/// From the press of the test button to the first thing that the patient sees.
class tst_Test4Setup : public QObject
{
    Q_OBJECT

public:
    /// All runs are on a screen with room for the ring and the controls, odd in width and height.
    static void initMain();

private Q_SLOTS:
    void cleanup();

    void aRunTakesTheWholeScreen();
    void theStimuliStandInTheMiddleAtTheirSizes();
    void theQuestionsStandAtTheUpperLeft_data();
    void theQuestionsStandAtTheUpperLeft();
    void theLocalisationsAreToldAtTheLowerLeft();
    void theControlsStandInTheirFrame();
    void theButtonsSayWhatTheyDo_data();
    void theButtonsSayWhatTheyDo();
    void aRunBeginsWithWhatItsOptionsSay_data();
    void aRunBeginsWithWhatItsOptionsSay();
    void theParametersAreResetOnEveryRun();
    void thePitchesAreThoseOfTheScreen_data();
    void thePitchesAreThoseOfTheScreen();
    void thePitchesAreToldInTheWayOfTheCountry();
    void acrossAndUpHaveTheirOwnPitch();
    void thePitchIsTakenAtTheStartOfARun();
    void withoutACalibratedPitchEveryDistanceIsOne();
    void thePanelIsShownOnRequest();
    void thePanelStaysThroughATrial();
    void theLabelsOfThePanelNameTheirEdits_data();
    void theLabelsOfThePanelNameTheirEdits();
    void anEditChangesItsInterval_data();
    void anEditChangesItsInterval();
    void aTextThatIsNoNumberIsZero_data();
    void aTextThatIsNoNumberIsZero();
    void theFourthTimerIsReadByNothing_data();
    void theFourthTimerIsReadByNothing();
    void aTestStopsAtTheEditedNumber();
    void aNumberThatIsNoneEndsTheTestWithItsFirstTrial();
    void goBeginsTheFirstTrialByItself();
    void goClearsTheResultsInThePanel();
    void theGuidesAreHiddenWhenARunBegins();
    void aSecondRunBeginsFromZero();
    void aRunAfterABrokenOneShowsNothingOfIt_data();
    void aRunAfterABrokenOneShowsNothingOfIt();
    void aBrokenQuestionIsNotAnsweredInTheNextRun();
    void theLogIsOpenInTheTestAlone_data();
    void theLogIsOpenInTheTestAlone();
    void aLogThatCannotBeOpenedIsTold();
    void escapeBeforeTheFirstTrialLeavesAMarker();
};

namespace {
constexpr std::array panel{"timer01",  "timer02",   "timer03",   "timer04", "timer05",
                           "number",   "horzPitch", "vertPitch", "task",    "no",
                           "posFirst", "distFirst", "posLast",   "distLast"};
constexpr std::array results{"le_posFirst", "le_distFirst", "le_posLast", "le_distLast"};
constexpr std::array buttons{"pb_go", "pb_next", "pb_continue", "pb_results", "pb_mainMenu"};

QString prefixed(const char *prefix, const char *name)
{
    return QString::fromLatin1(prefix) + QString::fromLatin1(name);
}

/// How long the task stays in this link.
int lasts(MemoryDesk &desk, int stage)
{
    int elapsed = 0;
    while (desk.task.stage() == stage && elapsed < 10'000) {
        desk.time.advance(1);
        ++elapsed;
    }
    return elapsed;
}

/// Brings a test to this link; for the last one both answers are given.
void bringTo(MemoryDesk &desk, int stage)
{
    if (stage < 5) {
        if (desk.shown("pb_continue"))
            desk.click("pb_continue");
        QVERIFY(desk.reach(stage));
        return;
    }
    const QList<QPoint> places = desk.runToQuestion();
    QVERIFY(places.size() >= 2);
    desk.answer(places.constLast(), places.constFirst());
    QCOMPARE(desk.task.stage(), stage);
}
} // namespace

void tst_Test4Setup::initMain()
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("screens.json")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(R"({"screens": [{"name": "odd", "x": 0, "y": 0, "width": 1281, "height": 1025,)"
                   R"("logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})") < 0)
        qFatal("no description of a screen");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toLocal8Bit());
}

void tst_Test4Setup::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_Test4Setup::aRunTakesTheWholeScreen()
{
    MemoryDesk desk;
    QVERIFY(!desk.task.isRunning());
    desk.go({});
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.task.isFullScreen());
    QCOMPARE(desk.task.geometry(), QGuiApplication::primaryScreen()->geometry());
    QCOMPARE(desk.task.size(), QSize(1281, 1025));
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QCOMPARE(desk.task.focusPolicy(), Qt::StrongFocus);
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(QCursor::pos(), QPoint(640, 512));
    QVERIFY(desk.nothingIsShown());
}

// The centre of 1281 by 1025 is (640, 512).

void tst_Test4Setup::theStimuliStandInTheMiddleAtTheirSizes()
{
    MemoryDesk desk;
    for (int run = 0; run < 2; ++run) {
        desk.go({});
        const QRect middle(640 - 20, 512 - 20, 40, 40);
        QCOMPARE(desk.cross->geometry(), middle);
        for (const QWidget *stimulus : std::initializer_list<const QWidget *>{
                 desk.first, desk.last, desk.firstMarker, desk.lastMarker})
            QCOMPARE(stimulus->size(), QSize(40, 40));
        QCOMPARE(desk.outerRing->geometry(), QRect(640 - 360, 512 - 360, 720, 720));
        QCOMPARE(desk.innerRing->geometry(), QRect(640 - 180, 512 - 180, 360, 360));
        QCOMPARE(desk.sectorLines->geometry(), QRect(640 - 360, 512 - 360, 720, 720));
        desk.click("pb_go"); // and after a trial that has moved some of them
        QVERIFY(desk.runTrial());
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test4Setup::theQuestionsStandAtTheUpperLeft_data()
{
    QTest::addColumn<QString>("question");
    QTest::newRow("lbl_firstCross") << QStringLiteral("First Cross ?");
    QTest::newRow("lbl_lastCross") << QStringLiteral("Last Cross ?");
}

void tst_Test4Setup::theQuestionsStandAtTheUpperLeft()
{
    QFETCH(const QString, question);
    MemoryDesk desk;
    desk.go({});
    const auto *label = desk.widget<QLabel>(QTest::currentDataTag());
    QCOMPARE(label->text(), question);
    QCOMPARE(label->x(), 640 - 512 + label->width() / 2);
    QCOMPARE(label->y(), 512 - label->height() / 2 - 360);
    QVERIFY(!label->isVisible());
}

void tst_Test4Setup::theLocalisationsAreToldAtTheLowerLeft()
{
    MemoryDesk desk;
    desk.go({});
    const auto *label = desk.widget<QLabel>("lbl_localisation");
    QCOMPARE(label->x(), 640 - 512 - label->width() / 2);
    QCOMPARE(label->y(), 512 + 384 - label->height() / 2);
    QVERIFY(!label->isVisible());
    // The middle of the label is the corner of the layout: its text begins there.
    desk.go({.instruction = true});
    desk.click("pb_next");
    QVERIFY(label->isVisible());
    const QImage picture = desk.task.grab(label->geometry()).toImage();
    int first = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < first; ++x) {
            if (qGray(picture.pixel(x, y)) > 128)
                first = x;
        }
    }
    QVERIFY2(first >= label->width() / 2 && first < label->width() / 2 + 10,
             qPrintable(QString::number(first)));
}

void tst_Test4Setup::theControlsStandInTheirFrame()
{
    MemoryDesk desk;
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

void tst_Test4Setup::theButtonsSayWhatTheyDo_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("pb_go") << QStringLiteral("GO");
    QTest::newRow("pb_next") << QStringLiteral("Continue");
    QTest::newRow("pb_continue") << QStringLiteral("Continue");
    QTest::newRow("pb_results") << QStringLiteral("Results");
    QTest::newRow("pb_mainMenu") << QStringLiteral("Main Menu");
}

void tst_Test4Setup::theButtonsSayWhatTheyDo()
{
    QFETCH(const QString, text);
    MemoryDesk desk;
    QCOMPARE(desk.widget(QTest::currentDataTag())->text(), text);
    const bool goesOn = text == QStringLiteral("Continue");
    QCOMPARE(desk.widget(QTest::currentDataTag())->shortcut(),
             goesOn ? QKeySequence(Qt::Key_C) : QKeySequence());
}

void tst_Test4Setup::aRunBeginsWithWhatItsOptionsSay_data()
{
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("atNext"); // where the pointer stands
    const QString title = QStringLiteral("Memory");
    QTest::newRow("test") << false << false << QString() << QString() << QStringLiteral("pb_go")
                          << false;
    QTest::newRow("instruction") << true << false << QStringLiteral("INSTRUCTIONS") << title
                                 << QStringLiteral("pb_next") << true;
    QTest::newRow("training") << false << true << QStringLiteral("TRAINING") << title
                              << QStringLiteral("pb_go") << true;
    QTest::newRow("both") << true << true << QStringLiteral("INSTRUCTIONS") << title
                          << QStringLiteral("pb_next") << true;
}

void tst_Test4Setup::aRunBeginsWithWhatItsOptionsSay()
{
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    QFETCH(const QString, mode);
    QFETCH(const QString, title);
    QFETCH(const QString, button);
    QFETCH(const bool, atNext);
    MemoryDesk desk;
    desk.go({.instruction = instruction, .training = training});
    QCOMPARE(desk.mode(), mode);
    QCOMPARE(desk.instruction(), title);
    for (const char *name : buttons)
        QCOMPARE(desk.shown(name), button == QLatin1String(name));
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.stage(), 0);
    QCOMPARE(QCursor::pos(),
             atNext ? desk.widget("pb_next")->geometry().center() : QPoint(640, 512));
    desk.time.advance(60'000); // and it waits
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test4Setup::theParametersAreResetOnEveryRun()
{
    MemoryDesk desk;
    const QList<std::pair<const char *, QString>> defaults{
        {"le_timer01", QStringLiteral("1000")},
        {"le_timer02", QStringLiteral("500")},
        {"le_timer03", QStringLiteral("1000")},
        {"le_timer04", QStringLiteral("5000")},
        {"le_timer05", QStringLiteral("1000")},
        {"le_number", QStringLiteral("30")},
        {"le_horzPitch", QStringLiteral("   0.250")},
        {"le_vertPitch", QStringLiteral("   0.200")},
        {"le_task", QStringLiteral("4")},
        {"le_no", QStringLiteral("1")},
        {"le_posFirst", QString()},
        {"le_distFirst", QString()},
        {"le_posLast", QString()},
        {"le_distLast", QString()}};
    QCOMPARE(defaults.size(), qsizetype(panel.size()));
    for (int run = 0; run < 3; ++run) {
        desk.go({.parameters = true});
        for (const auto &[edit, value] : defaults)
            QCOMPARE(desk.text(edit), value);
        for (const auto &[edit, value] : defaults)
            desk.type(edit, QStringLiteral("7"));
        desk.click("pb_go");
        QVERIFY(desk.runTrial());
        for (const char *edit : results)
            QVERIFY(!desk.text(edit).isEmpty());
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
    }
}

void tst_Test4Setup::thePitchesAreThoseOfTheScreen_data()
{
    QTest::addColumn<int>("across"); // micrometres
    QTest::addColumn<int>("up");
    QTest::addColumn<QString>("horz");
    QTest::addColumn<QString>("vert");
    QTest::newRow("usual") << 264 << 263 << QStringLiteral("   0.264")
                           << QStringLiteral("   0.263");
    QTest::newRow("coarse") << 1234 << 12345 << QStringLiteral("   1.234")
                            << QStringLiteral("  12.345");
    QTest::newRow("a thousand") << 1'234'567 << 1 << QStringLiteral("1,234.567")
                                << QStringLiteral("   0.001");
    QTest::newRow("never calibrated")
        << 0 << 0 << QStringLiteral("   0.000") << QStringLiteral("   0.000");
}

void tst_Test4Setup::thePitchesAreThoseOfTheScreen()
{
    QFETCH(const int, across);
    QFETCH(const int, up);
    QFETCH(const QString, horz);
    QFETCH(const QString, vert);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    MemoryDesk desk;
    MemoryDesk::setPitch(across, up);
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_horzPitch"), horz);
    QCOMPARE(desk.text("le_vertPitch"), vert);
}

void tst_Test4Setup::thePitchesAreToldInTheWayOfTheCountry()
{
    MemoryDesk desk;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_horzPitch"), QStringLiteral("   0,250"));
    QCOMPARE(desk.text("le_vertPitch"), QStringLiteral("   0,200"));
    desk.key(Qt::Key_Escape);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_horzPitch"), QStringLiteral("   0.250"));
    QCOMPARE(desk.text("le_vertPitch"), QStringLiteral("   0.200"));
}

void tst_Test4Setup::acrossAndUpHaveTheirOwnPitch()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    const QList<QPoint> places = desk.runToQuestion();
    QVERIFY(places.size() >= 2);
    desk.answer(places.constLast() + QPoint(40, 0), places.constFirst() + QPoint(0, -40));
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("   10.00"));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("    8.00"));
}

void tst_Test4Setup::thePitchIsTakenAtTheStartOfARun()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    MemoryDesk::setPitch(500, 500);
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   10.00"));
    desk.key(Qt::Key_Escape);
    desk.startTest({.parameters = true});
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("   20.00"));
}

void tst_Test4Setup::withoutACalibratedPitchEveryDistanceIsOne()
{
    MemoryDesk desk;
    MemoryDesk::setPitch(0, 0);
    desk.startTest({.parameters = true});
    QVERIFY(desk.runTrial(300));
    QCOMPARE(desk.text("le_distFirst"), QStringLiteral("    1.00"));
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("    1.00"));
    QCOMPARE(desk.rows().size(), 1);
    const QStringList row = desk.rows().constFirst();
    QCOMPARE(row[DistFirst], QStringLiteral("    1.00"));
    QCOMPARE(row[DistLast], QStringLiteral("    1.00"));
    QCOMPARE(row[Error], QStringLiteral("0"));
}

void tst_Test4Setup::thePanelIsShownOnRequest()
{
    MemoryDesk desk;
    for (const bool parameters : {true, false, true}) {
        desk.go({.parameters = parameters});
        for (const char *name : panel) {
            QCOMPARE(desk.shown(qPrintable(prefixed("le_", name))), parameters);
            QCOMPARE(desk.shown(qPrintable(prefixed("lbl_", name))), parameters);
        }
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test4Setup::thePanelStaysThroughATrial()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    const auto edits = desk.task.findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly);
    QCOMPARE(edits.size(), qsizetype(panel.size()));
    for (int stage = 1; stage <= 5; ++stage) {
        bringTo(desk, stage);
        for (const QLineEdit *edit : edits)
            QVERIFY(edit->isVisible());
    }
}

void tst_Test4Setup::theLabelsOfThePanelNameTheirEdits_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("lbl_timer01") << QStringLiteral("Timer_01");
    QTest::newRow("lbl_timer02") << QStringLiteral("Timer_02");
    QTest::newRow("lbl_timer03") << QStringLiteral("Timer_03");
    QTest::newRow("lbl_timer04") << QStringLiteral("Timer_04");
    QTest::newRow("lbl_timer05") << QStringLiteral("Timer_05");
    QTest::newRow("lbl_number") << QStringLiteral("Number");
    QTest::newRow("lbl_horzPitch") << QStringLiteral("Horz pitch :");
    QTest::newRow("lbl_vertPitch") << QStringLiteral("Vert pitch :");
    QTest::newRow("lbl_task") << QStringLiteral("Task :");
    QTest::newRow("lbl_no") << QStringLiteral("No :");
    QTest::newRow("lbl_posFirst") << QStringLiteral("Pos First :");
    QTest::newRow("lbl_distFirst") << QStringLiteral("Dist First :");
    QTest::newRow("lbl_posLast") << QStringLiteral("Pos Last :");
    QTest::newRow("lbl_distLast") << QStringLiteral("Dist Last :");
}

void tst_Test4Setup::theLabelsOfThePanelNameTheirEdits()
{
    QFETCH(const QString, label);
    MemoryDesk desk;
    desk.go({.parameters = true});
    QCOMPARE(desk.label(QTest::currentDataTag()), label);
}

void tst_Test4Setup::anEditChangesItsInterval_data()
{
    QTest::addColumn<int>("stage"); // the link in which the interval runs
    QTest::addColumn<int>("usual"); // ms
    QTest::newRow("le_timer01") << 1 << 1000;
    QTest::newRow("le_timer02") << 2 << 500;
    QTest::newRow("le_timer03") << 3 << 1000;
    QTest::newRow("le_timer05") << 5 << 1000;
}

void tst_Test4Setup::anEditChangesItsInterval()
{
    QFETCH(const int, stage);
    QFETCH(const int, usual);
    MemoryDesk desk;
    for (const int interval : {usual, 3210, 1}) {
        desk.go({.parameters = true});
        if (interval != usual)
            desk.type(QTest::currentDataTag(), QString::number(interval));
        desk.click("pb_go");
        bringTo(desk, stage);
        QCOMPARE(lasts(desk, stage), interval);
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test4Setup::aTextThatIsNoNumberIsZero_data()
{
    QTest::addColumn<int>("last"); // the link that is over as soon as it is entered
    QTest::newRow("le_timer01") << 1;
    QTest::newRow("le_timer02") << 2;
    QTest::newRow("le_timer03") << 3;
    QTest::newRow("le_timer05") << 5;
}

void tst_Test4Setup::aTextThatIsNoNumberIsZero()
{
    QFETCH(const int, last);
    MemoryDesk desk;
    desk.go({.parameters = true});
    desk.type(QTest::currentDataTag(), QStringLiteral("abc"));
    QDateTime entered;
    QList<qint64> lengths; // ms in that link
    QObject::connect(&desk.task, &TaskDialog::stageEntered, &desk.task, [&](int stage) {
        if (entered.isValid())
            lengths.append(entered.msecsTo(desk.time.currentDateTime()));
        entered = stage == last ? desk.time.currentDateTime() : QDateTime();
    });
    desk.click("pb_go");
    QVERIFY(desk.runTrial());
    QVERIFY(!lengths.isEmpty());
    QVERIFY(std::ranges::all_of(lengths, [](qint64 ms) { return ms == 0; }));
}

void tst_Test4Setup::theFourthTimerIsReadByNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("as it is") << QString();
    QTest::newRow("short") << QStringLiteral("1");
    QTest::newRow("no number") << QStringLiteral("abc");
}

void tst_Test4Setup::theFourthTimerIsReadByNothing()
{
    QFETCH(const QString, typed);
    MemoryDesk desk;
    desk.go({.parameters = true});
    if (!typed.isEmpty())
        desk.type("le_timer04", typed);
    desk.click("pb_go");
    const QList<QPoint> places = desk.runToQuestion();
    QVERIFY(places.size() >= 2);
    desk.time.advance(600'000); // the patient may take any time
    QCOMPARE(desk.task.stage(), 4);
    desk.clickAt(places.constLast());
    desk.time.advance(600'000);
    QCOMPARE(desk.task.stage(), 4);
    desk.clickAt(places.constFirst());
    QCOMPARE(lasts(desk, 5), 1000);
    QCOMPARE(desk.rows().constLast()[Error], QStringLiteral("0"));
}

void tst_Test4Setup::aTestStopsAtTheEditedNumber()
{
    MemoryDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("3"));
    desk.click("pb_go");
    QVERIFY(desk.runTrials(2));
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
    QVERIFY(!desk.shown("pb_continue"));
    QCOMPARE(desk.rows().size(), 3);
}

void tst_Test4Setup::aNumberThatIsNoneEndsTheTestWithItsFirstTrial()
{
    MemoryDesk desk;
    desk.go({.parameters = true});
    desk.type("le_number", QStringLiteral("abc"));
    desk.click("pb_go");
    QVERIFY(!desk.shown("pb_results"));
    QVERIFY(desk.runTrial());
    QVERIFY(desk.shown("pb_results"));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Setup::goBeginsTheFirstTrialByItself()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    for (const char *name : buttons)
        QVERIFY(!desk.shown(name));
    QCOMPARE(desk.instruction(), QString());
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    QCOMPARE(desk.task.stage(), 1);
    QVERIFY(desk.cross->isVisible());
    QVERIFY(!desk.first->isVisible() && !desk.last->isVisible());
    QCOMPARE(desk.task.cursor().shape(), Qt::BlankCursor);
    QCOMPARE(QCursor::pos(), QPoint(10, 700));
    QCOMPARE(lasts(desk, 1), 1000);
    QVERIFY(desk.first->isVisible());

    bringTo(desk, 5);
    QVERIFY(desk.finishTrial());
    QVERIFY(desk.shown("pb_continue")); // the others wait
    desk.time.advance(60'000);
    QCOMPARE(desk.task.stage(), 0);
}

void tst_Test4Setup::goClearsTheResultsInThePanel()
{
    MemoryDesk desk;
    desk.go({.training = true, .parameters = true});
    desk.click("pb_go");
    QVERIFY(desk.runTrials(3, 8));
    for (const char *edit : results)
        QVERIFY(!desk.text(edit).isEmpty()); // the training's last trial
    desk.click("pb_go");
    for (const char *edit : results)
        QCOMPARE(desk.text(edit), QString());
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
}

void tst_Test4Setup::theGuidesAreHiddenWhenARunBegins()
{
    MemoryDesk desk;
    desk.go({});
    desk.key(Qt::Key_S);
    QVERIFY(desk.guidesAreShown());
    desk.click("pb_go"); // a block leaves them to the assessor
    QVERIFY(desk.guidesAreShown());
    QVERIFY(desk.runTrial());
    QVERIFY(desk.guidesAreShown());
    desk.go({});
    QVERIFY(desk.nothingIsShown());
    desk.key(Qt::Key_S); // and the key begins with showing
    QVERIFY(desk.guidesAreShown());
}

void tst_Test4Setup::aSecondRunBeginsFromZero()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.runTrials(3));
    QCOMPARE(desk.text("le_no"), QStringLiteral("4"));
    const QList<QPoint> firstRun = desk.seen;
    bringTo(desk, 2);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());

    desk.time.advance(1000); // another second is another seed
    desk.startTest({.parameters = true});
    QCOMPARE(desk.text("le_no"), QStringLiteral("1"));
    for (const char *edit : results)
        QCOMPARE(desk.text(edit), QString());
    QVERIFY(desk.runTrial());
    QVERIFY(desk.seen != firstRun);
    QCOMPARE(desk.rows().constLast()[RankTask], QStringLiteral("1"));
    // Each load once in the first six trials: the table of the broken run isn't used up.
    QVERIFY(desk.runTrials(5));
    QStringList loads;
    const auto all = desk.rows();
    const auto firstSix = all.last(6);
    for (const QStringList &row : firstSix)
        loads.append(row[Subtask]);
    std::ranges::sort(loads);
    QCOMPARE(loads.join(u' '), QStringLiteral("0 1 2 3 4 5"));
}

void tst_Test4Setup::aRunAfterABrokenOneShowsNothingOfIt_data()
{
    QTest::addColumn<int>("stage");
    for (int stage = 1; stage <= 5; ++stage)
        QTest::addRow("broken in link %d", stage) << stage;
}

void tst_Test4Setup::aRunAfterABrokenOneShowsNothingOfIt()
{
    QFETCH(const int, stage);
    MemoryDesk desk;
    desk.startTest();
    bringTo(desk, stage);
    desk.key(Qt::Key_S);
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq);

    desk.go({});
    desk.time.advance(60'000);
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.stage(), 0);
    for (const char *name : buttons)
        QCOMPARE(desk.shown(name), QLatin1String(name) == QLatin1String("pb_go"));
    QCOMPARE(desk.mode(), QString());
    QCOMPARE(desk.instruction(), QString());
    desk.click("pb_go"); // a run begins with its first cross
    QVERIFY(desk.reach(2));
    QVERIFY(desk.first->isVisible());
}

void tst_Test4Setup::aBrokenQuestionIsNotAnsweredInTheNextRun()
{
    MemoryDesk desk;
    desk.startTest({.parameters = true});
    QVERIFY(desk.reach(4));
    desk.key(Qt::Key_Escape);
    desk.go({.parameters = true});
    desk.clickAt({700, 300});
    desk.click("pb_go");
    desk.clickAt({700, 300});
    QCOMPARE(desk.text("le_distLast"), QString());
    QCOMPARE(desk.text("le_distFirst"), QString());
    QVERIFY(!desk.last->isVisible());
    QVERIFY(desk.runTrial(40));
    QCOMPARE(desk.text("le_distLast"), QStringLiteral("   10.00"));
}

void tst_Test4Setup::theLogIsOpenInTheTestAlone_data()
{
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::newRow("instruction") << true << false;
    QTest::newRow("training") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_Test4Setup::theLogIsOpenInTheTestAlone()
{
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    MemoryDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({.instruction = instruction, .training = training});
    QVERIFY(desk.task.isRunning());
    desk.key(Qt::Key_Escape);
    QVERIFY(!desk.task.isRunning());
    QVERIFY(desk.boxes.take().isEmpty());
}

void tst_Test4Setup::aLogThatCannotBeOpenedIsTold()
{
    MemoryDesk desk;
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
    QVERIFY(desk.runTrial());
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test4Setup::escapeBeforeTheFirstTrialLeavesAMarker()
{
    MemoryDesk desk;
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

QTEST_MAIN(tst_Test4Setup)
#include "tst_Test4Setup.moc"
