#include "VisionDesk.h"

#include <QGuiApplication>
#include <QScreen>

using namespace column;

/// From the press of a test button to the first thing that the patient sees.
class tst_Test1Setup : public QObject
{
    Q_OBJECT

public:
    /// All runs are on a screen with room for both rings, and odd in width and height.
    static void initMain();

private Q_SLOTS:
    void aRunTakesTheWholeScreen();
    void theFiguresStandBesideTheCentre();
    void theTrianglesStandAtRest();
    void crossAndMaskStandInTheMiddle();
    void theAnswerButtonsStandInTheirPlaces();
    void theControlsStandInTheirFrame();
    void theStimuliFollowTheCalibration();
    void noMoreOfAStimulusIsPaintedThanTheScreenHolds();
    void aRunBeginsWithWhatItsOptionsSay_data();
    void aRunBeginsWithWhatItsOptionsSay();
    void aModeHasItsCodeItsSessionAndItsNumber_data();
    void aModeHasItsCodeItsSessionAndItsNumber();
    void theExposuresAreTheStoredThresholds_data();
    void theExposuresAreTheStoredThresholds();
    void aPatientIsFoundAmongOthers();
    void withoutAThresholdATestIsRefused_data();
    void withoutAThresholdATestIsRefused();
    void aRefusalIsToldOnLightAndLeavesNothing();
    void aCentralThresholdAloneIsEnoughForTheCentralTest();
    void withTrainingOrInstructionNobodyIsRefused_data();
    void withTrainingOrInstructionNobodyIsRefused();
    void theFirstTrainingTrialIsShownForItsExposure_data();
    void theFirstTrainingTrialIsShownForItsExposure();
    void aThresholdAboveTheTableIsShownAsItIs();
    void theFrequencyIsReadOncePerRun();
    void theCycleIsReckonedBeforeTheTraining_data();
    void theCycleIsReckonedBeforeTheTraining();
    void thePanelShowsARunAtItsStart();
    void everyRunStartsAnew();
    void anEntryLeftOpenDoesNotChangeTheNextRun_data();
    void anEntryLeftOpenDoesNotChangeTheNextRun();
    void aRunAfterABrokenOneShowsNothingOfIt();
    void theLogIsOpenInTheTestAlone_data();
    void theLogIsOpenInTheTestAlone();
    void aLogThatCannotBeOpenedIsTold();
    void aListThatCannotBeReadHasNoThresholds();
    void aPatientWhoIsNotOnTheListHasTheThresholdsReadLast();
};

void tst_Test1Setup::initMain()
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("screens.json")));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(R"({"screens": [{"name": "odd", "x": 0, "y": 0, "width": 1281, "height": 1025,)"
                   R"("logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})") < 0)
        qFatal("no description of a screen");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toLocal8Bit());
}

void tst_Test1Setup::aRunTakesTheWholeScreen()
{
    VisionDesk desk;
    QVERIFY(!desk.task.isRunning());
    desk.go({});
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.task.isFullScreen());
    QCOMPARE(desk.task.geometry(), QGuiApplication::primaryScreen()->geometry());
    QCOMPARE(desk.task.size(), QSize(1281, 1025));
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    QCOMPARE(desk.task.focusPolicy(), Qt::StrongFocus);
    QVERIFY(desk.nothingIsShown());
}

// The centre of 1281 by 1025 is (640, 512).

void tst_Test1Setup::theFiguresStandBesideTheCentre()
{
    VisionDesk desk;
    desk.go({});
    enum { Identical, Shape, Contrast, Orientation, Size };
    for (const int kind : {Identical, Shape, Contrast}) {
        QCOMPARE(desk.lefts.at(std::size_t(kind))->geometry(), QRect(579, 481, 56, 62));
        QCOMPARE(desk.rights.at(std::size_t(kind))->geometry(), QRect(645, 481, 56, 62));
    }
    QCOMPARE(desk.lefts[Orientation]->geometry(), QRect(573, 484, 62, 56));
    QCOMPARE(desk.rights[Orientation]->geometry(), QRect(645, 484, 62, 56));
    QCOMPARE(desk.lefts[Size]->geometry(), QRect(584, 484, 51, 56));
    QCOMPARE(desk.rights[Size]->geometry(), QRect(645, 484, 51, 56));
    for (const auto *figure : desk.task.findChildren<DrawRoundedRectangle *>())
        QCOMPARE(figure->radius, 15.0F);
    for (const auto *figure : desk.task.findChildren<DrawGrayRectangle *>())
        QCOMPARE(figure->gray, 204);
}

