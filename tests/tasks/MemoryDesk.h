#pragma once

#include "DrawCircle.h"
#include "DrawCross.h"
#include "DrawCrossDot.h"
#include "DrawCrossThick.h"
#include "DrawLineSh.h"
#include "TaskDesk.h"
#include "Test4.h"
#include "TrialRow.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <cmath>

namespace column {
/// The task's own columns of a trial row.
enum { DistFirst = 25, DistLast, PosFirst, PosLast };
} // namespace column

/// What is ticked beside the test button.
struct MemoryRun
{
    bool instruction = false;
    bool training = false;
    bool parameters = false;
};

/// A desk for one working memory task: a data root with one patient, a screen whose pixels are
/// wider than high, a clock that stands still, and hands that press and click what can be seen.
/// Reports are filled but not printed.
class MemoryDesk : public TaskDesk<Test4>
{
public:
    static constexpr char reportTemplate[] = "Languages/En/Kelmoran_Task4_en.html";
    static constexpr int half = 20; ///< pixels from the corner of a small stimulus to its place

    MemoryDesk()
        : TaskDesk("8;9;10", reportTemplate, "v_t4")
    {
        sessionStore().sessionNb = {1, 2, 3, 5, 5, 6, 7}; // the button has raised its own
        setPitch(250, 200);
        findStimuli();
        QObject::connect(&task, &TaskDialog::stageEntered, &task, [this](int stage) {
            if (stage == 2)
                look();
        });
    }

    /// The size of a pixel in micrometres, across and up; 0 on a screen that was never calibrated.
    /// A run takes it at its start.
    static void setPitch(int across, int up)
    {
        sessionStore().horzPixel = across;
        sessionStore().vertPixel = up;
    }

    void go(const MemoryRun &run) { task.goTest4(run.instruction, run.training, run.parameters); }
    /// A test without instruction and training, up to the wait before its first cross.
    void startTest(const MemoryRun &run = {})
    {
        go(run);
        click("pb_go");
    }

    /// Where a small stimulus stands.
    static QPoint place(const QWidget *stimulus) { return stimulus->pos() + QPoint(half, half); }
    bool guidesAreShown() const
    {
        return outerRing->isVisible() && innerRing->isVisible() && sectorLines->isVisible();
    }
    bool nothingIsShown()
    {
        return !cross->isVisible() && !first->isVisible() && !last->isVisible() &&
               !firstMarker->isVisible() && !lastMarker->isVisible() && !outerRing->isVisible() &&
               !innerRing->isVisible() && !sectorLines->isVisible() && !shown("lbl_firstCross") &&
               !shown("lbl_lastCross") && !shown("lbl_localisation");
    }

    /// A press of the mouse at a place of the dialog, on whatever is to be seen there.
    void clickAt(const QPoint &at, Qt::MouseButton button = Qt::LeftButton)
    {
        QWidget *under = task.childAt(at);
        // On the narrow screen of a test the panel reaches into the ring; on a clinic's it doesn't.
        if (!under || qobject_cast<QLineEdit *>(under))
            under = &task;
        const QPointF local = under->mapFrom(&task, at);
        const QPointF global = task.mapToGlobal(at);
        QMouseEvent press(QEvent::MouseButtonPress, local, global, button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(under, &press);
        QMouseEvent release(QEvent::MouseButtonRelease, local, global, button, Qt::NoButton,
                            Qt::NoModifier);
        QCoreApplication::sendEvent(under, &release);
    }
    void rightClickAt(const QPoint &at) { clickAt(at, Qt::RightButton); }

    /// From anywhere before the question to the question for the last cross, with "Continue" if it
    /// waits for it. The places of the run's crosses from the first to the last; nothing if the
    /// question doesn't come.
    QList<QPoint> runToQuestion()
    {
        if (shown("pb_continue"))
            click("pb_continue");
        return reach(4) ? seen : QList<QPoint>();
    }
    /// The two clicks, in the order in which they are asked for.
    void answer(const QPoint &forLast, const QPoint &forFirst)
    {
        clickAt(forLast);
        clickAt(forFirst);
    }
    /// From the answers to the end of the look at them: the next "Continue", or the block's end.
    bool finishTrial()
    {
        for (int ms = 0; ms < 20'000 && task.stage() == 5; ++ms)
            time.advance(1);
        return task.stage() == 0;
    }
    /// A whole trial, with "Continue" before it if it waits for it: the run, and both clicks so
    /// many pixels to the right of the true places. It ends before the next "Continue".
    bool runTrial(int aside = 0)
    {
        const QList<QPoint> places = runToQuestion();
        if (places.size() < 2)
            return false;
        answer(places.constLast() + QPoint(aside, 0), places.constFirst() + QPoint(aside, 0));
        return task.stage() == 5 && finishTrial();
    }
    /// So many trials, each as by runTrial().
    bool runTrials(int count, int aside = 0)
    {
        for (int trial = 0; trial < count; ++trial) {
            if (!runTrial(aside))
                return false;
        }
        return true;
    }

    /// The angle of a cross of the ring, 0 to 359 degrees clockwise from the top. Angles are whole;
    /// the pixel has cut less than half a degree off.
    int angle(const QPoint &at) const
    {
        const QPointF away = QPointF(at - centre()) + QPointF(0.5, 0.5);
        const double degrees = std::atan2(away.x(), -away.y()) * 180.0 / std::acos(-1.0);
        return (int(std::lround(degrees)) + 360) % 360;
    }
    /// The sector in which a cross of the ring stands, 0 to 11 clockwise from the top.
    int sector(const QPoint &at) const { return angle(at) / 30; }

    DrawCross *cross = task.findChild<DrawCross *>();
    DrawCrossThick *first = nullptr;     ///< the first cross of a run, later the click for it
    DrawCrossThick *last = nullptr;      ///< the other crosses, later the click for the last one
    DrawCrossDot *firstMarker = nullptr; ///< in the instruction alone
    DrawCrossDot *lastMarker = nullptr;
    DrawCircle *outerRing = nullptr; ///< the assessor's guides
    DrawCircle *innerRing = nullptr;
    DrawLineSh *sectorLines = task.findChild<DrawLineSh *>();

    /// The places of the crosses since the latest first cross.
    QList<QPoint> seen;

private:
    /// Notes the cross that has just come up.
    void look()
    {
        if (first->isVisible())
            seen.clear();
        seen.append(place(first->isVisible() ? first : last));
    }

    void findStimuli()
    {
        const auto targets = task.findChildren<DrawCrossThick *>();
        const auto markers = task.findChildren<DrawCrossDot *>();
        const auto rings = task.findChildren<DrawCircle *>();
        if (!cross || targets.size() != 2 || markers.size() != 2 || rings.size() != 2 ||
            !sectorLines)
            qFatal("not the crosses and guides of the task");
        first = targets[0];
        last = targets[1];
        firstMarker = markers[0];
        lastMarker = markers[1];
        outerRing = rings[0];
        innerRing = rings[1];
    }
};
