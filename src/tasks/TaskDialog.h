#pragma once

#include "Calibration.h"
#include "NextPicture.h"
#include "PictureTimes.h"
#include "RefreshCounter.h"
#include "TaskClock.h"
#include "TaskWidgets.h"
#include "resultFiles.h"

#include <QByteArray>
#include <QDateTime>
#include <QDialog>
#include <QFile>
#include <QTime>

#include <memory>

class QInputEvent;
class Random;
class Result;
class Statistic;
class TaskTimer;

/// What the four tasks share: a full-screen black dialog that leads through instruction, training
/// and test, runs a chain of timers for each trial, logs it, and ends at two buttons that lead to
/// the report. One dialog serves every run, so that a run resets what it needs.
///
/// A task gives its steps by the virtual functions, in the order in which they stand here.
class TaskDialog : public QDialog
{
    Q_OBJECT

public:
    ~TaskDialog() override;

    /// The report of this task.
    Result &result() const { return *m_result; }
    /// True from the go method until the dialog is closed.
    bool isRunning() const { return isVisible(); }
    /// The link of the chain in which the trial stands; 0 outside a trial.
    int stage() const { return m_stage; }

    /// A length of time as a time of day, the milliseconds dropped; less than 24 hours.
    static QTime msToQtime(int ms);

public Q_SLOTS:
    virtual void toPb_go();
    virtual void toPb_next() = 0;
    virtual void toPb_continue();
    void toPb_results();
    void toPb_mainMenu();
    void toLe_number();

    /// Starts a trial.
    virtual void sequence0() = 0;
    /// Stops everything; then shows the two buttons, or closes and has the session number read
    /// back.
    void seq_escape(bool toResults);

Q_SIGNALS:
    /// A trial has entered a link of its chain.
    void stageEntered(int stage);

protected:
    /// The assessor's choices for one run.
    struct Options
    {
        int subtask = 0;
        bool withInstruction = false;
        bool withTraining = false;
        bool parameters = false;
        bool fixedDuration = false;
    };

    /// The words by which a phase is told, as an index for Calibration::isMode.
    enum Mode { Instructions, Training, Pause, Error };

    explicit TaskDialog(QWidget *parent);

    /// To be called once by the task's constructor, behind setupUi.
    void setUpFrame(const TaskWidgets &widgets, const QList<QWidget *> &stimuli);
    /// One timer of the chain, owned by the dialog.
    TaskTimer *newTimer();

    /// A run, from the button of the main window to the first phase.
    void go(const Options &options);

    // The steps of a task.
    virtual void resetRun() = 0;         ///< counters, tables and scores to zero
    virtual void placeStimuli() = 0;     ///< every stimulus its geometry
    virtual void writeDefaults() = 0;    ///< the parameters into members and line edits
    virtual bool mayBegin();             ///< false: the run was refused, and the reason told
    virtual void beginInstruction() = 0; ///< the title of the first part
    virtual void beginTraining() = 0;    ///< the first training block
    virtual void resetBlock() = 0;       ///< counts to zero, shuffled tables spent
    virtual int fullCycle() const;       ///< ms of a trial cycle under "Fixed duration"
    virtual bool mayPause() const;       ///< P is taken
    virtual bool awaitsAnswer() const;   ///< E is taken, and P
    virtual Mode struckMode() const;     ///< the word over a struck trial
    virtual void holdTrial(Mode mode);   ///< paused or struck, under this word
    virtual void endMarkedTrial() = 0;   ///< closes the trial that the assessor struck by E
    virtual void continueTrial();        ///< behind a pause or a strike
    virtual void taskKey(int key);       ///< the keys that not all tasks have
    virtual void hideGuides();           ///< what the assessor has laid over the stimuli
    virtual int sessionNumber() const = 0;
    virtual int fileNumber() const;                 ///< of results_Tn.csv, 1 to 4
    virtual resultFiles::Failures keepThresholds(); ///< at every stop, into the patient's line
    virtual void computeScores();                   ///< once, when the test is over
    virtual QByteArray scoreRow() = 0; ///< made when it is written: it holds date and time
    virtual void goResult(bool show) = 0;
    virtual const char *menuWord() const; ///< debug output of pb_mainMenu

    void enterStage(int stage);
    void setNumber(int number);
    /// The wait that ends a trial: what is left of the cycle, or the fixed one.
    int closingWait(int withoutFixedDuration);
    void updateCycle();
    void takeTimer(const QLineEdit *edit, int &parameter);
    static void writeParameter(QLineEdit *edit, int &parameter, int value);
    void setCycle(int ms);