void tst_Test1Setup::theTrianglesStandAtRest()
{
    VisionDesk desk;
    desk.go({});
    const std::array<QPoint, 6> places{QPoint(327, 199), QPoint(229, 437), QPoint(327, 674),
                                       QPoint(802, 199), QPoint(901, 437), QPoint(802, 674)};
    for (std::size_t i = 0; i < places.size(); ++i) {
        QCOMPARE(desk.arrows[i]->geometry(), QRect(places[i], QSize(150, 150)));
        QCOMPARE(desk.arrows[i]->ratio, 1.5);
    }
}

void tst_Test1Setup::crossAndMaskStandInTheMiddle()
{
    VisionDesk desk;
    desk.go({});
    QCOMPARE(desk.cross->geometry(), QRect(620, 492, 40, 40));
    QCOMPARE(desk.noise->geometry(), QRect(128, 128, 1024, 768));
    QCOMPARE(desk.noise->styleSheet(),
             QStringLiteral("background-image: url(:/Kelmoran/Icons/Noise for screen.png);"));
}

void tst_Test1Setup::theAnswerButtonsStandInTheirPlaces()
{
    VisionDesk desk;
    desk.go({});
    const auto carries = [&desk](const char *button, const char *image) {
        return desk.widget(button)->styleSheet().contains(
            QStringLiteral(":/Kelmoran/Icons/%1.png").arg(QLatin1String(image)));
    };
    const QSize wide(202, 82);
    QCOMPARE(desk.widget("pb_uniform")->geometry(), QRect(QPoint(539, 471), wide));
    QCOMPARE(desk.widget("pb_shape")->geometry(), QRect(QPoint(408, 360), wide));
    QCOMPARE(desk.widget("pb_contrast")->geometry(), QRect(QPoint(670, 360), wide));
    QCOMPARE(desk.widget("pb_orientation")->geometry(), QRect(QPoint(408, 582), wide));
    QCOMPARE(desk.widget("pb_size")->geometry(), QRect(QPoint(670, 582), wide));
    for (const char *kind : {"uniform", "shape", "contrast", "orientation", "size"})
        QVERIFY2(carries(qPrintable(QStringLiteral("pb_%1").arg(QLatin1String(kind))), kind), kind);

    const std::array<QPoint, 6> ring{QPoint(290, 162), QPoint(163, 471),  QPoint(290, 779),
                                     QPoint(907, 162), QPoint(1035, 471), QPoint(907, 779)};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const char *button = VisionDesk::positionButtons.at(i);
        QCOMPARE(desk.widget(button)->geometry(), QRect(ring[i], QSize(82, 82)));
        QVERIFY2(carries(button, i < 3 ? "triangleRight" : "triangleLeft"), button);
    }
}

void tst_Test1Setup::theControlsStandInTheirFrame()
{
    VisionDesk desk;
    desk.go({});
    // From (128, 128) to (1152, 896).
    for (const char *name : {"pb_next", "pb_continue"})
        QCOMPARE(desk.widget(name)->geometry().bottomRight() + QPoint(1, 1), QPoint(1152, 896));
    QCOMPARE(desk.widget<QLabel>("lbl_mode")->geometry().topRight() + QPoint(1, 0),
             QPoint(1152, 128));
    const auto middle = [&desk](const char *name) {
        const auto *widget = desk.widget<QWidget>(name);
        return widget->pos() + QPoint(widget->width() / 2, widget->height() / 2);
    };
    QCOMPARE(middle("lbl_instruction"), QPoint(640, 512));
    QCOMPARE(middle("pb_go"), QPoint(640, 512));
    QCOMPARE(middle("pb_results"), QPoint(540, 512));
    QCOMPARE(middle("pb_mainMenu"), QPoint(740, 512));
    QCOMPARE(desk.widget("pb_next")->shortcut(), QKeySequence(Qt::Key_C));
    QCOMPARE(desk.widget("pb_continue")->shortcut(), QKeySequence(Qt::Key_C));
    QCOMPARE(desk.widget("pb_continue")->text(), QStringLiteral("Continue"));
}

