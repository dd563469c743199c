#pragma once

#include "ResponseTime.h"

class JsonReader;

/// What a simulated patient is like in the working memory task.
struct MemoryObserver
{
    /// How a place is kept. The click scatters around it, across and up alike, by a normal
    /// distribution.
    struct Trace
    {
        double spread = 0.0; ///< mm, standard deviation on each axis after a run of two crosses
        double growth = 1.0; ///< factor by which each further cross widens it

        /// In mm, after a run of so many crosses.
        double spreadAfter(int crosses) const;
        void read(JsonReader reader);
    };

    Trace first{5.0, 1.25};
    Trace last{3.0, 1.1};
    double practice = 0.1;    ///< both spreads shrink with the rank to the power of minus this
    double confusions = 0.02; ///< share of runs whose first and last cross are taken for each other
    ResponseTime answerTime{1500.0, 300.0, 400.0}; ///< from a question to its click

    /// What practice has left of a spread at a rank, counted from 1.
    double practised(int rank) const;
    void read(JsonReader reader);
};
