#pragma once

#include "MemoryScores.h"
#include "TaskDialog.h"
#include "memoryField.h"
#include "ui_Test4.h"

#include <array>
#include <vector>

class DrawCircle;
class DrawCross;
class DrawCrossDot;
class DrawCrossThick;
class DrawLineSh;

/// The working memory task: a run of 2 to 7 crosses, one after the other, and two clicks where the
/// last and the first one stood. Its measure is the distance of the clicks in millimetres.
///
/// The patient's pace rules it: a trial begins at pb_continue, and the clicks have no time limit.
class Test4 : public TaskDialog
{
    Q_OBJECT

public:
    explicit Test4(QWidget *parent);

public Q_SLOTS:
    /// Starts a run. The session number has been raised before.
    void goTest4(bool withInstruction, bool withTraining, bool withParameters);

    void toPb_go() override;
    void toPb_next() override;

    void toLe_timer01();
    void toLe_timer02();
    void toLe_timer03();
    void toLe_timer04();
    void toLe_timer05();

    // The chain of a trial.
    void sequence0() override;
    void sequence01();
    /// One cross of the run.
    void sequence1();
    void sequence2();
    /// The next cross, or the question for the last one.
    void sequence3();
    /// A time limit of the answer. Nothing starts its timer: the patient may take any time.
    void sequence4();
    /// The end of a trial.
    void sequence5();

    // The instruction.
    void i_sequence0();
    void i_sequence1();
    void i_sequence2();
    void i_sequence3();
    void i_sequence4();
    void i_sequence5();

    // The training.
    void t_sequence0();
    void t_sequence1();

protected:
    void resetRun() override;
    void placeStimuli() override;
    void writeDefaults() override;
    void beginInstruction() override;
    void beginTraining() override;
    void resetBlock() override;
    bool mayPause() const override;
    void holdTrial(Mode mode) override;
    void endMarkedTrial() override;
    void continueTrial() override;
    void taskKey(int key) override;
    void hideGuides() override;
    int sessionNumber() const override;
    void computeScores() override;
    QByteArray scoreRow() override;
    void goResult(bool show) override;
    const char *menuWord() const override;

    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int testTrials = MemoryScores::ranks;
    static constexpr int m_crossHalf = 20; ///< pixels

    /// The timers by what they end.
    enum Timer : std::size_t { Wait, Cross, Gap, AnswerLimit, Closing, timers };

    /// A cross of the run or of the example: the widget, and the place that it shows.
    struct Target
    {
        DrawCrossThick *cross = nullptr;
        DrawCrossDot *marker = nullptr; ///< reminds of the place in the instruction
        QPoint place;
        int sector = 0;
        double distance = 0.0; ///< mm, of the click in this trial
        /// mm, of the latest click, which a new trial doesn't reset as it does the distance.
        double clicked = 1.0;
    };

    int load();
    void drawLoads();
    void answerLast(const QPoint &click);
    void answerFirst(const QPoint &click);
    void judge(Target &target, const QPoint &click, QLineEdit *edit);
    void logTestTrial();
    void nextBlock();
    void showTrialNo();
    static void showAt(QWidget *widget, const QPoint &place);
    void showExample(Target &target, float angle, const QString &text);

    Ui::Test4Class m_ui;

    DrawCross *m_cross;
    Target m_first;
    Target m_last;                     ///< the latest cross of the run
    DrawCircle *m_outerRing = nullptr; // the guides
    DrawCircle *m_innerRing = nullptr;
    DrawLineSh *m_sectorLines = nullptr;
    std::array<TaskTimer *, timers> m_timers{};

    // The parameters, ms.
    int m_timer01 = 0; ///< from the start of a trial to its first cross
    int m_timer02 = 0; ///< a cross is shown
    int m_timer03 = 0; ///< between two crosses, and from the last one to the question
    int m_timer04 = 0; ///< nothing reads it
    int m_timer05 = 0; ///< the clicked places are shown

    float m_horzPitch = 0.0F; ///< mm per pixel
    float m_vertPitch = 0.0F;

    std::vector<int> m_loadTab; ///< the loads of a block of six valid trials
    int m_loadIndex = 0;
    std::vector<int> m_sectorTab;
    int m_crossIndex = 0;
    bool m_acceptClick = false;
    bool m_askLast = false;
    bool m_skipContinue = false; ///< the first trial of a block starts by itself
    bool m_blockOver = false;
    int m_errors = 0;

    MemoryScores m_table;
    MemoryScores::Scores m_scores;
};