void tst_Test1Setup::theStimuliFollowTheCalibration()
{
    VisionDesk desk;
    sessionStore().horzPixel = 250;
    sessionStore().vertPixel = 300;
    desk.go({.parameters = true});
    QCOMPARE(desk.text("le_horzPitch"), QStringLiteral("   0.250"));
    QCOMPARE(desk.text("le_vertPitch"), QStringLiteral("   0.300"));
    QCOMPARE(desk.lefts[0]->geometry(), QRect(579, 487, 56, 51));
    QCOMPARE(desk.arrows[4]->geometry(), QRect(901, 450, 150, 125));
    QCOMPARE(desk.text("le_globSize"), QStringLiteral("56"));
    QCOMPARE(desk.text("le_triSize"), QStringLiteral("125")); // the height
}

void tst_Test1Setup::noMoreOfAStimulusIsPaintedThanTheScreenHolds()
{
    /// The largest picture that is painted of a widget.
    struct Watch : QObject
    {
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::Paint && watched->parent())
                painted = painted.expandedTo(static_cast<QPaintEvent *>(event)->rect().size());
            return false;
        }
        QSize painted;
    };
    VisionDesk desk;
    sessionStore().horzPixel = 4; // micrometres
    sessionStore().vertPixel = 4;
    Watch watch;
    for (QWidget *widget : desk.task.findChildren<QWidget *>())
        widget->installEventFilter(&watch);
    desk.go({.parameters = true});
    const QSize screen = desk.task.size();
    QVERIFY(watch.painted.width() > 0);
    QVERIFY2(watch.painted.boundedTo(screen) == watch.painted,
             qPrintable(QStringLiteral("%1").arg(watch.painted.width())));
    QVERIFY(desk.lefts[0]->width() > screen.width());
}

void tst_Test1Setup::aRunBeginsWithWhatItsOptionsSay_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("label");

    const QStringList titles{QStringLiteral("Visual\nrecognition"),
                             QStringLiteral("Central\nvision"),
                             QStringLiteral("Peripheral\nvision"), QStringLiteral("Dual task")};
    const auto add = [](int mode, bool instruction, bool training, const QString &title,
                        const QString &label) {
        QTest::addRow("mode %d%s%s", mode, instruction ? ", instruction" : "",
                      training ? ", training" : "")
            << mode << instruction << training << title << label;
    };
    for (int mode = 0; mode < 4; ++mode) {
        const QString instructions = QStringLiteral("INSTRUCTIONS");
        add(mode, false, false, {}, {});
        add(mode, true, false, titles[mode], instructions);
        add(mode, true, true, titles[mode], instructions);
        // The training of all three begins with the central one.
        add(mode, false, true, titles[std::max(mode, 1)], QStringLiteral("TRAINING"));
    }
}

void tst_Test1Setup::aRunBeginsWithWhatItsOptionsSay()
{
    QFETCH(const int, mode);
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    VisionDesk desk;
    desk.go({.mode = mode, .instruction = instruction, .training = training});
    QTEST(desk.instruction(), "title");
    QTEST(desk.mode(), "label");
    QCOMPARE(desk.shown("pb_next"), instruction);
    QCOMPARE(desk.shown("pb_go"), !instruction);
    for (const char *name : {"pb_continue", "pb_results", "pb_mainMenu", "lbl_i_identical",
                             "lbl_i_shape", "lbl_i_contrast", "lbl_i_orientation", "lbl_i_size"})
        QVERIFY2(!desk.shown(name), name);
    QVERIFY(desk.nothingIsShown());
    QCOMPARE(desk.task.cursor().shape(), Qt::ArrowCursor);

    const auto *go = desk.widget("pb_go");
    if (!instruction && !training) {
        QCOMPARE(go->geometry(), QRect(570, 487, 140, 50));
        QCOMPARE(desk.task.focusWidget(), go);
    } else if (training && !instruction) {
        QCOMPARE(go->geometry().bottomRight() + QPoint(1, 1), QPoint(1152, 896));
    }
    QCOMPARE(desk.text("le_number"), training && !instruction ? QStringLiteral("10")
                                     : mode == 0              ? QStringLiteral("150")
                                                              : QStringLiteral("50"));
}

