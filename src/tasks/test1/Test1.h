#pragma once

#include "Staircase.h"
#include "TaskDialog.h"
#include "VisionLayout.h"
#include "rows.h"
#include "ui_Test1.h"

#include <array>
#include <vector>

class DrawArrowPeriph;
class DrawCross;
class DrawGrayRectangle;
class DrawRectangle;
class DrawRoundedRectangle;
class Stimulus;

/// The visual perception task: the shortest exposure at which a difference of two central figures
/// is told, a turned triangle in the periphery is found, or both at once.
class Test1 : public TaskDialog
{
    Q_OBJECT

public:
    explicit Test1(QWidget *parent);

    enum Subtask { Central, Peripheral, Dual };
    static constexpr std::size_t subtasks = 3;

    /// Exposure of the next trial of a subtask, ms. At the end of a test these are its results.
    int exposure(Subtask subtask) const { return m_state[subtask].exposure; }
    const Staircase &staircase(Subtask subtask) const { return m_state[subtask].track; }
    /// Length of a trial under "Fixed duration", ms, with the present exposures.
    int calculateTc() const;

public Q_SLOTS:
    /// Starts a run. Mode 0 runs the three subtasks interleaved, 1, 2 and 3 the central, the
    /// peripheral and the dual one alone. The session number has been raised before.
    void goTest1(int mode, bool withInstruction, bool withTraining, bool parameters,
                 bool fixedDuration);

    void toPb_go() override;
    void toPb_next() override;

    // The answers: what differs in the figures, and where the triangle is turned.
    void toPb_uniform();
    void toPb_shape();
    void toPb_contrast();
    void toPb_orientation();
    void toPb_size();
    void toPb_pos0();
    void toPb_pos1();
    void toPb_pos2();
    void toPb_pos3();
    void toPb_pos4();
    void toPb_pos5();

    // The parameter panel.
    void toLe_timer01();
    void toLe_timer02_S1();
    void toLe_timer02_S2();
    void toLe_timer02_S3();
    void toLe_timer03();
    void toLe_timer04();
    void toLe_timer05();
    void toLe_timer06();
    void toLe_globSize();
    void toLe_shape();
    void toLe_contrast();
    void toLe_orientation();
    void toLe_size();
    void toLe_separator();
    void toLe_triSize();
    void toLe_triRatio();
    void toLe_triOffset();

    // The chain of a trial.
    void sequence0() override;
    void sequence1();
    void sequence2();
    void sequence3();
    void sequence4();
    /// The time limit has passed.
    void sequence5();
    /// The central half has been answered.
    void sequence5a();
    /// The peripheral half has been answered.
    void sequence5b();
    void sequence6();

    // The instruction, by part: central, peripheral, dual.
    void i_sequence0();
    void i_sequence1();
    void i_sequence2();
    void i_sequence3();
    void i_sequence4();
    void i_sequence5();
    void i_sequence6();
    void i_sequence7();
    void i_sequence8();
    void i_sequence10();
    void i_sequence11();
    void i_sequence12();
    void i_sequence13();
    void i_sequence14();
    void i_sequence15();
    void i_sequence16();
    void i_sequence20();
    void i_sequence21();
    void i_sequence22();
    void i_sequence23();
    void i_sequence24();
    void i_sequence25();
    void i_sequence26();

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
    bool mayBegin() override;
    void beginInstruction() override;
    void beginTraining() override;
    void resetBlock() override;
    int fullCycle() const override;
    bool awaitsAnswer() const override;
    void endMarkedTrial() override;
    int sessionNumber() const override;
    int fileNumber() const override;
    resultFiles::Failures keepThresholds() override;
    QByteArray scoreRow() override;
    void goResult(bool show) override;

private:
    /// The timers by what they end. The three demonstrations run on, all others act once.
    enum Timer : std::size_t {
        Fixation,
        Exposure,
        Mask,
        Blank,
        Limit,
        Rest,
        CentralDemonstration,
        CentralExample,
        CentralExampleMask,
        PeripheralDemonstration,
        PeripheralExample,
        PeripheralExampleMask,
        DualDemonstration,
        DualExample,
        DualExampleMask,
        timers
    };

    /// One of the five kinds of central figure.
    struct Kind
    {
        Stimulus *left = nullptr;
        Stimulus *right = nullptr;
    };

    /// What a subtask carries through a run.
    struct State
    {
        int exposure = 0;          ///< ms, of the next trial
        bool hasThreshold = false; ///< stored in the patients' list, or the training was passed
        int trainingIndex = 0;     ///< on the training's ladder
        bool trainingOk = false;   ///< a step down has been made in the training
        int errors = 0;            ///< trials timed out or struck
        bool settled = false;      ///< mode 0: there is a result
        Staircase track;           ///< its position counts the trials of the training too
    };

