#include "Desk.h"

#include <QApplication>
#include <QCheckBox>
#include <QEventLoopLocker>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

namespace {

QStringList always()
{
    return {QStringLiteral("actionAbout_Kelmoran"), QStringLiteral("actionQuitter"),
            QStringLiteral("actionInstruction_book"), QStringLiteral("actionVideo_instructions"),
            QStringLiteral("actionPublications")};
}

QStringList afterTheScreen()
{
    return {QStringLiteral("actionPreferences"), QStringLiteral("actionAdd_patient"),
            QStringLiteral("actionAssessor"), QStringLiteral("cob_patientName")};
}

QStringList subtasks()
{
    return {QStringLiteral("pb_test5"),    QStringLiteral("pb_test6"),
            QStringLiteral("pb_test7"),    QStringLiteral("le_session5"),
            QStringLiteral("le_session6"), QStringLiteral("le_session7")};
}

} // namespace

/// The main window.
class tst_Kelmoran : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    // The start.
    void theFirstStartMakesWhatIsMissing();
    void theFirstStartOpensTheCalibrationAfterHalfASecond();
    void aCalibratedScreenIsReadAndNotMeasuredAgain();
    void aScreenFileOfZerosOpensTheCalibration();
    void aScreenFileThatCantBeWrittenIsTold();
    void aScreenFileThatCantBeReadIsToldAndLeft();
    void filesThatExistAreNotTouched();
    void aDataRootInWhichNothingCanBeMadeIsNoReasonToStop();
    void theVersionReads1_1();
    void theSiteCodeIsReadAtTheStart();
    void anEscapeLeftOverIsCleared();
    void theMenusStandInTheirOrder();
    void theFontsAreRaised();

    // What is enabled when.
    void theTestsWaitForAPatient();
    void theTestsNeedNoAssessorAndNoCalibration();

    // The assessor.
    void theAssessorIsShown_data();
    void theAssessorIsShown();
    void aChangedAssessorShowsWithin200Ms();
    void anAssessorWhoCantBeReadLeavesTheLabels();

    // The tests.
    void aTestButtonRaisesItsSessionNumberAtOnceAndAnAbortTakesItBack();
    void aTestStartedAtOnceAfterAnAbortHasTheNextNumberOnly();
    void theOptionsAreHandedToTheTask();
    void aTestButtonDoesNothingWhileATaskRuns();
    void theMovementButtonRaisesItsNumber();
    void aVisionButtonRaisesItsOwnNumber_data();
    void aVisionButtonRaisesItsOwnNumber();
    void aRefusedVisionTestTakesNoNumber_data();
    void aRefusedVisionTestTakesNoNumber();
    void theMemoryButtonRaisesItsNumberAndHandsTheOptionsOn();
    void subtasksShowAndHide();

    // The end.
    void escapeEndsTheProgramAlsoBeforeTheFirstBeat();
    void exitStopsTheBeat();
    void aHeldEscapeEndsNothing();
    void aClosedWindowEndsTheProgramWhenTheReportIsWritten();

private:
    std::unique_ptr<Desk> m_desk;
};

void tst_Kelmoran::init()
{
    m_desk = std::make_unique<Desk>();
}

void tst_Kelmoran::cleanup()
{
    m_desk.reset();
}

// The start.

void tst_Kelmoran::theFirstStartMakesWhatIsMissing()
{
    const DataRoot &root = m_desk->root;
    m_desk->open();
    for (const char *folder : {"Archives", "Parameters", "Results"})
        QVERIFY2(QFileInfo(root.path(QLatin1String(folder))).isDir(), folder);
    QCOMPARE(root.bytes(QStringLiteral("Results/output.csv")),
             QByteArray("code;gender;l_name;f_name;dob;task;session;date;time;subtask;rank_task;"
                        "rank_sub;t1_time;t1c_figure;t1c_answer;t1p_position;t1p_answer;t1_tanswer;"
                        "t1_answer;t1_implement;t2_rt;t2_position;t3_rt;t3_position;t3_dir_mov;"
                        "t4_dist_first;t4_dist_last;t4_pos_first;t4_pos_last;error\n"));
    QVERIFY(root.exists(Desk::listFile()));
    QCOMPARE(root.bytes(Desk::listFile()), QByteArray(""));
    QCOMPARE(m_desk->patients()->count(), 0);
    QVERIFY(!root.exists(QStringLiteral("Parameters/screen.pix")));
}