void tst_Test1Setup::aModeHasItsCodeItsSessionAndItsNumber_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("session"); // that of its own button, raised by one
    QTest::addColumn<QString>("number");
    QTest::newRow("all three") << 0 << u"1"_qs << u"2"_qs << u"150"_qs;
    QTest::newRow("central") << 1 << u"5"_qs << u"6"_qs << u"50"_qs;
    QTest::newRow("peripheral") << 2 << u"6"_qs << u"7"_qs << u"50"_qs;
    QTest::newRow("dual") << 3 << u"7"_qs << u"8"_qs << u"50"_qs;
}

void tst_Test1Setup::aModeHasItsCodeItsSessionAndItsNumber()
{
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.go({.mode = mode});
    QTEST(desk.text("le_task"), "code");
    QTEST(desk.text("le_number"), "number");
    QCOMPARE(desk.text("le_subtask"), QString::number(mode));
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().size(), 1);
    QTEST(desk.rows().at(0)[Task], "code");
    QTEST(desk.rows().at(0)[Session], "session");
}

void tst_Test1Setup::theExposuresAreTheStoredThresholds_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("exposures");
    using B = QByteArray;
    QTest::newRow("test") << B("283;367;483") << 0 << false << u"283 367 483"_qs;
    QTest::newRow("training") << B("283;367;483") << 0 << true << u"1133 1133 1133"_qs;
    QTest::newRow("training from long ones")
        << B("2283;4633;5000") << 0 << true << u"1133 1133 1133"_qs;
    QTest::newRow("training of an untrained patient")
        << B("0;0;0") << 0 << true << u"4633 4633 4633"_qs;
    QTest::newRow("one alone has been trained") << B("0;17;0") << 0 << true << u"4633 1133 4633"_qs;
    QTest::newRow("a single training leaves what it doesn't need")
        << B("0;367;0") << 1 << true << u"4633 1133 0"_qs;
    QTest::newRow("peripheral training") << B("0;0;483") << 2 << true << u"0 4633 1133"_qs;
    QTest::newRow("dual training") << B("283;0;0") << 3 << true << u"1133 0 4633"_qs;
    QTest::newRow("a single test leaves what it doesn't need")
        << B("283;0;0") << 1 << false << u"283 0 0"_qs;
    QTest::newRow("no fields") << B("") << 0 << true << u"4633 4633 4633"_qs;
    QTest::newRow("two fields") << B("283;367") << 1 << false << u"283 367 0"_qs;
    QTest::newRow("no numbers") << B("283;x;1.5") << 1 << false << u"283 0 0"_qs;
    QTest::newRow("above the table") << B("5000;0;0") << 1 << false << u"5000 0 0"_qs;
}

void tst_Test1Setup::theExposuresAreTheStoredThresholds()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, mode);
    QFETCH(const bool, training);
    VisionDesk desk;
    desk.writePatient(stored);
    desk.go({.mode = mode, .training = training});
    const QStringList shown{desk.text("le_timer02_S1"), desk.text("le_timer02_S2"),
                            desk.text("le_timer02_S3")};
    QTEST(shown.join(u' '), "exposures");
}

void tst_Test1Setup::aPatientIsFoundAmongOthers()
{
    VisionDesk desk;
    desk.root.write(QString::fromLatin1(VisionDesk::patients),
                    "Mr.;Doe;John;01.02.1950;0;0;0;0;0;0;0;17;17;17\r\n"
                    "Mrs.;Doe;Jane;01.02.1951;0;0;0;0;0;0;0;33;33;33\r\n"
                    "Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;217;150;850\r\n"
                    "Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;67;67;67\r\n");
    desk.go({});
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("217"));
    QCOMPARE(desk.text("le_timer02_S2"), QStringLiteral("150"));
    QCOMPARE(desk.text("le_timer02_S3"), QStringLiteral("850"));
    desk.key(Qt::Key_Escape);
}

