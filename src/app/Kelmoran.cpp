#include "Kelmoran.h"

#include "Assessor.h"
#include "Calibration.h"
#include "Messages.h"
#include "NewPatient.h"
#include "Preferences.h"
#include "SessionStore.h"
#include "TaskTimer.h"
#include "Test1.h"
#include "Test2.h"
#include "Test3.h"
#include "Test4.h"
#include "WebViewer.h"
#include "assessorRecord.h"
#include "dataFolders.h"
#include "fonts.h"
#include "patientsList.h"
#include "resources.h"
#include "resultFiles.h"
#include "screenFile.h"
#include "screens.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMenu>
#include <QScreen>

#include <utility>

Q_LOGGING_CATEGORY(lcKelmoran, "kelmoran.app", QtCriticalMsg)

namespace {
constexpr int mailboxInterval = 200;  // ms
constexpr int calibrationDelay = 500; // ms, until the window is on the screen
} // namespace

Kelmoran::Kelmoran(QWidget *parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
{
    initResources();
    m_ui.setupUi(this);
    m_ui.lbl_versionNb->setText(QStringLiteral("1.1"));

    m_calibration = new Calibration(this);
    m_test4 = new Test4(this);
    m_test1 = new Test1(this);
    m_test2 = new Test2(this);
    m_test3 = new Test3(this);
    m_newPatient = new NewPatient(this);
    m_assessor = new Assessor(this);
    m_timer1 = new TaskTimer(this);
    m_timerCal = new TaskTimer(this);
    m_webViewer = std::make_unique<WebViewer>();
    m_preferences = new Preferences(this);

    connectActions();
    connectControls();
    nameControls();

    dataFolders::create();
    sessionStore().siteCode = dataFolders::readSiteCode();
    showAssessor();
    m_ui.pb_test1->setFocus();
    resultFiles::createTrialLog();
    fillPatients();
    if (!m_ui.cb_subTask->isChecked())
        toSubTask(Qt::Unchecked);
    raiseAllFonts();

    m_calibration->setEscapeSeq(false);
    m_timer1->start(mailboxInterval);
    m_timerCal->start(calibrationDelay);
}

Kelmoran::~Kelmoran() = default;

void Kelmoran::connectActions()
{
    connect(m_ui.actionAbout_Kelmoran, &QAction::triggered, this, &Kelmoran::toAbout_Kelmoran);
    connect(m_ui.actionPreferences, &QAction::triggered, this, &Kelmoran::toPreferences);
    connect(m_ui.actionQuitter, &QAction::triggered, this, &Kelmoran::closeApp);
    connect(m_ui.actionAdd_patient, &QAction::triggered, this, &Kelmoran::toAdd_patient);
    connect(m_ui.actionAssessor, &QAction::triggered, this, &Kelmoran::toAssessor);
    connect(m_ui.actionPrevious_reports, &QAction::triggered, this, &Kelmoran::toPrevious_reports);
    connect(m_ui.actionInstruction_book, &QAction::triggered, this, &Kelmoran::toInstruction_book);
    connect(m_ui.actionVideo_instructions, &QAction::triggered, this,
            &Kelmoran::toVideo_instructions);
    connect(m_ui.actionPublications, &QAction::triggered, this, &Kelmoran::toPublications);
    // An Escape that is still held down when it has closed a task must not end the program too.
    m_ui.actionQuitter->setAutoRepeat(false);
}

void Kelmoran::connectControls()
{
    connect(m_ui.cob_patientName, &QComboBox::activated, this, &Kelmoran::toCob_patientName);
    connect(m_ui.pb_test1, &QPushButton::clicked, this, &Kelmoran::toTest1);
    connect(m_ui.pb_test2, &QPushButton::clicked, this, &Kelmoran::toTest2);
    connect(m_ui.pb_test3, &QPushButton::clicked, this, &Kelmoran::toTest3);
    connect(m_ui.pb_test4, &QPushButton::clicked, this, &Kelmoran::toTest4);
    connect(m_ui.pb_test5, &QPushButton::clicked, this, &Kelmoran::toTest5);
    connect(m_ui.pb_test6, &QPushButton::clicked, this, &Kelmoran::toTest6);
    connect(m_ui.pb_test7, &QPushButton::clicked, this, &Kelmoran::toTest7);
    connect(m_ui.cb_subTask, &QCheckBox::stateChanged, this, &Kelmoran::toSubTask);
    connect(m_timer1, &TaskTimer::timeout, this, &Kelmoran::to_timer1);
    connect(m_timerCal, &TaskTimer::timeout, this, &Kelmoran::to_timerCal);
    // A window that the window manager closes ends like "Exit": while a report is still on its way
    // to the disk, the process lives on without beating.
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, m_timer1, &TaskTimer::stop);
    connect(qGuiApp, &QGuiApplication::lastWindowClosed, m_timerCal, &TaskTimer::stop);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, [this] { m_screenGone = true; });
}

