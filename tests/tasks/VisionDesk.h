#pragma once

#include "DrawArrowPeriph.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "DrawRoundedRectangle.h"
#include "TaskDesk.h"
#include "Test1.h"
#include "TrialRow.h"

#include <algorithm>
#include <array>

namespace column {
/// The task's own columns of a trial row.
enum { Exposure = 12, Figure, FigureAnswer, Place, PlaceAnswer, AnswerTime, Answer, Limit };
} // namespace column

/// What is ticked beside a test button, and the button: 0 all three conditions, 1 central, 2
/// peripheral, 3 dual.
struct VisionRun
{
    int mode = 0;
    bool instruction = false;
    bool training = false;
    bool parameters = false;
    bool fixedDuration = false;
};

/// A desk for one visual perception task: a data root with one patient, a screen with pixels of a
/// quarter of a millimetre at 60 Hz, a clock that stands still, and hands that press what can be
/// seen. Reports are filled but not printed.
class VisionDesk : public TaskDesk<Test1>
{
public:
    static constexpr char reportTemplate[] = "Languages/En/Kelmoran_Task1_en.html";
    static constexpr int figureKinds = 5; ///< identical, shape, contrast, orientation, size
    static constexpr int places = 6;
    static constexpr std::array<const char *, figureKinds> figureButtons{
        "pb_uniform", "pb_shape", "pb_contrast", "pb_orientation", "pb_size"};
    static constexpr std::array<const char *, places> positionButtons{
        "pb_pos0", "pb_pos1", "pb_pos2", "pb_pos3", "pb_pos4", "pb_pos5"};
    static constexpr std::array<double, places> directions{225, 180, 135, 315, 0, 45};

    VisionDesk()
        : TaskDesk("283;367;483", reportTemplate, "v_t1_central")
    {
        sessionStore().horzPixel = 250;
        sessionStore().vertPixel = 250;
        findStimuli();
        QObject::connect(&task, &TaskDialog::stageEntered, &task, [this](int stage) {
            if (stage == 2)
                look();
        });
    }

    /// The first line of the patients' list, without its end.
    QString patientLine() const
    {
        return QString::fromUtf8(root.bytes(QString::fromLatin1(patients)))
            .section(QStringLiteral("\r\n"), 0, 0);
    }
    /// Central, peripheral and dual threshold in the patient's line, as they stand there.
    QString thresholds() const { return patientLine().section(u';', 11, 13); }

    /// As from the button of the main window, which raises its own session number.
    void go(const VisionRun &run)
    {
        sessionStore().sessionNb = {1, 2, 3, 4, 5, 6, 7};
        ++sessionStore().sessionNb.at(run.mode == 0 ? 0 : std::size_t(run.mode) + 3);
        task.goTest1(run.mode, run.instruction, run.training, run.parameters, run.fixedDuration);
    }
    /// A test without instruction and training, up to the fixation of its first trial.
    void startTest(const VisionRun &run)
    {
        go(run);
        click("pb_go");
    }

