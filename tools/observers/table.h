#pragma once

#include <QByteArray>

#include <vector>

struct Finding;

/// The table of a study, as it is written to observers.csv.
namespace table {

/// A line of column names, and a line for each finding: fields separated by ";", a decimal point
/// everywhere, and an empty field for what can't be told.
QByteArray written(const std::vector<Finding> &findings);

} // namespace table