/// Ctrl and a digit for each test button, and a name for its session field, which has no label of
/// its own, for those who have the screen read to them.
void Kelmoran::nameControls()
{
    const QList<std::pair<QPushButton *, QLineEdit *>> tests{
        {m_ui.pb_test1, m_ui.le_session1}, {m_ui.pb_test2, m_ui.le_session2},
        {m_ui.pb_test3, m_ui.le_session3}, {m_ui.pb_test4, m_ui.le_session4},
        {m_ui.pb_test5, m_ui.le_session5}, {m_ui.pb_test6, m_ui.le_session6},
        {m_ui.pb_test7, m_ui.le_session7}};
    int digit = Qt::Key_1;
    for (const auto &[button, session] : tests) {
        const QKeySequence keys(QKeyCombination(Qt::ControlModifier, Qt::Key(digit++)));
        button->setShortcut(keys);
        button->setToolTip(keys.toString(QKeySequence::NativeText));
        session->setAccessibleName(button->text() + u' ' + m_ui.lbl_session->text());
    }
}

void Kelmoran::raiseAllFonts()
{
    constexpr int controls = 3; // points
    constexpr int menus = 5;
    raiseFonts({m_ui.cb_withInstruction, m_ui.cb_withTraining, m_ui.cb_fixedDuration,
                m_ui.cb_parameters, m_ui.cb_subTask},
               controls);
    raiseFonts({m_ui.cob_patientName}, controls);
    raiseFonts({m_ui.lbl_assessor, m_ui.lbl_patientName}, controls);
    raiseFonts({m_ui.lbl_name, m_ui.lbl_institution, m_ui.lbl_session}, controls);
    raiseFonts({m_ui.lbl_version, m_ui.lbl_versionNb}, controls);
    raiseFonts({m_ui.le_session1, m_ui.le_session2, m_ui.le_session3, m_ui.le_session4,
                m_ui.le_session5, m_ui.le_session6, m_ui.le_session7},
               controls);
    raiseFonts({m_ui.pb_test1, m_ui.pb_test2, m_ui.pb_test3, m_ui.pb_test4, m_ui.pb_test5,
                m_ui.pb_test6, m_ui.pb_test7},
               controls);

    const QList<QAction *> entries{
        m_ui.actionAbout_Kelmoran,   m_ui.actionPreferences,        m_ui.actionQuitter,
        m_ui.actionAdd_patient,      m_ui.actionAssessor,           m_ui.actionPrevious_reports,
        m_ui.actionInstruction_book, m_ui.actionVideo_instructions, m_ui.actionPublications};
    QFont font = m_ui.menuBar->font();
    font.setPointSize(QFontInfo(font).pointSize() + menus);
    for (QAction *entry : entries)
        entry->setFont(font);
    for (QMenu *menu : {m_ui.menuFile, m_ui.menuUsers, m_ui.menuArchive, m_ui.menuHelp})
        menu->setFont(font); // that of the keys beside the entries
}

void Kelmoran::to_timerCal()
{
    m_timerCal->stop();
    // A file that can't be read now may hold a calibration: it is told, and left as it is.
    QString error = screenFile::exists() ? screenFile::read() : QString();
    if (error.isEmpty() && m_calibration->isHorzPitch() == 0) {
        // Never calibrated. The calibration reads the file before it writes it.
        error = screenFile::write();
        if (error.isEmpty())
            m_calibration->goCalibration();
    }
    if (!error.isEmpty())
        messages::warning(this, tr("Error"),
                          tr("Failed to open %1\n%2").arg(QLatin1String(screenFile::name), error));
    m_ui.actionPreferences->setEnabled(true);
    m_ui.actionAdd_patient->setEnabled(true);
    m_ui.actionAssessor->setEnabled(true);
    m_ui.cob_patientName->setEnabled(true);
}

void Kelmoran::to_timer1()
{
    if (!catchUp())
        return;
    if (m_calibration->isAssessor()) {
        m_calibration->setAssessor(false);
        showAssessor();
    }
    if (m_calibration->isPitchError()) {
        m_calibration->setPitchError(false);
        m_calibration->goCalibration();
    }
    comeBack();
    tellSmallScreen();
}

/// With what has become of the patient since the last beat; false if a registration is refused.
bool Kelmoran::catchUp()
{
    if (m_calibration->isNewPatient() && !registerPatient())
        return false;
    if (m_calibration->isEscapeSeq())
        readSessionsBack();
    return true;
}

/// From a screen that was unplugged: a window manager may leave no more of the window than an edge.
void Kelmoran::comeBack()
{
    if (!std::exchange(m_screenGone, false))
        return;
    const QRect free = screen()->availableGeometry();
    if (!free.contains(frameGeometry()))
        move(free.center() - rect().center());
}

