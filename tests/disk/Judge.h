#pragma once

#include "Visit.h"

/// What an outcome does that it must not, a line each; empty if all is well.
/// @param reference the same plan on a whole disk
QStringList findings(const Plan &plan, const Outcome &outcome, const Outcome &reference,
                     const Fault &fault, const Place &place);