void tst_Kelmoran::theFirstStartOpensTheCalibrationAfterHalfASecond()
{
    m_desk->open();
    m_desk->time.advance(499);
    QVERIFY(!m_desk->calibration()->isVisible());
    QVERIFY(!m_desk->root.exists(QStringLiteral("Parameters/screen.pix")));
    m_desk->time.advance(1);
    QVERIFY(m_desk->calibration()->isVisible());
    QCOMPARE(m_desk->root.bytes(QStringLiteral("Parameters/screen.pix")), QByteArray(12, '\0'));

    // The timer has beaten its only beat.
    m_desk->calibration()->hide();
    m_desk->time.advance(5000);
    QVERIFY(!m_desk->calibration()->isVisible());
}

void tst_Kelmoran::aCalibratedScreenIsReadAndNotMeasuredAgain()
{
    m_desk->openWith("");
    QVERIFY(!m_desk->calibration()->isVisible());
    QCOMPARE(sessionStore().horzPixel, 260);
    QCOMPARE(sessionStore().vertPixel, 261);
    QCOMPARE(sessionStore().frequency, 1);
    QCOMPARE(m_desk->root.bytes(QStringLiteral("Parameters/screen.pix")), Desk::calibrated());
}

void tst_Kelmoran::aScreenFileOfZerosOpensTheCalibration()
{
    m_desk->root.write(QStringLiteral("Parameters/screen.pix"), QByteArray(12, '\0'));
    m_desk->open();
    m_desk->time.advance(500);
    QVERIFY(m_desk->calibration()->isVisible());
}

void tst_Kelmoran::aScreenFileThatCantBeWrittenIsTold()
{
    m_desk->root.block(QStringLiteral("Parameters/screen.pix"));
    m_desk->open();
    m_desk->time.advance(500);
    const auto messages = m_desk->boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].title, QStringLiteral("Error"));
    QVERIFY(messages[0].text.startsWith(QStringLiteral("Failed to open screen.pix\n")));
    QVERIFY(!messages[0].text.endsWith(u'\n'));
    QVERIFY(!m_desk->calibration()->isVisible());
    QVERIFY(m_desk->isEnabled(QStringLiteral("cob_patientName")));
}

void tst_Kelmoran::aScreenFileThatCantBeReadIsToldAndLeft()
{
    const QString screenPix = m_desk->root.path(QStringLiteral("Parameters/screen.pix"));
    QVERIFY(QDir().mkpath(QFileInfo(screenPix).path()));
    // Can be opened, but its first bytes can't be read.
    QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), screenPix));
    m_desk->open();
    m_desk->time.advance(500);
    const auto messages = m_desk->boxes.take();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].text, QStringLiteral("Failed to open screen.pix\nInput/output error"));
    QVERIFY(QFileInfo(screenPix).isSymLink());
    QVERIFY(!m_desk->calibration()->isVisible());
    QVERIFY(m_desk->isEnabled(QStringLiteral("cob_patientName")));
}

void tst_Kelmoran::filesThatExistAreNotTouched()
{
    const QByteArray log = "somebody's own header\nand a row\n";
    m_desk->root.write(QStringLiteral("Results/output.csv"), log);
    m_desk->openWith(Desk::patient("Berg"));
    QCOMPARE(m_desk->root.bytes(QStringLiteral("Results/output.csv")), log);
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), Desk::patient("Berg"));
}

