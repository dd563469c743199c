#include "table.h"

#include "Study.h"

#include <QByteArrayList>

#include <cmath>

namespace {

constexpr std::array hertz{60, 120};

QByteArray number(double value)
{
    constexpr int digits = 6;
    return std::isfinite(value) ? QByteArray::number(value, 'g', digits) : QByteArray();
}

struct Column
{
    const char *name;
    QByteArray (*field)(const Finding &finding);
};

constexpr std::array columns{
    Column{"subtask",
           [](const Finding &f) {
               return QByteArray(subtasks[std::size_t(f.condition.subtask)].name);
           }},
    Column{"guess", [](const Finding &f) { return number(f.condition.observer.guess); }},
    Column{"frequency_hz",
           [](const Finding &f) {
               return QByteArray::number(hertz[std::size_t(f.condition.frequency)]);
           }},
    Column{"threshold_ms", [](const Finding &f) { return number(f.condition.observer.threshold); }},
    Column{"steepness", [](const Finding &f) { return number(f.condition.observer.steepness); }},
    Column{"lapse", [](const Finding &f) { return number(f.condition.observer.lapse); }},
    Column{"half_right_ms", [](const Finding &f) { return number(f.halfRight); }},
    Column{"walk_ms", [](const Finding &f) { return number(f.walk); }},
    Column{"visits", [](const Finding &f) { return QByteArray::number(f.summary.visits); }},
    Column{"unstable", [](const Finding &f) { return number(f.summary.unstable); }},
    Column{"mean_ms", [](const Finding &f) { return number(f.summary.mean); }},
    Column{"median_ms", [](const Finding &f) { return number(f.summary.median); }},
    Column{
        "mean_by_threshold",
        [](const Finding &f) { return number(f.summary.mean / f.condition.observer.threshold); }},
    Column{
        "median_by_threshold",
        [](const Finding &f) { return number(f.summary.median / f.condition.observer.threshold); }},
    Column{"mean_by_half_right",
           [](const Finding &f) { return number(f.summary.mean / f.halfRight); }},
    Column{"median_by_half_right",
           [](const Finding &f) { return number(f.summary.median / f.halfRight); }},
    Column{"spread_ln", [](const Finding &f) { return number(f.summary.spread); }},
    Column{"smallest_change", [](const Finding &f) { return number(f.summary.smallestChange); }},
    Column{"change_95", [](const Finding &f) { return number(f.summary.change95); }},
    Column{"trials_mean", [](const Finding &f) { return number(f.summary.trialsMean); }},
    Column{"trials_95", [](const Finding &f) { return number(f.summary.trials95); }},
    Column{"at_floor", [](const Finding &f) { return number(f.summary.atFloor); }},
    Column{"at_ceiling", [](const Finding &f) { return number(f.summary.atCeiling); }},
};

template <typename Field>
QByteArray line(Field field)
{
    QByteArrayList fields;
    for (const Column &column : columns)
        fields.append(field(column));
    return fields.join(';') + '\n';
}

} // namespace

QByteArray table::written(const std::vector<Finding> &findings)
{
    QByteArray text = line([](const Column &column) { return QByteArray(column.name); });
    for (const Finding &finding : findings)
        text += line([&](const Column &column) { return column.field(finding); });
    return text;
}