void tst_Test1Setup::withoutAThresholdATestIsRefused_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("mode");
    using B = QByteArray;
    QTest::newRow("none at all") << B("0;0;0") << 0;
    QTest::newRow("no central one of three") << B("0;367;483") << 0;
    QTest::newRow("no peripheral one of three") << B("283;0;483") << 0;
    QTest::newRow("no dual one of three") << B("283;367;0") << 0;
    QTest::newRow("no central one") << B("0;367;483") << 1;
    QTest::newRow("no peripheral one") << B("283;0;483") << 2;
    QTest::newRow("no dual one") << B("283;367;0") << 3;
    QTest::newRow("no fields") << B("") << 3;
}

void tst_Test1Setup::withoutAThresholdATestIsRefused()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, mode);
    VisionDesk desk;
    desk.writePatient(stored);
    desk.go({.mode = mode});
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].kind, messages::Kind::Warning);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QCOMPARE(messages[0].text, QStringLiteral("Unable to start!\nPlease undergo training!"));
    QVERIFY(!desk.task.isRunning());
    QVERIFY(sessionStore().escapeSeq); // the session number goes back
}

void tst_Test1Setup::aRefusalIsToldOnLightAndLeavesNothing()
{
    VisionDesk desk;
    desk.writePatient("0;0;0");
    const QString line = desk.patientLine();
    const QByteArray log = desk.root.bytes(QStringLiteral("Results/output.csv"));
    QString styleUnderTheBox;
    bool dialogUnderTheBox = true;
    {
        const messages::Handling handling([&](QWidget *parent, const messages::Message &) {
            styleUnderTheBox = parent->styleSheet();
            dialogUnderTheBox = parent->isVisible();
        });
        desk.go({.fixedDuration = true});
    }
    QCOMPARE(styleUnderTheBox, QStringLiteral("background-color:rgb(230, 230, 230)"));
    QVERIFY(!dialogUnderTheBox);
    QCOMPARE(desk.task.styleSheet(), QStringLiteral("background-color:rgb(0, 0, 0)"));
    desk.time.advance(60'000);
    QVERIFY(!desk.task.isRunning());
    QCOMPARE(desk.patientLine(), line);
    QCOMPARE(desk.root.bytes(QStringLiteral("Results/output.csv")), log);
}

void tst_Test1Setup::aCentralThresholdAloneIsEnoughForTheCentralTest()
{
    VisionDesk desk;
    desk.writePatient("283;0;0");
    desk.go({});
    QCOMPARE(desk.boxes.take().size(), 1);
    QVERIFY(!desk.task.isRunning());

    sessionStore().escapeSeq = false;
    desk.go({.mode = 1});
    QVERIFY(desk.task.isRunning());
    QVERIFY(desk.shown("pb_go"));
    QVERIFY(!sessionStore().escapeSeq);
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test1Setup::withTrainingOrInstructionNobodyIsRefused_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    for (int mode = 0; mode < 4; ++mode) {
        QTest::addRow("mode %d, instruction", mode) << mode << true << false;
        QTest::addRow("mode %d, training", mode) << mode << false << true;
        QTest::addRow("mode %d, both", mode) << mode << true << true;
    }
}

void tst_Test1Setup::withTrainingOrInstructionNobodyIsRefused()
{
    QFETCH(const int, mode);
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    VisionDesk desk;
    desk.writePatient("0;0;0");
    desk.go({.mode = mode, .instruction = instruction, .training = training});
    QVERIFY(desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QVERIFY(desk.boxes.take().isEmpty());
}

void tst_Test1Setup::theFirstTrainingTrialIsShownForItsExposure_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("exposure");
    QTest::addColumn<bool>("right");
    QTest::addColumn<QString>("next"); // on the ladder 17 33 67 133 283 567 1133 2283 4633
    QTest::newRow("trained, right") << QByteArray("283") << 1133 << true << u"567"_qs;
    QTest::newRow("trained, wrong") << QByteArray("283") << 1133 << false << u"2283"_qs;
    QTest::newRow("long, right") << QByteArray("5000") << 1133 << true << u"567"_qs;
    QTest::newRow("untrained, right") << QByteArray("0") << 4633 << true << u"2283"_qs;
    QTest::newRow("untrained, wrong") << QByteArray("0") << 4633 << false << u"4633"_qs;
}

void tst_Test1Setup::theFirstTrainingTrialIsShownForItsExposure()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, exposure);
    QFETCH(const bool, right);
    VisionDesk desk;
    desk.writePatient(stored + ';' + stored + ';' + stored);
    desk.startTest({.mode = 1, .training = true});
    QVERIFY(desk.reach(2));
    desk.time.advance(exposure - 1);
    QVERIFY(desk.shownFigure() >= 0);
    desk.time.advance(1);
    QCOMPARE(desk.shownFigure(), -1);
    QVERIFY(desk.runTrial(right));
    QTEST(desk.text("le_timer02_S1"), "next");
}

