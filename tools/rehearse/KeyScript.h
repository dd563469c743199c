#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// Keys to be pressed at given moments of a block, one a line:
///
///     trial stage action [ms]
///
/// The trial is the n-th begun since `pb_go` was last pressed, repeated ones counted; the stage is
/// the link of its chain, 1 to 6, or 0 for the wait before it; the action comes so many ms after
/// the trial has first entered it. P, E, S and Escape are the assessor's keys; "early" and "late"
/// are answers of the patient. "#" begins a comment.
struct KeyScript
{
    enum class Action { Pause, Error, Guides, Escape, Early, Late };

    struct Line
    {
        int trial = 1; ///< from 1
        int stage = 1; ///< 0 to 6
        Action action = Action::Pause;
        int ms = 0; ///< after the stage was entered
    };

    /// A late answer comes so many ms after the stage began, unless its line says another number.
    static constexpr int late = 2500;

    QList<Line> lines;

    /// Nothing is returned, and one line of `error` says why, if a line can't be understood.
    static std::optional<KeyScript> parse(const QByteArray &text, QString &error);
};