/// On the line at the foot of the window, in front of a test: a screen can be changed, scaled or
/// unplugged at any time, and the window be moved to another one.
void Kelmoran::tellSmallScreen()
{
    const QSize has = screen()->size();
    QString text;
    if (screens::isTooSmall(has, screens::layout))
        text = tr("This screen has %1 by %2 pixels. The tests need %3 by %4: parts of them are cut "
                  "off.")
                   .arg(has.width())
                   .arg(has.height())
                   .arg(screens::layout.width())
                   .arg(screens::layout.height());
    if (m_ui.statusBar->currentMessage() != text)
        m_ui.statusBar->showMessage(text);
}

void Kelmoran::showAssessor()
{
    const auto record = assessorRecord::read();
    if (!record)
        return;
    m_ui.lbl_name->setText(assessorRecord::fullName(*record));
    m_ui.lbl_institution->setText(assessorRecord::field(*record, assessorRecord::Institution));
}

void Kelmoran::readSessionsBack()
{
    toCob_patientName(0);
    qCDebug(lcKelmoran, "session T1 %6d", m_calibration->isSessionNb_T1());
    showSessionNumbers();
    m_calibration->setEscapeSeq(false);
}

bool Kelmoran::taskIsRunning() const
{
    return m_test1->isRunning() || m_test2->isRunning() || m_test3->isRunning() ||
           m_test4->isRunning();
}

Kelmoran::Options Kelmoran::options() const
{
    return {m_ui.cb_withInstruction->isChecked(), m_ui.cb_withTraining->isChecked(),
            m_ui.cb_parameters->isChecked(), m_ui.cb_fixedDuration->isChecked()};
}

template <typename Go>
void Kelmoran::runTest(std::size_t sessionIndex, QLineEdit *field, Go go)
{
    if (taskIsRunning())
        return;
    if (m_newPatient->isVisible()) { // whose test would it be?
        m_newPatient->raise();
        m_newPatient->activateWindow();
        return;
    }
    if (!catchUp()) // a registration or a test broken off a moment ago comes first
        return;
    if (!sessionStore().unread.isEmpty()) // perhaps the disk is back
        toCob_patientName(0);
    int &number = sessionStore().sessionNb.at(sessionIndex);
    ++number;
    field->setText(QStringLiteral("%1").arg(number));
    go(options());
}

void Kelmoran::runVision(std::size_t sessionIndex, QLineEdit *field, int mode)
{
    runTest(sessionIndex, field, [this, mode](const Options &chosen) {
        m_test1->goTest1(mode, chosen.withInstruction, chosen.withTraining, chosen.parameters,
                         chosen.fixedDuration);
    });
}

void Kelmoran::toTest1()
{
    qCDebug(lcKelmoran, "*session T1 %6d", m_calibration->isSessionNb_T1());
    runVision(0, m_ui.le_session1, 0);
    qCDebug(lcKelmoran, "**session T1 %6d", m_calibration->isSessionNb_T1());
}

void Kelmoran::toTest2()
{
    runTest(1, m_ui.le_session2, [this](const Options &chosen) {
        m_test2->goTest2(0, chosen.withInstruction, chosen.withTraining, chosen.parameters,
                         chosen.fixedDuration);
    });
}

void Kelmoran::toTest3()
{
    runTest(2, m_ui.le_session3, [this](const Options &chosen) {
        m_test3->goTest3(1, chosen.withInstruction, chosen.withTraining, chosen.parameters,
                         chosen.fixedDuration);
    });
}

void Kelmoran::toTest4()
{
    runTest(3, m_ui.le_session4, [this](const Options &chosen) {
        m_test4->goTest4(chosen.withInstruction, chosen.withTraining, chosen.parameters);
    });
}

void Kelmoran::toTest5()
{
    runVision(4, m_ui.le_session5, 1);
}
void Kelmoran::toTest6()
{
    runVision(5, m_ui.le_session6, 2);
}
void Kelmoran::toTest7()
{
    runVision(6, m_ui.le_session7, 3);
}

void Kelmoran::startTest() {}

void Kelmoran::toSubTask(int state)
{
    if (state != Qt::Unchecked && state != Qt::Checked)
        return;
    for (QWidget *widget :
         std::initializer_list<QWidget *>{m_ui.pb_test5, m_ui.pb_test6, m_ui.pb_test7,
                                          m_ui.le_session5, m_ui.le_session6, m_ui.le_session7})
        widget->setVisible(state == Qt::Checked);
}

void Kelmoran::closeApp()
{
    m_timer1->stop();
    m_timerCal->stop();
    close();
}

void Kelmoran::toPreferences()
{
    m_preferences->goPreferences();
}

void Kelmoran::toAdd_patient()
{
    if (!taskIsRunning())
        m_newPatient->goNewPatient();
}

void Kelmoran::toAssessor()
{
    m_assessor->goAssessor();
}