void tst_Test1Setup::aThresholdAboveTheTableIsShownAsItIs()
{
    VisionDesk desk;
    desk.writePatient("5000;0;0");
    desk.startTest({.mode = 1});
    QVERIFY(desk.reach(2));
    desk.time.advance(4999);
    QVERIFY(desk.shownFigure() >= 0);
    desk.time.advance(1);
    QCOMPARE(desk.shownFigure(), -1);
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("3500")); // one step from the longest
}

void tst_Test1Setup::theFrequencyIsReadOncePerRun()
{
    VisionDesk desk;
    desk.writePatient("283;283;283");
    desk.startTest({.mode = 1});
    sessionStore().frequency = 1;
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("217")); // 60 Hz: below 283
    desk.key(Qt::Key_Escape);

    desk.writePatient("283;283;283");
    desk.startTest({.mode = 1});
    sessionStore().frequency = 0;
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("275")); // 120 Hz: below 367
    desk.key(Qt::Key_Escape);
}

void tst_Test1Setup::theCycleIsReckonedBeforeTheTraining_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("training");
    QTest::addColumn<QString>("cycle"); // 500 + 200 + 500 + 5000 + 1000, and the exposure
    using B = QByteArray;
    QTest::newRow("the longest of three") << B("283;367;483") << 0 << false << u"7683"_qs;
    QTest::newRow("the first is the longest") << B("650;367;483") << 0 << false << u"7850"_qs;
    QTest::newRow("central") << B("283;367;483") << 1 << false << u"7483"_qs;
    QTest::newRow("peripheral") << B("283;367;483") << 2 << false << u"7567"_qs;
    QTest::newRow("dual") << B("283;367;483") << 3 << false << u"7683"_qs;
    QTest::newRow("trained") << B("283;367;483") << 0 << true << u"8333"_qs;
    QTest::newRow("trained, dual") << B("0;0;483") << 3 << true << u"8333"_qs;
    QTest::newRow("one of three trained") << B("0;17;0") << 0 << true << u"8333"_qs;
    // The first exposure of 4633 ms comes later, and isn't in it.
    QTest::newRow("untrained") << B("0;0;0") << 0 << true << u"7200"_qs;
    QTest::newRow("untrained, central") << B("0;367;483") << 1 << true << u"7200"_qs;
}

void tst_Test1Setup::theCycleIsReckonedBeforeTheTraining()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, mode);
    QFETCH(const bool, training);
    VisionDesk desk;
    desk.writePatient(stored);
    desk.go({.mode = mode, .training = training, .fixedDuration = true});
    QTEST(desk.text("le_timeTc"), "cycle");
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true)); // as the staircase moves it stays
    QTEST(desk.text("le_timeTc"), "cycle");
}

