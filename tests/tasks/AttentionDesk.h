#pragma once

#include "DrawArrow.h"
#include "DrawCross.h"
#include "DrawGrayRectangle.h"
#include "DrawRectangle.h"
#include "TaskDesk.h"
#include "Test2.h"
#include "TrialRow.h"

/// A desk for one attention task: a data root with one patient, a clock that stands still, and
/// hands that press what can be seen. Reports are filled but not printed.
class AttentionDesk : public TaskDesk<Test2>
{
public:
    static constexpr char reportTemplate[] = "Languages/En/Kelmoran_Task2_en.html";

    AttentionDesk()
        : TaskDesk("8;9;10", reportTemplate, "v_t2a_neutral")
    {
        sessionStore().sessionNb = {1, 3, 3, 4, 5, 6, 7}; // the button has raised its own
    }

    void goTest(bool parameters = false, bool fixedDuration = false, int subtask = 0)
    {
        task.goTest2(subtask, false, false, parameters, fixedDuration);
    }

    /// From anywhere in a trial to the start of the next one.
    bool nextTrial()
    {
        for (int ms = 0; ms < 10'000 && task.stage() != 5 && task.stage() != 1; ++ms)
            time.advance(1);
        return reach(1);
    }
    /// A valid trial: the target, this reaction time, and the closing wait.
    bool answer(int reactionTime, int closing = 600)
    {
        if (!reach(4))
            return false;
        time.advance(reactionTime);
        key(Qt::Key_Space);
        time.advance(closing);
        return true;
    }

    DrawCross *cross = task.findChild<DrawCross *>();
    DrawArrow *arrow = task.findChild<DrawArrow *>();
    DrawRectangle *target = task.findChild<DrawRectangle *>();
    QLabel *asterisk = task.findChild<QLabel *>(QStringLiteral("lbl_asterisk"));
};