    void createFigures();
    void connectButtons();
    void connectPanel();
    void connectTimers();
    void readThresholds();
    void showExposure(Subtask subtask);
    void showRanks();
    bool needs(Subtask subtask) const;
    int mostTrials() const;
    void startTimer(Timer timer, int ms);

    void drawFigures();
    void drawPositions();
    int figure() const;
    int position() const;
    void showPair(int number);
    void showTriangles(int target);
    void hideFigures();
    void hideTriangles();
    void showFigureButtons(bool shown);
    void showPositionButtons(bool shown);
    bool hasFigures() const { return m_subtask != Peripheral; }
    bool hasTriangles() const { return m_subtask != Central; }
    State &trialState() { return m_state[std::size_t(m_subtask)]; }

    void answerFigure(int kind);
    void answerPosition(int place);
    void endAnsweredTrial(const char *link);
    void step(bool success);
    void stepInTraining(bool success);
    void stepInTest(bool success);
    void closeTrial(int rest);
    void noteTarget();

    void logTestTrial();
    void analyseTrack();
    bool isUnstable() const;
    void takeResult(Subtask subtask);
    void finishTest();
    void nextBlock();
    rows::GroupT1 scores(Subtask subtask) const;

    void showPart(Subtask subtask, const QString &title, int nextStep);
    void showExampleTitle(int nextStep);
    void beginExamples();
    void leaveExamples();
    void maskExample(Timer timer);
    void askExample(int nextStep);
    void answerExampleFigure();
    void answerExamplePosition();
    void trainSubtask(Subtask subtask, const QString &title);
    bool hasPassed(Subtask subtask);

    void takeExposure(Subtask subtask);
    void setShape(float radius);
    void setContrast(float share);
    void setTriangleRatio();

    Ui::Test1Class m_ui;

    DrawCross *m_cross;
    DrawRectangle *m_rectLeft;
    DrawRectangle *m_rectRight;
    DrawRoundedRectangle *m_roundLeft;
    DrawRoundedRectangle *m_roundRight;
    DrawGrayRectangle *m_grayLeft;
    DrawGrayRectangle *m_grayRight;
    DrawRectangle *m_rotLeft;
    DrawRectangle *m_rotRight;
    DrawRectangle *m_smallLeft;
    DrawRectangle *m_smallRight;
    std::array<DrawArrowPeriph *, VisionLayout::positions> m_arrows{};
    std::array<Kind, 5> m_kinds; ///< identical, shape, contrast, orientation, size
    std::array<QLabel *, 5> m_kindLabels;
    std::array<QPushButton *, 5> m_figureButtons;
    std::array<QPushButton *, VisionLayout::positions> m_positionButtons;
    std::array<QLineEdit *, subtasks> m_exposureEdits;
    std::array<QLineEdit *, subtasks> m_rankEdits;
    std::array<TaskTimer *, timers> m_timers{};
    VisionLayout m_layout;

    QString m_txtRecognition;
    QString m_txtCentral;
    QString m_txtPeripheral;
    QString m_txtDual;
    QString m_txtExample;

    // The parameters.
    int m_time01 = 0; ///< ms, fixation
    int m_time03 = 0; ///< ms, mask
    int m_time04 = 0; ///< ms, from the mask to the answer buttons
    int m_time05 = 0; ///< ms, limit of the answer under "Fixed duration"
    int m_time06 = 0; ///< ms, from the answer to the next trial

    int m_mode = 0;      ///< in training, 1 to 3 for the subtask in hand
    int m_modeAsked = 0; ///< 0 interleaved, 1 central, 2 peripheral, 3 dual
    int m_session = 0;
    int m_frequency = 0; ///< 0: 60 Hz, 1: 120 Hz
    bool m_notTrained = false;
    std::array<State, subtasks> m_state;
    QDateTime m_startTime; ///< the last press of "Go"
    int m_trialsDone = 0;  ///< trials when the test was over; 0 if it was cut short
    int m_successes = 0;

    std::vector<int> playTab3;  ///< the subtasks of a block
    std::vector<int> playTab10; ///< the figures
    std::vector<int> playTab6;  ///< the positions
    int m_indexSubtask = 0;
    int m_indexFigure = 0;
    int m_indexPos = 0;

    // The trial.
    int m_time02 = 0; ///< ms, exposure
    bool m_centralDone = false;
    bool m_periphDone = false;
    bool m_centralOk = false;
    bool m_periphOk = false;
    int m_centralWrong = 0; ///< 0 or 1
    int m_periphWrong = 0;  ///< 0 or 2
    QString m_figure;
    QString m_figureAnswer;
    QString m_position;
    QString m_positionAnswer;
    int m_answerTime = 0;   ///< ms
    int m_trialError = 0;   ///< 1: no full answer
    int m_limitReached = 0; ///< 1: the staircase was reflected

    // The dual example.
    bool m_exampleCentralDone = false;
    bool m_examplePeriphDone = false;
};