void tst_Kelmoran::aDataRootInWhichNothingCanBeMadeIsNoReasonToStop()
{
    for (const char *folder : {"Archives", "Parameters", "Results"})
        m_desk->root.write(QLatin1String(folder), "a file where the folder should be");
    m_desk->open();
    QCOMPARE(m_desk->patients()->count(), 0);
    QVERIFY(m_desk->boxes.take().isEmpty()); // the start is silent
    m_desk->time.advance(500);
    QCOMPARE(m_desk->boxes.take().size(), 1); // the screen is not
    QVERIFY(m_desk->isEnabled(QStringLiteral("actionAdd_patient")));
}

void tst_Kelmoran::theVersionReads1_1()
{
    m_desk->open();
    QCOMPARE(m_desk->label(QStringLiteral("lbl_versionNb")), QStringLiteral("1.1"));
    QCOMPARE(m_desk->label(QStringLiteral("lbl_version")), QStringLiteral("Version :"));
    QCOMPARE(m_desk->window()->windowTitle(), QStringLiteral("Kelmoran"));
    QCOMPARE(m_desk->window()->size(), QSize(672, 420));
}

void tst_Kelmoran::theSiteCodeIsReadAtTheStart()
{
    m_desk->root.write(QStringLiteral("Parameters/site.txt"), "LYON-2\n");
    m_desk->open();
    QCOMPARE(sessionStore().siteCode, QStringLiteral("LYON-2"));
}

void tst_Kelmoran::anEscapeLeftOverIsCleared()
{
    sessionStore().escapeSeq = true;
    m_desk->open();
    QVERIFY(!sessionStore().escapeSeq);
}

void tst_Kelmoran::theMenusStandInTheirOrder()
{
    m_desk->open();
    QStringList texts;
    for (const QAction *menu : m_desk->window()->menuBar()->actions()) {
        texts.append(menu->text());
        for (const QAction *entry : menu->menu()->actions())
            texts.append(entry->isSeparator() ? QStringLiteral("-") : entry->text());
    }
    const QStringList expected{QStringLiteral("File"),
                               QStringLiteral("About Kelmoran"),
                               QStringLiteral("Preferences..."),
                               QStringLiteral("-"),
                               QStringLiteral("Exit"),
                               QStringLiteral("Users"),
                               QStringLiteral("Add patient..."),
                               QStringLiteral("-"),
                               QStringLiteral("Assessor..."),
                               QStringLiteral("Archive"),
                               QStringLiteral("Previous reports"),
                               QStringLiteral("Help"),
                               QStringLiteral("Instruction book"),
                               QStringLiteral("Video instructions"),
                               QStringLiteral("Publications")};
    QCOMPARE(texts, expected);
}

void tst_Kelmoran::theFontsAreRaised()
{
    m_desk->open();
    const int form = m_desk->window()->font().pointSize();
    QCOMPARE(m_desk->find<QPushButton>(QStringLiteral("pb_test7"))->font().pointSize(), form + 3);
    QCOMPARE(m_desk->find<QCheckBox>(QStringLiteral("cb_subTask"))->font().pointSize(), form + 3);
    QCOMPARE(m_desk->session(4)->font().pointSize(), form + 3);
    QCOMPARE(m_desk->patients()->font().pointSize(), form + 3);
    const QFont menu = m_desk->find<QWidget>(QStringLiteral("menuBar"))->font();
    for (const QString &name : always() + QStringList{QStringLiteral("actionAssessor")})
        QCOMPARE(m_desk->find<QAction>(name)->font().pointSize(), QFontInfo(menu).pointSize() + 5);
}

// What is enabled when.

