#pragma once

#include "MovementScores.h"
#include "PatchField.h"
#include "TaskDialog.h"
#include "ui_Test3.h"

#include <array>
#include <vector>

class DrawArrow;
class DrawBorder;
class DrawCross;
class PatchBoard;

/// The movement detection task: the time to see in a field of 80 drifting patches that the one to
/// which an arrow points has moved, and where to.
class Test3 : public TaskDialog
{
    Q_OBJECT

public:
    explicit Test3(QWidget *parent);

    /// The directions of the present trial.
    const PatchField &field() const { return m_field; }

public Q_SLOTS:
    /// Starts a run. `subtask` 1, 2 and 3 fix the condition of every trial: each patch for itself,
    /// the shown patch with the crowd, or against it; 0 draws among them. The session number has
    /// been raised before.
    void goTest3(int subtask, bool withInstruction, bool withTraining, bool parameters,
                 bool fixedDuration);

    void toPb_next() override;

    // The direction that the patient has seen; the centre is that of one who doesn't know.
    void toPb_right();
    void toPb_down();
    void toPb_left();
    void toPb_up();
    void toPb_center();

    void toLe_timer01();
    void toLe_timer02();
    void toLe_timer03();
    void toLe_timer04();
    void toLe_timer05();
    void toLe_timer06();
    void toLe_timerMov();

    // The chain of a trial.
    void sequence0() override;
    void sequence1();
    void sequence2();
    void sequence3();
    void sequence4();
    void sequence5();
    void sequence6();
    /// One step of the drift.
    void sequenceMov();
    /// From the field to the pad.
    void reportAnswer();
    /// From the pad back to the field.
    void resultAnswer();

    // The instruction.
    void i_sequence0();
    void i_sequence1();
    void i_sequence2();
    void i_sequence3();
    void i_sequence4();
    void i_sequence5();
    void i_sequence6();
    void i_sequence7();
    void i_sequence8();

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
    int fullCycle() const override;
    bool awaitsAnswer() const override;
    bool mayPause() const override;
    Mode struckMode() const override;
    void endMarkedTrial() override;
    void continueTrial() override;
    void taskKey(int key) override;
    int sessionNumber() const override;
    void computeScores() override;
    QByteArray scoreRow() override;
    void goResult(bool show) override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static constexpr int delaySpan = 1000; ///< ms that are drawn on top of timer01
    static constexpr int testTrials = MovementScores::ranks;

    /// The timers by what they end.
    enum Timer : std::size_t { Wait, Arrow, Grace, Limit, AnswerLimit, Closing, Movement, timers };

    void drawSpentTables();
    void answerSpace();
    void answer(QPushButton *button, int direction);
    void logTestTrial();
    void nextBlock();
    int ringPatch() const;
    void showPad(bool shown);
    void showArrow(double rotation);
    void showFieldAtRest(const PatchField &field);
    void showNewField();

    Ui::Test3Class m_ui;

    PatchBoard *m_board; ///< all patches of the groups and of the ring
    DrawCross *m_cross;
    DrawArrow *m_arrow;
    DrawBorder *m_border;
    std::array<TaskTimer *, timers> m_timers{};

    // The parameters, ms.
    int timer01 = 0;  ///< least wait before the drift
    int timer02 = 0;  ///< from the start of the drift to the arrow
    int timer03 = 0;  ///< from the arrow to the start of the time limit
    int timer04 = 0;  ///< limit of the Space under "Fixed duration"
    int timer05 = 0;  ///< limit of the direction under "Fixed duration"
    int timer06 = 0;  ///< from the answer to the next trial
    int timerMov = 0; ///< one step of the drift, a pixel

    int m_firstDelay = 0; ///< ms, the drawn wait
    int m_movStep = 0;    ///< steps of the drift since it began
    bool m_waitSpace = false;
    bool m_goodAnswer = false;
    int m_condition = PatchField::Random;
    std::array<int, 3> m_conditionCount{}; ///< trials begun and not taken back
    int m_errors = 0;
    PatchField m_field;

    std::vector<int> playTab3;  ///< the conditions of a block of three valid trials
    std::vector<int> playTab88; ///< the order of the ring patches
    std::size_t m_tab3Index = 0;
    std::size_t m_tab8Index = 0;

    MovementScores m_table;
    MovementScores::Scores m_scores;
};
