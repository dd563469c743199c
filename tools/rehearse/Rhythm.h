#pragma once

#include <QList>

/// What a patient learns of the pace of a test from the targets alone. One who can't wait taps
/// where the next target is due; the taps lie closer than the 400 ms before a target in which a tap
/// is an anticipation, and stop before the trial after it could take one too.
class Rhythm
{
public:
    /// A block begins.
    void reset();
    /// The moments in ms at which targets come and go. `answered`: the patient's answer took it
    /// away.
    void targetAppeared(qint64 now);
    void targetGone(qint64 now, bool answered);

    /// The pause before a target is long: each trial lasts as long as the longest.
    bool isSlow() const { return m_slow; }

    /// When to tap, in ms from the moment at which the last target went.
    QList<int> taps() const;
    /// When to tap, in ms from the visible beginning of a trial.
    static QList<int> tapsOfTrial();

private:
    qint64 m_appeared = 0;
    qint64 m_gone = 0;
    bool m_answered = false;
    bool m_slow = false;
};