void tst_Kelmoran::theTestsWaitForAPatient()
{
    const auto check = [this](const QStringList &names, bool enabled) {
        for (const QString &name : names)
            QVERIFY2(m_desk->isEnabled(name) == enabled, qPrintable(name));
    };
    m_desk->root.write(QStringLiteral("Parameters/screen.pix"), Desk::calibrated());
    m_desk->root.write(Desk::listFile(), Desk::patient("Berg"));
    m_desk->open();
    check(always(), true);
    check(afterTheScreen(), false);
    check(Desk::tests(), false);

    m_desk->time.advance(500);
    check(afterTheScreen(), true);
    check(Desk::tests(), false);

    m_desk->choose(0);
    check(always() + afterTheScreen() + Desk::tests(), true);
    m_desk->time.advance(10'000);
    check(always() + afterTheScreen() + Desk::tests(), true);
}

void tst_Kelmoran::theTestsNeedNoAssessorAndNoCalibration()
{
    m_desk->root.write(Desk::listFile(), Desk::patient("Berg"));
    m_desk->open();
    m_desk->time.advance(500);
    QTest::keyClick(m_desk->calibration(), Qt::Key_Escape);
    QVERIFY(!m_desk->calibration()->isVisible());
    QCOMPARE(sessionStore().horzPixel, 0);
    m_desk->choose(0);
    QVERIFY(m_desk->isEnabled(QStringLiteral("pb_test2")));
}

// The assessor.

void tst_Kelmoran::theAssessorIsShown_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("institution");

    QTest::newRow("whole") << QByteArray("Dr.;Łukasz;Œnone;Clinic;Street 1;1000;City;Land\n")
                           << QStringLiteral("Dr. Œnone Łukasz") << QStringLiteral("Clinic");
    QTest::newRow("only the first line counts")
        << QByteArray("Dr.;Berg;Ann;Clinic\nMr.;Alt;Jo;Home\n") << QStringLiteral("Dr. Ann Berg")
        << QStringLiteral("Clinic");
    QTest::newRow("short") << QByteArray("Dr.;Berg") << QStringLiteral("Dr.  Berg") << QString();
    QTest::newRow("empty") << QByteArray("") << QStringLiteral("  ") << QString();
}

void tst_Kelmoran::theAssessorIsShown()
{
    QFETCH(QByteArray, record);
    QFETCH(QString, name);
    QFETCH(QString, institution);
    m_desk->root.write(QStringLiteral("Parameters/assessor.txt"), record);
    m_desk->open();
    QCOMPARE(m_desk->label(QStringLiteral("lbl_name")), name);
    QCOMPARE(m_desk->label(QStringLiteral("lbl_institution")), institution);
}

void tst_Kelmoran::aChangedAssessorShowsWithin200Ms()
{
    m_desk->openWith("");
    m_desk->root.write(QStringLiteral("Parameters/assessor.txt"), "Prof.;Berg;Ann;Clinic\n");
    sessionStore().assessor = true;
    m_desk->time.advance(200);
    QCOMPARE(m_desk->label(QStringLiteral("lbl_name")), QStringLiteral("Prof. Ann Berg"));
    QVERIFY(!sessionStore().assessor);
}

void tst_Kelmoran::anAssessorWhoCantBeReadLeavesTheLabels()
{
    m_desk->root.block(QStringLiteral("Parameters/assessor.txt"));
    m_desk->openWith("");
    sessionStore().assessor = true;
    m_desk->time.advance(200);
    QVERIFY(!sessionStore().assessor);
    QCOMPARE(m_desk->label(QStringLiteral("lbl_name")), QStringLiteral("Name"));
    QCOMPARE(m_desk->label(QStringLiteral("lbl_institution")), QStringLiteral("Institution"));
}

// The tests.

