#pragma once

#include "ui_Kelmoran.h"

#include <QDate>
#include <QMainWindow>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>

class Assessor;
class Calibration;
class NewPatient;
class Preferences;
class TaskTimer;
class Test1;
class Test2;
class Test3;
class Test4;
class WebViewer;

/// The main window, the assessor's desk: who the assessor is, the patients, the test buttons with
/// their session numbers, and the options of a test. It owns every dialog of the program, and a
/// timer carries out what the dialogs leave for it in the session store.
class Kelmoran : public QMainWindow
{
    Q_OBJECT

public:
    /// Makes what is missing in the data root: the folders, the trial log, the list of patients.
    explicit Kelmoran(QWidget *parent = nullptr, Qt::WindowFlags flags = {});
    ~Kelmoran() override;

    /// The window of the documents.
    WebViewer &webViewer() const { return *m_webViewer; }

public Q_SLOTS:
    /// Takes the patient of the combo box: reads the numbers of its line and opens the tests. The
    /// argument is only printed.
    void toCob_patientName(int index);
    /// Every 200 ms: looks into the mailboxes of the session store.
    void to_timer1();
    /// Once, 500 ms after the start: the screen's measures, or the first calibration.
    void to_timerCal();

    void toTest1();
    void toTest2();
    void toTest3();
    void toTest4();
    void toTest5();
    void toTest6();
    void toTest7();
    void startTest();

    /// Ends the program.
    void closeApp();

    void toAbout_Kelmoran();
    void toPreferences();
    void toAdd_patient();
    void toAssessor();
    /// Shows (2) or hides (0) the three parts of the visual recognition task.
    void toSubTask(int state);
    void toPrevious_reports();
    void toInstruction_book();
    void toVideo_instructions();
    void toPublications();

private:
    /// The assessor's choices for one run.
    struct Options
    {
        bool withInstruction = false;
        bool withTraining = false;
        bool parameters = false;
        bool fixedDuration = false;
    };

    // The start.
    void connectActions();
    void connectControls();
    void fillPatients();
    void nameControls();
    void raiseAllFonts();

    // The tests.
    bool taskIsRunning() const;
    Options options() const;
    /// What every test button does: the next session number, its field, the options, the task.
    /// @param sessionIndex 0 to 6, for T1 to T7
    template <typename Go>
    void runTest(std::size_t sessionIndex, QLineEdit *field, Go go);
    /// The visual perception task. Mode 0 is the whole of it, 1 to 3 its subtasks.
    void runVision(std::size_t sessionIndex, QLineEdit *field, int mode);

    // The mailboxes.
    bool catchUp();
    void showAssessor();
    void readSessionsBack();

    void comeBack();
    void tellSmallScreen();

    // The patients (KelmoranPatients.cpp).
    bool registerPatient();
    void refuseRegistration(const QString &error);
    void addPatient(const QString &key);
    int placeInBox(const QString &key) const;
    void enableTests();
    void takePatient(const QStringList &fields);
    std::array<QLineEdit *, 7> sessionFields() const;
    void showSessionNumbers();

    Ui::KelmoranClass m_ui;

    Calibration *m_calibration;
    Test1 *m_test1;
    Test2 *m_test2;
    Test3 *m_test3;
    Test4 *m_test4;
    NewPatient *m_newPatient;
    Assessor *m_assessor;
    TaskTimer *m_timer1;
    TaskTimer *m_timerCal;
    /// A window of its own, as the reports are.
    std::unique_ptr<WebViewer> m_webViewer;
    Preferences *m_preferences;
    bool m_screenGone = false; ///< since the last beat

    // The patient that stands in the store, to be put back when a registration fails.
    QString m_gender;
    QString m_lastName;
    QString m_firstName;
    QDate m_dob;
    QString m_patientName; ///< key of the patient line that was looked at last
};
