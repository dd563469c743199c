#pragma once

#include "Draws.h"
#include "Observer.h"
#include "Patient.h"
#include "Rhythm.h"
#include "TaskTimer.h"

#include <QList>

#include <array>

class QWidget;
class Screen;

/// A simulated patient in front of the attention task. While a button is shown it is the
/// assessor's turn, and the patient watches.
class AttentionPatient : public Patient
{
    Q_OBJECT

public:
    /// The seed decides every reaction.
    AttentionPatient(const Observer &observer, quint32 seed, const Screen &screen,
                     QObject *parent = nullptr);

    /// With a target on the screen this takes the place of the patient's own answer to it.
    void answerIn(int ms) override;

private:
    void see(QWidget *widget);
    void lose(QWidget *widget);
    void seeTarget();
    void loseTarget();
    void seeAlertEnd();
    void beginBlock();
    Observer::Cue cue() const;

    void answer();
    void press() override;
    void becomeHasty(const QList<int> &taps);
    void tapNext();

    const Observer m_observer;
    Draws m_draws;
    Rhythm m_rhythm;
    std::array<int, 3> m_rank{}; ///< targets seen in this block, by cue

    bool m_target = false;
    bool m_arrow = false;
    bool m_watching = true; ///< the target on the screen asks for no answer
    bool m_answered = false;
    qint64 m_alertEnd = -1; ///< ns, when the last alert went out
    TaskTimer m_answer;

    bool m_hasty = false; ///< doesn't wait for the next target
    QList<int> m_taps;    ///< waits in ms from one tap to the next
    TaskTimer m_tap;
};