void tst_Kelmoran::aTestButtonRaisesItsSessionNumberAtOnceAndAnAbortTakesItBack()
{
    const QByteArray list = Desk::patient("Alt") + Desk::patient("Berg", "1;2;3;4;5;6;7");
    m_desk->openWith(list);
    m_desk->choose(1);
    m_desk->click(QStringLiteral("pb_test2"));
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("3"));
    QCOMPARE(sessionStore().sessionNb, (std::array<int, 7>{1, 3, 3, 4, 5, 6, 7}));
    QVERIFY(m_desk->test2()->isRunning());

    QTest::keyClick(m_desk->test2(), Qt::Key_Escape);
    QVERIFY(!m_desk->test2()->isRunning());
    m_desk->time.advance(200);
    const QStringList shown{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                            QStringLiteral("4"), QStringLiteral("5"), QStringLiteral("6"),
                            QStringLiteral("7")};
    QCOMPARE(m_desk->sessions(), shown);
    QCOMPARE(sessionStore().sessionNb, (std::array<int, 7>{1, 2, 3, 4, 5, 6, 7}));
    QVERIFY(!sessionStore().escapeSeq);
    QCOMPARE(m_desk->root.bytes(Desk::listFile()), list);
}

void tst_Kelmoran::aTestStartedAtOnceAfterAnAbortHasTheNextNumberOnly()
{
    m_desk->openWith(Desk::patient("Berg", "1;2;3;4;5;6;7"));
    m_desk->choose(0);
    m_desk->click(QStringLiteral("pb_test2"));
    QTest::keyClick(m_desk->test2(), Qt::Key_Escape);
    m_desk->click(QStringLiteral("pb_test2")); // before the main window has looked
    QCOMPARE(sessionStore().sessionNb[1], 3);
    m_desk->time.advance(1000);
    QCOMPARE(sessionStore().sessionNb[1], 3); // and nothing takes it back
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("3"));
    QVERIFY(m_desk->test2()->isRunning());
}

void tst_Kelmoran::theOptionsAreHandedToTheTask()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    QVERIFY(m_desk->find<QCheckBox>(QStringLiteral("cb_withInstruction"))->isChecked());
    QVERIFY(m_desk->find<QCheckBox>(QStringLiteral("cb_withTraining"))->isChecked());
    QVERIFY(!m_desk->find<QCheckBox>(QStringLiteral("cb_fixedDuration"))->isChecked());
    QVERIFY(!m_desk->find<QCheckBox>(QStringLiteral("cb_parameters"))->isChecked());

    // Neither instruction nor training, but the parameters: the task stands before its test, whose
    // log is open, and shows its panel.
    m_desk->find<QCheckBox>(QStringLiteral("cb_withInstruction"))->click();
    m_desk->find<QCheckBox>(QStringLiteral("cb_withTraining"))->click();
    m_desk->find<QCheckBox>(QStringLiteral("cb_parameters"))->click();
    m_desk->click(QStringLiteral("pb_test2"));
    QVERIFY(m_desk->test2()->findChild<QWidget *>(QStringLiteral("pb_go"))->isVisible());
    QVERIFY(m_desk->test2()->findChild<QWidget *>(QStringLiteral("le_timer01"))->isVisible());
    QTest::keyClick(m_desk->test2(), Qt::Key_Escape);
    QVERIFY(!m_desk->test2()->isRunning());
}

void tst_Kelmoran::aTestButtonDoesNothingWhileATaskRuns()
{
    m_desk->openWith(Desk::patient("Berg"));
    m_desk->choose(0);
    m_desk->click(QStringLiteral("pb_test2"));
    m_desk->click(QStringLiteral("pb_test2"));
    QCOMPARE(m_desk->session(2)->text(), QStringLiteral("1"));
    QCOMPARE(sessionStore().sessionNb[1], 1);
    QTest::keyClick(m_desk->test2(), Qt::Key_Escape);
}

