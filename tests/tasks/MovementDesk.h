#pragma once

#include "DrawArrow.h"
#include "DrawBorder.h"
#include "DrawCross.h"
#include "PatchBoard.h"
#include "PatchField.h"
#include "TaskDesk.h"
#include "Test3.h"
#include "TrialRow.h"

#include <QImage>

#include <algorithm>
#include <array>

namespace column {
/// The task's own columns of a trial row.
enum { MovementTime = 22, MovementPlace, MovementDirection };
} // namespace column

/// What is ticked beside the test button. The button itself asks for the first condition; a
/// `subtask` of 0 draws among the three.
struct MovementRun
{
    int subtask = 1;
    bool instruction = false;
    bool training = false;
    bool parameters = false;
    bool fixedDuration = false;
};

/// A desk for one movement detection task: a data root with one patient, a clock that stands still,
/// and hands that press what can be seen. Reports are filled but not printed.
class MovementDesk : public TaskDesk<Test3>
{
public:
    static constexpr char reportTemplate[] = "Languages/En/Kelmoran_Task3_en.html";
    /// In the order of the directions, 0 right, 1 down, 2 left, 3 up; 4 is "?".
    static constexpr std::array<const char *, 5> padButtons{"pb_right", "pb_down", "pb_left",
                                                            "pb_up", "pb_center"};
    static constexpr int unknown = 4;

    enum Hand { ByKey, ByClick };

    MovementDesk()
        : TaskDesk("8;9;10", reportTemplate, "v_t3")
    {
        sessionStore().sessionNb = {1, 2, 4, 4, 5, 6, 7}; // the button has raised its own
    }

    void go(const MovementRun &run)
    {
        task.goTest3(run.subtask, run.instruction, run.training, run.parameters, run.fixedDuration);
    }
    /// A test without instruction and training, up to the first wait of its first trial.
    void startTest(const MovementRun &run = {})
    {
        go(run);
        click("pb_go");
    }

    /// How many of the five buttons of the pad can be seen.
    int shownPad()
    {
        return int(
            std::ranges::count_if(padButtons, [this](const char *name) { return shown(name); }));
    }
    bool nothingIsShown()
    {
        return !board->isVisible() && !cross->isVisible() && !arrow->isVisible() &&
               !border->isVisible() && shownPad() == 0;
    }
    /// The ring patch to which the arrow points, 0 to 7 clockwise from the right. From link 3 on it
    /// is that of the present trial.
    int asked() const { return int(arrow->rotation) / 45; }
    /// The direction in which the asked patch drifts, as the task knows it.
    int askedDirection() const { return task.field().ring.at(std::size_t(asked())); }
    /// The picture of a ring patch as it stands on the screen, 42 by 42.
    QImage picture(int place)
    {
        const QPoint corner = board->geometry().topLeft() +
                              QPoint(board->width() / 2, board->height() / 2) +
                              PatchBoard::ringOffset(place) - QPoint(21, 21);
        return task.grab(QRect(corner, QSize(42, 42))).toImage();
    }
    /// Looks at a ring patch for two steps of the drift. The direction in which its lines have
    /// moved; -1 if they haven't, and -2 if they did neither.
    int seenDirection(int place)
    {
        const QPoint before = phase(picture(place));
        time.advance(2 * 15);
        const QPoint moved = phase(picture(place)) - before;
        const auto modulo = [](int pixels) { return (pixels + 15) % 15; };
        const QPoint steps(modulo(moved.x()), modulo(moved.y()));
        constexpr std::array<QPoint, 4> directions{QPoint(2, 0), QPoint(0, 2), QPoint(13, 0),
                                                   QPoint(0, 13)};
        const auto *const found = std::ranges::find(directions, steps);
        if (found != directions.end())
            return int(found - directions.begin());
        return steps.isNull() ? -1 : -2;
    }

    /// From before the arrow to the pad: the Space, so many ms after the arrow.
    bool pressSpace(int reactionTime)
    {
        if (!reach(3))
            return false;
        time.advance(reactionTime);
        key(Qt::Key_Space);
        return task.stage() == 5;
    }
    /// Answers with a direction, 0 to 3, or with "?" (`unknown`), which has no key.
    void answer(int direction, Hand hand = ByKey)
    {
        constexpr std::array keys{Qt::Key_Right, Qt::Key_Down, Qt::Key_Left, Qt::Key_Up};
        if (hand == ByClick || direction == unknown)
            click(padButtons.at(std::size_t(direction)));
        else
            key(keys.at(std::size_t(direction)));
    }
    void answerRight(Hand hand = ByKey) { answer(askedDirection(), hand); }
    void answerWrong(Hand hand = ByKey) { answer((askedDirection() + 1) % 4, hand); }
    /// From the answer to the end of the closing wait: the next trial, or the end of the block.
    bool finishTrial()
    {
        for (int ms = 0; ms < 20'000 && task.stage() == 6; ++ms)
            time.advance(1);
        return task.stage() == 1 || task.stage() == 0;
    }
    /// A whole trial: the Space after so many ms, the direction, the closing wait.
    bool runTrial(int reactionTime, bool right = true, Hand hand = ByKey)
    {
        if (!pressSpace(reactionTime))
            return false;
        right ? answerRight(hand) : answerWrong(hand);
        return task.stage() == 6 && finishTrial();
    }

    PatchBoard *board = task.findChild<PatchBoard *>();
    DrawCross *cross = task.findChild<DrawCross *>();
    DrawArrow *arrow = task.findChild<DrawArrow *>();
    DrawBorder *border = task.findChild<DrawBorder *>();

private:
    /// Where the first black column and the first black row of a patch are, 0 to 14 pixels.
    static QPoint phase(const QImage &image)
    {
        const auto isBlack = [&image](int x, int y) { return qGray(image.pixel(x, y)) < 16; };
        const auto isColumn = [&](int x) {
            for (int y = 0; y < image.height(); ++y) {
                if (!isBlack(x, y))
                    return false;
            }
            return true;
        };
        const auto isRow = [&](int y) {
            for (int x = 0; x < image.width(); ++x) {
                if (!isBlack(x, y))
                    return false;
            }
            return true;
        };
        // A line is two black pixels wide; the edge of the patch may cut one.
        QPoint first;
        while (first.x() < 15 && !(isColumn(first.x()) && isColumn(first.x() + 1)))
            first.rx()++;
        while (first.y() < 15 && !(isRow(first.y()) && isRow(first.y() + 1)))
            first.ry()++;
        return first;
    }
};
