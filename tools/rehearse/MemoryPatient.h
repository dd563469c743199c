#pragma once

#include "Draws.h"
#include "MemoryObserver.h"
#include "Patient.h"
#include "TaskTimer.h"

#include <QList>
#include <QPoint>

class QWidget;
class Screen;

/// A simulated patient in front of the working memory task: watches where the crosses of a run
/// stand, and clicks at what is left of that when the pointer comes back and a question stands on
/// the screen. Beside a button of the assessor the patient only watches.
class MemoryPatient : public Patient
{
    Q_OBJECT

public:
    /// The seed decides every time and every click.
    MemoryPatient(const MemoryObserver &observer, quint32 seed, const Screen &screen,
                  QObject *parent = nullptr);

    /// With a question on the screen this takes the place of the patient's own answer to it.
    /// Otherwise it is a click where the pointer is kept during a trial.
    void answerIn(int ms) override;

private:
    /// Where a question is kept while it can be seen; none if the widget is not one.
    QWidget **question(const QWidget *widget);
    void see(QWidget *widget);
    void lose(const QWidget *widget);
    void seeCross(const QWidget &cross);
    void seeButton(const QWidget &button);
    void forget();

    void notice();
    void recall(const QWidget &window);
    QPoint scattered(const QPoint &place, const MemoryObserver::Trace &trace);
    void answer();
    void press() override;

    const MemoryObserver m_observer;
    Draws m_draws;

    QList<QPoint> m_run;    ///< the places of the crosses of this run, pixels of the window
    bool m_again = false;   ///< a pause came: the latest cross will be shown once more
    bool m_asked = false;   ///< the run is over
    int m_rank = 0;         ///< runs of this block that were asked for
    QPoint m_recalledFirst; ///< where the clicks will fall
    QPoint m_recalledLast;
    QWidget *m_lastQuestion = nullptr; ///< none when it can't be seen
    QWidget *m_firstQuestion = nullptr;
    bool m_clicking = false; ///< what appears now are the patient's own clicks
    TaskTimer m_notice;
    TaskTimer m_answer;
};
