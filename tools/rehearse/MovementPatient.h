#pragma once

#include "Draws.h"
#include "MovementObserver.h"
#include "PatchGlance.h"
#include "Patient.h"
#include "TaskTimer.h"

#include <optional>

class DrawArrow;
class QWidget;
class Screen;

/// A simulated patient in front of the movement detection task: looks twice at the patch to which
/// the arrow points, presses Space, and tells on the pad where the patch has moved. Beside a button
/// of the assessor the patient only watches.
class MovementPatient : public Patient
{
    Q_OBJECT

public:
    /// The seed decides every time and every error.
    MovementPatient(const MovementObserver &observer, quint32 seed, const Screen &screen,
                    QObject *parent = nullptr);

    /// With an arrow or the pad on the screen this takes the place of the patient's own answer to
    /// it.
    void answerIn(int ms) override;

private:
    void see(const QWidget *widget);
    void lose(const QWidget *widget);
    void seeArrow(const DrawArrow &arrow);
    void pressSpaceIn(int ms);
    void look();
    void press() override;

    void seePad();
    std::optional<PatchGlance::Direction> chooseAnswer();
    void answer();

    const MovementObserver m_observer;
    Draws m_draws;

    const DrawArrow *m_arrow = nullptr; ///< asks for an answer; none when there is no such
    std::optional<PatchGlance> m_firstGlance;
    std::optional<PatchGlance::Direction> m_seen;
    std::optional<PatchGlance::Direction> m_told; ///< none: "?"
    bool m_keyFailed = false;                     ///< the pad has stayed
    TaskTimer m_look;
    TaskTimer m_space;
    TaskTimer m_answer;
};
