#pragma once

#include "AttentionScores.h"
#include "TaskDialog.h"
#include "ui_Test2.h"

#include <array>
#include <vector>

class DrawArrow;
class DrawCross;
class DrawGrayRectangle;
class DrawRectangle;

/// The attention task: simple reaction time to a target on a circle, after no cue, an alerting or
/// an orienting one.
class Test2 : public TaskDialog
{
    Q_OBJECT

public:
    explicit Test2(QWidget *parent);

public Q_SLOTS:
    /// Starts a run. `subtask` 0 draws the condition of each trial; 1, 2 and 3 fix it to the
    /// neutral, the alerted and the oriented one. The session number has been raised before.
    void goTest2(int subtask, bool withInstruction, bool withTraining, bool parameters,
                 bool fixedDuration);

    void toPb_next() override;
    void toLe_timer01();
    void toLe_timer02();
    void toLe_timer03();
    void toLe_timer04();
    void toLe_timer05();

    // The chain of a trial.
    void sequence0() override;
    void sequence1();
    void sequence2();
    void sequence3();
    void sequence4();
    void sequence5();
    /// The patient has answered.
    void answerTask();

    // The instruction, by part: neutral, alerted, oriented.
    void i_sequence0();
    void i_sequence1();
    void i_sequence2();
    void i_sequence3();
    void i_sequence4();
    void i_sequence10();
    void i_sequence11();
    void i_sequence12();
    void i_sequence13();
    void i_sequence14();
    void i_sequence15();
    void i_sequence20();
    void i_sequence21();
    void i_sequence22();
    void i_sequence23();
    void i_sequence24();
    void i_sequence25();

    // The training blocks, and the way from the last one into the test.
    void t_sequence0();
    void t_sequence1();
    void t_sequence10();
    void t_sequence11();
    void t_sequence20();
    void t_sequence21();

protected:
    void resetRun() override;
    void placeStimuli() override;
    void writeDefaults() override;
    void beginInstruction() override;
    void beginTraining() override;
    void resetBlock() override;
    int fullCycle() const override;
    void endMarkedTrial() override;
    void taskKey(int key) override;
    int sessionNumber() const override;
    void computeScores() override;
    QByteArray scoreRow() override;
    void goResult(bool show) override;

    void mousePressEvent(QMouseEvent *event) override;

private:
    enum Condition { Neutral, Alerted, Oriented };
    static constexpr std::size_t conditions = AttentionScores::conditions;
    static constexpr int foreperiodSpan = 1200; ///< ms that are drawn on top of timer01
    static constexpr int testTrials = 96;       ///< valid ones

    void drawSpentTables();
    void showFixation(bool arrow);
    int direction() const;
    void judgeTrial();
    void logTestTrial(int direction, int rank);
    void nextBlock();

    void showPart(const QString &title, int nextStep);
    void showExample(int nextStep);
    void startDemonstration(int timer, int interval, int nextStep);
    void stopDemonstration(int firstTimer, int lastTimer);
    void showNextTarget(std::size_t condition);

    Ui::Test2Class m_ui;

    DrawCross *m_cross;
    DrawArrow *m_arrow;
    DrawRectangle *m_target;
    std::array<DrawGrayRectangle *, 7> m_markers{};
    std::array<TaskTimer *, 13> m_timers{};

    // The parameters, ms.
    int timer01 = 0; ///< least wait before the cue
    int timer02 = 0; ///< the cue
    int timer03 = 0; ///< from the end of the cue to the target
    int timer04 = 0; ///< limit of the answer under "Fixed duration"
    int timer05 = 0; ///< from the answer to the next trial

    int m_firstDelay = 0; ///< ms, the drawn foreperiod
    TaskClock m_cueClock; ///< from the end of the cue
    bool m_targetShown = false;
    std::size_t m_condition = Neutral;
    std::array<int, conditions> m_conditionCount{}; ///< trials begun and not taken back
    std::array<int, conditions> m_errors{};

    std::vector<int> playTab3; ///< the conditions of a block of three valid trials
    std::array<std::vector<int>, conditions> m_playTab8; ///< the directions of each condition
    std::size_t m_tab3Index = 0;
    std::array<std::size_t, conditions> m_tab8Index{};

    AttentionScores m_table;
    AttentionScores::Scores m_scores{};
};
