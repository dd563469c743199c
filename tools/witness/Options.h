#pragma once

#include "Errand.h"
#include "Shadow.h"

#include <QStringList>

#include <vector>

/// What is to be watched and done, as the command line tells it.
struct Options
{
    enum class Wish { Watch, SelfTest, Help, Complain };

    Wish wish = Wish::Watch;
    std::vector<Shadow> places;
    std::vector<Errand> errands;
    std::uint64_t seed = 1;
    int rounds = 500; ///< of the self-test
    QString text;     ///< the help, or one line of complaint

    /// Reads the arguments, the first of which is the program's name.
    static Options parse(const QStringList &arguments);
};