void tst_Kelmoran::theMovementButtonRaisesItsNumber()
{
    m_desk->openWith(Desk::patient("Berg", "4;4;4;4;4;4;4"));
    m_desk->choose(0);
    m_desk->click(QStringLiteral("pb_test3"));
    QStringList raised(7, QStringLiteral("4"));
    raised[2] = QStringLiteral("5");
    QCOMPARE(m_desk->sessions(), raised);
    auto *task = m_desk->find<QDialog>(QStringLiteral("Test3Class"));
    QVERIFY(task->isVisible());
    QCOMPARE(task->findChild<QLineEdit *>(QStringLiteral("le_task"))->text(), QStringLiteral("3"));
    QCOMPARE(task->findChild<QLineEdit *>(QStringLiteral("le_subtask"))->text(),
             QStringLiteral("1"));

    QTest::keyClick(task, Qt::Key_Escape);
    m_desk->time.advance(200);
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("4")));
}

void tst_Kelmoran::aVisionButtonRaisesItsOwnNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("title");
    QTest::addRow("all") << 1 << QStringLiteral("Visual\nrecognition");
    QTest::addRow("central") << 5 << QStringLiteral("Central\nvision");
    QTest::addRow("peripheral") << 6 << QStringLiteral("Peripheral\nvision");
    QTest::addRow("dual") << 7 << QStringLiteral("Dual task");
}

void tst_Kelmoran::aVisionButtonRaisesItsOwnNumber()
{
    QFETCH(int, number);
    QFETCH(QString, title);
    m_desk->openWith(Desk::patient("Berg", "4;4;4;4;4;4;4"));
    m_desk->choose(0);
    m_desk->find<QCheckBox>(QStringLiteral("cb_subTask"))->setChecked(true);
    m_desk->click(QStringLiteral("pb_test%1").arg(number));

    QStringList raised(7, QStringLiteral("4"));
    raised[number - 1] = QStringLiteral("5");
    QCOMPARE(m_desk->sessions(), raised);
    auto *task = m_desk->find<QDialog>(QStringLiteral("Test1Class"));
    QVERIFY(task->isVisible());
    QCOMPARE(task->findChild<QLineEdit *>(QStringLiteral("le_task"))->text(),
             QString::number(number));
    QCOMPARE(task->findChild<QLabel *>(QStringLiteral("lbl_instruction"))->text(), title);

    QTest::keyClick(task, Qt::Key_Escape);
    m_desk->time.advance(200);
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("4")));
}

void tst_Kelmoran::aRefusedVisionTestTakesNoNumber_data()
{
    QTest::addColumn<QString>("button");
    for (const int number : {1, 5, 6, 7})
        QTest::addRow("%d", number) << QStringLiteral("pb_test%1").arg(number);
}

void tst_Kelmoran::aRefusedVisionTestTakesNoNumber()
{
    QFETCH(QString, button);
    m_desk->openWith(Desk::patient("Berg", "4;4;4;4;4;4;4"));
    m_desk->choose(0);
    m_desk->find<QCheckBox>(QStringLiteral("cb_subTask"))->setChecked(true);
    for (const char *box : {"cb_withInstruction", "cb_withTraining"})
        m_desk->find<QCheckBox>(QString::fromLatin1(box))->setChecked(false);
    m_desk->click(button);
    const auto boxes = m_desk->boxes.take();
    QCOMPARE(boxes.size(), 1);
    QCOMPARE(boxes.constFirst().text, QStringLiteral("Unable to start!\nPlease undergo training!"));
    m_desk->time.advance(200);
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("4")));
    QCOMPARE(sessionStore().sessionNb, (std::array<int, 7>{4, 4, 4, 4, 4, 4, 4}));
}

