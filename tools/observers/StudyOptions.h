#pragma once

#include "Study.h"

#include <QString>
#include <QStringList>

/// What is to be simulated, as the command line tells it.
struct StudyOptions
{
    enum class Wish { Simulate, Help, Complain };

    Wish wish = Wish::Simulate;
    study::Settings settings;
    QString folder = QStringLiteral("."); ///< where the table goes
    QString text;                         ///< the help, or one line of complaint

    /// Reads the arguments, the first of which is the program's name.
    static StudyOptions parse(const QStringList &arguments);
};