void tst_Test1Setup::thePanelShowsARunAtItsStart()
{
    VisionDesk desk;
    desk.go({.parameters = true});
    const QList<std::pair<const char *, const char *>> contents{{"le_no", "1"},
                                                                {"le_noS1", "1"},
                                                                {"le_noS2", "1"},
                                                                {"le_noS3", "1"},
                                                                {"le_number", "150"},
                                                                {"le_task", "1"},
                                                                {"le_subtask", "0"},
                                                                {"le_result", ""},
                                                                {"le_timeTc", ""},
                                                                {"le_timer01", "500"},
                                                                {"le_timer02_S1", "283"},
                                                                {"le_timer02_S2", "367"},
                                                                {"le_timer02_S3", "483"},
                                                                {"le_timer03", "200"},
                                                                {"le_timer04", "500"},
                                                                {"le_timer05", "5000"},
                                                                {"le_timer06", "1000"},
                                                                {"le_horzPitch", "   0.250"},
                                                                {"le_vertPitch", "   0.250"},
                                                                {"le_globSize", "56"},
                                                                {"le_shape", "   15.00"},
                                                                {"le_contrast", "    0.80"},
                                                                {"le_orientation", "    1.10"},
                                                                {"le_size", "    0.91"},
                                                                {"le_separator", "    0.20"},
                                                                {"le_triSize", "150"},
                                                                {"le_triRatio", "    1.50"},
                                                                {"le_triOffset", "336"}};
    QCOMPARE(desk.task.findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly).size(),
             contents.size());
    for (const auto &[edit, content] : contents)
        QVERIFY2(desk.text(edit) == QLatin1String(content),
                 qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(edit), desk.text(edit))));
}

