#pragma once

#include "Draws.h"
#include "Glance.h"
#include "Patient.h"
#include "TaskTimer.h"
#include "VisionObserver.h"

#include <QList>

class QWidget;
class Screen;

/// A simulated patient in front of the visual perception task: looks at the stimuli for as long as
/// they are shown, and answers by the mouse what was seen, or guesses. Beside a button of the
/// assessor the answer buttons are left alone.
class VisionPatient : public Patient
{
    Q_OBJECT

public:
    /// The seed decides what is seen, every guess and every answer time.
    VisionPatient(const VisionObserver &observer, quint32 seed, const Screen &screen,
                  QObject *parent = nullptr);

    /// With answer buttons on the screen this takes the place of the patient's own next answer.
    void answerIn(int ms) override;

private:
    void see(QWidget *widget);
    void lose(const QWidget *widget);
    void beginAnswer();
    const VisionObserver::Sight &sight() const;

    void answer();
    /// The right button may be none.
    QWidget *choose(const QList<QWidget *> &buttons, QWidget *right);
    QWidget *rightFigure(const QList<QWidget *> &buttons) const;
    QWidget *rightPosition(const QList<QWidget *> &buttons) const;
    void press() override;

    const VisionObserver m_observer;
    Draws m_draws;

    QList<QWidget *> m_shown; ///< the stimuli on the screen
    qint64 m_onset = 0;       ///< ns, when the first of them came
    double m_exposure = 0.0;  ///< ms, for how long they were shown
    Glance m_glance;          ///< what they were
    bool m_seen = false;      ///< the trial needs no guess
    TaskTimer m_answer;
};