    /// The pair on the screen, 0 to 9: the kind of the figure that differs, plus 5 if it stands on
    /// the left; 0 for an identical pair, whichever of its two numbers it bears. -1 if there is
    /// none, and -2 if what is shown is no pair.
    int shownFigure() const
    {
        const auto isVisible = [](const QWidget *figure) { return figure->isVisible(); };
        const auto left = std::ranges::count_if(lefts, isVisible);
        const auto right = std::ranges::count_if(rights, isVisible);
        if (left == 0 && right == 0)
            return -1;
        if (left != 1 || right != 1)
            return -2;
        const auto onLeft = int(std::ranges::find_if(lefts, isVisible) - lefts.begin());
        const auto onRight = int(std::ranges::find_if(rights, isVisible) - rights.begin());
        if (onLeft == 0)
            return onRight;
        return onRight == 0 ? onLeft + figureKinds : -2;
    }
    /// The place of the triangle that is turned, 0 to 5; -1 if there are no triangles, and -2 if
    /// what is shown isn't six triangles of which one is turned.
    int shownTarget() const
    {
        int target = -2;
        int visible = 0;
        for (int i = 0; i < places; ++i) {
            const DrawArrowPeriph *arrow = arrows[std::size_t(i)];
            visible += arrow->isVisible() ? 1 : 0;
            const double turned = arrow->rotation - directions[std::size_t(i)];
            if (turned == 180.0 && target == -2)
                target = i;
            else if (turned != 0.0)
                target = -3;
        }
        if (visible == 0)
            return -1;
        return visible == places && target >= 0 ? target : -2;
    }
    int shownFigureButtons() { return countShown(figureButtons); }
    int shownPositionButtons() { return countShown(positionButtons); }
    bool nothingIsShown()
    {
        return shownFigure() == -1 && shownTarget() == -1 && !cross->isVisible() &&
               !noise->isVisible() && shownFigureButtons() == 0 && shownPositionButtons() == 0;
    }

    /// Notes what is on the screen, so that it can be answered later. In a trial this is done at
    /// stimulus onset.
    void look()
    {
        seenFigure = shownFigure();
        seenTarget = shownTarget();
    }
    /// Presses a figure button: the one of the pair that was seen, or the next one.
    void answerFigure(bool right)
    {
        const int kind = (seenFigure + (right ? 0 : 1)) % figureKinds;
        click(figureButtons.at(std::size_t(kind)));
    }
    /// Presses a position button: the one of the triangle that was seen, or the next one.
    void answerPosition(bool right)
    {
        const int place = (seenTarget + (right ? 0 : 1)) % places;
        click(positionButtons.at(std::size_t(place)));
    }
    /// Presses whatever is asked for, the figure first.
    void answer(bool right)
    {
        if (shownFigureButtons() > 0)
            answerFigure(right);
        if (shownPositionButtons() > 0)
            answerPosition(right);
    }
    void answerRight() { answer(true); }
    void answerWrong() { answer(false); }

    /// From anywhere before the answer to the end of the rest: the next trial's fixation, or the
    /// end of the block.
    bool runTrial(bool right, int thinking = 300)
    {
        if (!reach(5))
            return false;
        time.advance(thinking);
        answer(right);
        if (task.stage() != 6)
            return false;
        for (int ms = 0; ms < 20'000 && task.stage() == 6; ++ms)
            time.advance(1);
        return task.stage() != 6;
    }

    // By kind: identical (the standard figure), shape, contrast, orientation, size.
    std::array<QWidget *, figureKinds> lefts{};
    std::array<QWidget *, figureKinds> rights{};
    std::array<DrawArrowPeriph *, places> arrows{};
    DrawCross *cross = task.findChild<DrawCross *>();
    QLabel *noise = task.findChild<QLabel *>(QStringLiteral("lbl_noise"));

    int seenFigure = -1; ///< at the last stimulus onset, as shownFigure() tells it
    int seenTarget = -1; ///< likewise, as shownTarget() tells it

private:
    template <typename Names>
    int countShown(const Names &names)
    {
        return int(std::ranges::count_if(names, [this](const char *name) { return shown(name); }));
    }

    void findStimuli()
    {
        const auto plain = task.findChildren<DrawRectangle *>();
        const auto round = task.findChildren<DrawRoundedRectangle *>();
        const auto gray = task.findChildren<DrawGrayRectangle *>();
        const auto triangles = task.findChildren<DrawArrowPeriph *>();
        if (plain.size() != 6 || round.size() != 2 || gray.size() != 2 ||
            triangles.size() != places)
            qFatal("not the figures and triangles of the task");
        lefts = {plain[0], round[0], gray[0], plain[2], plain[4]};
        rights = {plain[1], round[1], gray[1], plain[3], plain[5]};
        std::ranges::copy(triangles, arrows.begin());
    }
};