void tst_Kelmoran::theMemoryButtonRaisesItsNumberAndHandsTheOptionsOn()
{
    m_desk->openWith(Desk::patient("Berg", "4;4;4;4;4;4;4"));
    m_desk->choose(0);
    const auto tick = [this](const char *box, bool on) {
        m_desk->find<QCheckBox>(QString::fromLatin1(box))->setChecked(on);
    };
    tick("cb_withInstruction", false);
    tick("cb_withTraining", true);
    tick("cb_parameters", true);
    tick("cb_fixedDuration", true); // the task has none
    m_desk->click(QStringLiteral("pb_test4"));

    QStringList raised(7, QStringLiteral("4"));
    raised[3] = QStringLiteral("5");
    QCOMPARE(m_desk->sessions(), raised);
    auto *task = m_desk->find<QDialog>(QStringLiteral("Test4Class"));
    QVERIFY(task->isVisible());
    const auto label = [task](const char *name) {
        return task->findChild<QLabel *>(QString::fromLatin1(name));
    };
    QCOMPARE(label("lbl_mode")->text(), QStringLiteral("TRAINING"));
    QCOMPARE(label("lbl_instruction")->text(), QStringLiteral("Memory"));
    QVERIFY(label("lbl_timer01")->isVisible());

    QTest::keyClick(task, Qt::Key_Escape);
    m_desk->time.advance(200);
    QCOMPARE(m_desk->sessions(), QStringList(7, QStringLiteral("4")));
}

void tst_Kelmoran::subtasksShowAndHide()
{
    m_desk->openWith(Desk::patient("Berg", "1;2;3;4;5;6;7"));
    m_desk->choose(0);
    const auto check = [this](bool visible) {
        for (const QString &name : subtasks())
            QVERIFY2(m_desk->find<QWidget>(name)->isVisible() == visible, qPrintable(name));
        QVERIFY(m_desk->find<QWidget>(QStringLiteral("pb_test4"))->isVisible());
    };
    check(false);
    auto *box = m_desk->find<QCheckBox>(QStringLiteral("cb_subTask"));
    box->click();
    check(true);
    m_desk->window()->toSubTask(Qt::PartiallyChecked);
    check(true);
    box->click();
    check(false);
    QCOMPARE(sessionStore().sessionNb[6], 7);
    QCOMPARE(m_desk->session(7)->text(), QStringLiteral("7"));
}

// The end.

void tst_Kelmoran::escapeEndsTheProgramAlsoBeforeTheFirstBeat()
{
    m_desk->open();
    m_desk->window()->activateWindow();
    QCoreApplication::processEvents();
    QTest::keyClick(m_desk->window(), Qt::Key_Escape);
    QVERIFY(!m_desk->window()->isVisible());
    m_desk->time.advance(1000);
    QVERIFY(!m_desk->calibration()->isVisible());
}

void tst_Kelmoran::exitStopsTheBeat()
{
    m_desk->openWith("");
    m_desk->find<QAction>(QStringLiteral("actionQuitter"))->trigger();
    QVERIFY(!m_desk->window()->isVisible());
    sessionStore().assessor = true;
    m_desk->time.advance(1000);
    QVERIFY(sessionStore().assessor);
}

void tst_Kelmoran::aHeldEscapeEndsNothing()
{
    m_desk->open();
    const auto *exit = m_desk->find<QAction>(QStringLiteral("actionQuitter"));
    QCOMPARE(exit->shortcut(), QKeySequence(Qt::Key_Escape));
    QVERIFY(!exit->autoRepeat());
}

void tst_Kelmoran::aClosedWindowEndsTheProgramWhenTheReportIsWritten()
{
    m_desk->openWith("");
    Kelmoran *window = m_desk->window();
    auto report = std::make_unique<QEventLoopLocker>(); // as a report holds one on its way
    const auto writeReport = [&] {
        QVERIFY(!window->isVisible());
        sessionStore().assessor = true;
        m_desk->time.advance(1000); // nothing beats any more
        report.reset();
    };
    QMetaObject::invokeMethod(
        window,
        [&] {
            window->close(); // as the window manager does
            QMetaObject::invokeMethod(window, writeReport, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(report == nullptr);
    QVERIFY(sessionStore().assessor);
}

QTEST_MAIN(tst_Kelmoran)
#include "tst_Kelmoran.moc"