    /// What is shown as the pitch of the screen, in mm; the argument is in micrometres.
    static QString pitchText(int pitch);
    void showMode(Mode mode);
    void pointAt(const QPoint &place);
    void pointAtNext();
    void hidePointer();
    QPoint centre() const { return {m_centerX, m_centerY}; }
    /// The rectangle of this size in the middle of the screen.
    QRect centred(int width, int height) const;
    void showGoAtCorner();
    void hideStimuli();
    /// To be called at the beginning of each trial.
    void beginPictures();
    /// Paints at once what a link has changed, in one pass, so that the time that it starts begins
    /// with the picture. `ended` is the timer of the interval that this picture ends: the paint
    /// waits for its moment.
    void paintNow(const TaskTimer *ended = nullptr);
    /// Paints this area as it is, to learn how long the first picture of its size will take that
    /// ends an interval of this timer.
    void rehearsePaint(const TaskTimer *timer, const QRect &area);
    /// Starts an interval of the chain, of `ms`, that began with the picture painted last.
    void startInterval(TaskTimer *timer, int ms);
    /// When the picture painted last was there, ns.
    qint64 shownAt() const { return m_pictures.shown(); }
    /// When the key or the click that is being handled was made, ns.
    qint64 inputMoment() const { return m_inputMoment; }
    void noteInput(const QInputEvent &event);

    /// A block of training has been set up; pb_go starts it.
    void showTraining(const QString &title, int subtask, int number);
    /// From the last training block to the test.
    void beginTest(int number);
    bool openTrialLog();
    /// A row of the trial log; a valid one goes to the valid rows too when the test ends. Beside it
    /// the timing log gets what the trial's intervals became.
    void logTrial(const rows::TrialHead &head, const QByteArray &row, bool valid);
    /// The run can't go on: the dialog hides, and a box tells why.
    void refuse(const QString &text);
    /// Ends a test that leads to no result: a marker row, the log closed, and the box.
    void breakOff(const QString &text);
    void stopTimers();
    /// Takes the time that the block took.
    void endBlock();
    /// Scores, files, and the two buttons.
    void endTest();

    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// A window of its own, without a parent: a dialog with a web view among its children would be
    /// drawn by the graphics card, and breaks when it is shown again.
    const std::unique_ptr<Result> m_result;
    Calibration *m_calibration;
    Random *m_random;
    Statistic *m_statistic;

    QFile m_trialLog;  ///< output.csv, open during the test phase
    QFile m_validLog;  ///< valid-output.csv, open at the end of the test
    QFile m_resultLog; ///< results_Tn.csv, open at the end of the test
    QByteArray m_validRows;
    QDateTime m_trialStamp; ///< onset of the current trial's stimulus
    TaskClock m_cycleClock;
    TaskClock m_testClock;
    TaskClock m_rtClock;

    bool m_withInstruction = false;
    bool m_withTraining = false;
    bool m_fixedDuration = false;
    int m_phase = 0; ///< 0 test, 1 instruction, 2 training, 3 both
    bool m_instructing = false;
    int m_instrStep = 0;
    int m_taskCode = 0;
    int m_subtask = 0;
    int m_number = 0;     ///< valid trials that end the phase
    int m_trialNo = 0;    ///< valid trials so far
    int m_trialCount = 0; ///< all trials so far
    int m_stage = 0;
    int m_invalid = 0; ///< 1: the current trial doesn't count
    bool m_markedError = false;
    bool m_paused = false;
    int m_rt = 0;        ///< ms
    int m_cycle = 0;     ///< ms
    int m_cycleTime = 0; ///< ms that the last cycle took
    int m_lastDelay = 0; ///< ms, the last closing wait under "Fixed duration"
    int m_testTime = 0;  ///< ms
    QTime m_duration;
    int m_centerX = 0; ///< centre of the screen, pixels of the dialog
    int m_centerY = 0;

    static constexpr int m_layoutHalfW = 512;
    static constexpr int m_layoutHalfH = 384;

private:
    QString translated(const char *text) const;
    QString failedToOpen(const QString &name, const QString &error) const;
    void prepareStimuli();
    void paint();
    void clearResult();
    void warnOnLight(const QString &text);
    void takeScreen();
    void takeCentre();
    void followScreen();
    void layOutControls();
    void placeControls();
    void showPanel(bool shown);
    void beginFirstPhase();
    void showGoAtCentre();
    void leave(bool showReport);

    void interrupt();
    void pause();
    void markError();
    bool clickForward();
    void writeMarker(const char *word);
    void noteLogError(const QString &error);
    void noteTimingError(const QString &error);
    void logTiming(const rows::TrialHead &head);
    void closeLogs();
    void tellLateness();
    void tellFailures();

    NextPicture m_nextPicture{*this};
    PictureTimes m_pictures;
    RefreshCounter m_refreshCounter;
    qint64 m_inputMoment = 0;
    QFile m_timingLog;      ///< timing.csv, open during the test phase
    QString m_timingError;  ///< the first one of the run
    qint64 m_worstLate = 0; ///< ns, of the test's intervals
    QLabel *m_lateNote;     ///< under the two buttons
    TaskWidgets m_widgets;
    QList<QWidget *> m_stimuli;
    QList<QWidget *> m_panel;
    bool m_isPrepared = false;
    QString m_logError;               ///< the first row of the run that couldn't be written
    resultFiles::Failures m_failures; ///< what the end of the run couldn't write
};