void tst_Test1Setup::everyRunStartsAnew()
{
    VisionDesk desk;
    const auto contents = [&desk] {
        QStringList texts;
        for (const auto *edit : desk.task.findChildren<QLineEdit *>(Qt::FindDirectChildrenOnly))
            texts.append(edit->text());
        for (const QWidget *widget : desk.task.findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
            texts.append(QStringLiteral("%1 %2 %3 %4")
                             .arg(widget->x())
                             .arg(widget->y())
                             .arg(widget->width())
                             .arg(widget->height()));
        for (const auto *figure : desk.task.findChildren<DrawRoundedRectangle *>())
            texts.append(QString::number(double(figure->radius)));
        for (const auto *figure : desk.task.findChildren<DrawGrayRectangle *>())
            texts.append(QString::number(figure->gray));
        for (const DrawArrowPeriph *arrow : desk.arrows)
            texts.append(QString::number(arrow->ratio));
        return texts;
    };
    desk.go({.parameters = true, .fixedDuration = true});
    const QStringList first = contents();
    for (const char *edit : {"le_number", "le_timer02_S1", "le_timer02_S2", "le_timer02_S3",
                             "le_globSize", "le_shape", "le_contrast", "le_orientation", "le_size",
                             "le_separator", "le_triSize", "le_triRatio", "le_triOffset"})
        desk.type(edit, QStringLiteral("3"));
    QVERIFY(contents() != first);
    desk.click("pb_go");
    QVERIFY(desk.runTrial(true));
    QVERIFY(desk.runTrial(false));
    desk.widget<QLineEdit>("le_globSize")->setFocus(); // and it keeps it
    desk.key(Qt::Key_Escape);

    desk.writePatient("283;367;483");
    desk.go({.parameters = true, .fixedDuration = true});
    QCOMPARE(contents(), first);
}

void tst_Test1Setup::anEntryLeftOpenDoesNotChangeTheNextRun_data()
{
    QTest::addColumn<bool>("parameters");
    QTest::newRow("with the panel again") << true;
    QTest::newRow("without it") << false;
}

void tst_Test1Setup::anEntryLeftOpenDoesNotChangeTheNextRun()
{
    QFETCH(const bool, parameters);
    VisionDesk desk;
    sessionStore().horzPixel = 270;
    sessionStore().vertPixel = 270;
    for (const char *edit : {"le_globSize", "le_triSize", "le_triRatio", "le_orientation"}) {
        desk.go({.parameters = true});
        QCoreApplication::processEvents(); // the window becomes the active one
        desk.widget<QLineEdit>(edit)->setFocus();
        QVERIFY(desk.widget<QLineEdit>(edit)->hasFocus());
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        desk.go({.parameters = parameters});
        QCoreApplication::processEvents();
        QCOMPARE(desk.lefts[0]->size(), QSize(52, 57));
        QCOMPARE(desk.lefts[4]->size(), QSize(47, 52)); // 43 by 48 if the 52 were typed
        QCOMPARE(desk.arrows[0]->size(), QSize(139, 139));
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test1Setup::aRunAfterABrokenOneShowsNothingOfIt()
{
    VisionDesk desk;
    const auto isClean = [&desk] {
        for (const char *name : {"pb_next", "pb_continue", "pb_results", "pb_mainMenu", "lbl_mode",
                                 "lbl_instruction", "lbl_i_identical", "lbl_i_size"}) {
            if (desk.shown(name))
                return false;
        }
        return desk.nothingIsShown() && desk.shown("pb_go");
    };
    for (const int stage : {1, 2, 3, 4, 5, 6}) {
        desk.startTest({.mode = 3});
        QVERIFY(desk.reach(stage == 6 ? 5 : stage));
        if (stage == 6)
            desk.answerRight();
        QCOMPARE(desk.task.stage(), stage);
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        desk.go({.mode = 3});
        desk.time.advance(60'000);
        QVERIFY(isClean());
        desk.key(Qt::Key_Escape);
    }
    for (int steps = 0; steps < 12; ++steps) {
        desk.go({.instruction = true});
        for (int step = 0; step < steps; ++step) {
            if (desk.shown("pb_next"))
                desk.click("pb_next");
            else
                desk.time.advance(1100); // in the mask
        }
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        desk.go({});
        desk.time.advance(60'000);
        QVERIFY(isClean());
        desk.key(Qt::Key_Escape);
    }
}

void tst_Test1Setup::theLogIsOpenInTheTestAlone_data()
{
    QTest::addColumn<bool>("instruction");
    QTest::addColumn<bool>("training");
    QTest::newRow("instruction") << true << false;
    QTest::newRow("training") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_Test1Setup::theLogIsOpenInTheTestAlone()
{
    QFETCH(const bool, instruction);
    QFETCH(const bool, training);
    VisionDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    for (int mode = 0; mode < 4; ++mode) {
        desk.go({.mode = mode, .instruction = instruction, .training = training});
        QVERIFY(desk.task.isRunning());
        desk.key(Qt::Key_Escape);
        QVERIFY(!desk.task.isRunning());
        QVERIFY(desk.boxes.take().isEmpty());
    }
}

void tst_Test1Setup::aLogThatCannotBeOpenedIsTold()
{
    VisionDesk desk;
    desk.root.block(QStringLiteral("Results/output.csv"));
    desk.go({});
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open output.csv\n")));
    QVERIFY(messages[0].text.size() > QStringLiteral("Failed to open output.csv\n").size());
    QVERIFY(!desk.task.isRunning());
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(desk.thresholds(), QStringLiteral("283;367;483"));

    desk.root.unblock(QStringLiteral("Results/output.csv"));
    resultFiles::createTrialLog();
    desk.startTest({}); // and the next run is as any other
    QVERIFY(desk.runTrial(true));
    QCOMPARE(desk.rows().size(), 1);
}

void tst_Test1Setup::aListThatCannotBeReadHasNoThresholds()
{
    VisionDesk desk;
    desk.root.block(QString::fromLatin1(VisionDesk::patients));
    desk.go({.mode = 2});
    const auto messages = desk.boxes.take();
    QCOMPARE(messages.size(), 1);
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Unable to start!")));

    desk.go({.training = true});
    for (const char *edit : {"le_timer02_S1", "le_timer02_S2", "le_timer02_S3"})
        QCOMPARE(desk.text(edit), QStringLiteral("4633"));
}

void tst_Test1Setup::aPatientWhoIsNotOnTheListHasTheThresholdsReadLast()
{
    VisionDesk desk;
    desk.root.write(QString::fromLatin1(VisionDesk::patients),
                    "Mr.;Roe;Max;02.03.1960;0;0;0;0;0;0;0;150;217;850\r\n"
                    "Mr.;Poe;Tom;02.03.1960;0;0;0;0;0;0;0;67;83;117\r\n"
                    "\r\n"
                    "Mr.;Low;Jim;02.03.1960;0;0;0;0;0;0;0;1133;1133;1133\r\n");
    desk.go({});
    QCOMPARE(desk.text("le_timer02_S1"), QStringLiteral("67"));
    QCOMPARE(desk.text("le_timer02_S2"), QStringLiteral("83"));
    QCOMPARE(desk.text("le_timer02_S3"), QStringLiteral("117"));
}

QTEST_MAIN(tst_Test1Setup)
#include "tst_Test1Setup.moc"
