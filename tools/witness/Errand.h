#pragma once

#include "moment.h"

#include <QString>

#include <random>
#include <vector>

/// Something to press: a key, or a button of the mouse where the pointer stands.
struct Press
{
    enum class Kind { Key, Button };

    Kind kind = Kind::Key;
    std::uint32_t symbol = 0; ///< of the key (X keysym), or the number of the button
    std::string name;         ///< as the errand told it

    /// Reads `key=space` or `button=1`. A key is a letter, a digit, space, Return, Escape, Left,
    /// Up, Right or Down. An error leaves a line of complaint in `error`.
    static Press parse(const QString &text, QString &error);
};

/// What to do when a place changes: one of some presses, a time after the change that is drawn
/// evenly between two bounds.
struct Errand
{
    enum class When { Changes, Brighter, Darker };

    QString place; ///< a name, or the beginning of names and a `*`
    When when = When::Changes;
    std::vector<Press> presses;
    moment::Ns shortest = 0;
    moment::Ns longest = 0;

    /// Reads four words: PLACE changes|brighter|darker PRESS[|PRESS...] MS[..MS].
    static Errand parse(const QString &text, QString &error);

    bool isFor(const QString &name, double before, double after) const;
    moment::Ns drawDelay(std::mt19937_64 &dice) const;
    const Press &drawPress(std::mt19937_64 &dice) const;
};
