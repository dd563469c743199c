#include "rows.h"

#include "SessionStore.h"

#include <QLocale>

#include <algorithm>
#include <charconv>
#include <limits>

namespace rows {
namespace {

constexpr int groupColumnsT1 = 7;
constexpr double nanosecondsPerMillisecond = 1e6;

/// Puts a row together field by field.
class Row
{
public:
    Row() = default;
    explicit Row(const Identity &who)
    {
        text(who.code).text(who.gender).text(who.lastName).text(who.firstName);
        text(dateText(who.dob));
    }

    Row &text(const QString &value)
    {
        QByteArray bytes = value.toLatin1();
        for (const char breaking : {'\n', '\r', '\0'})
            bytes.replace(breaking, ' ');
        return field(bytes);
    }

    Row &integer(int value) { return field(QByteArray::number(value)); }

    /// "%.<decimals>f" as in the C locale.
    Row &fixed(double value, int decimals = 6)
    {
        QByteArray digits(std::numeric_limits<double>::max_exponent10 + decimals + 3, '\0');
        const auto end =
            std::to_chars(digits.begin(), digits.end(), value, std::chars_format::fixed, decimals);
        digits.truncate(end.ptr - digits.constData());
        return field(digits);
    }

    Row &empty(int columns)
    {
        while (columns-- > 0)
            field({});
        return *this;
    }

    Row &date(const QDate &value) { return text(dateText(value)); }
    Row &time(const QTime &value) { return text(value.toString(QStringLiteral("hh:mm:ss.zzz"))); }

    QByteArray finished() const { return m_bytes + '\n'; }

private:
    static QString dateText(const QDate &date)
    {
        return date.toString(QStringLiteral("dd/MM/yyyy"));
    }

    Row &field(const QByteArray &bytes)
    {
        if (m_begun)
            m_bytes += ';';
        m_begun = true;
        m_bytes += bytes;
        return *this;
    }

    QByteArray m_bytes;
    bool m_begun = false;
};

Row begun(const Identity &who, const TrialHead &head)
{
    Row row(who);
    row.integer(head.task).integer(head.session).date(head.stamp.date()).time(head.stamp.time());
    row.integer(head.subtask).integer(head.rankTask);
    return row;
}

Row begun(const Identity &who, const ScoreHead &head)
{
    Row row(who);
    row.integer(head.task).integer(head.session).date(head.stamp.date()).time(head.stamp.time());
    row.text(head.duration.toString(QStringLiteral("hh:mm:ss"))).integer(head.trials);
    return row;
}

} // namespace

Identity identity()
{
    const SessionStore &store = sessionStore();
    return {store.siteCode, store.gender, store.lastName, store.firstName, store.dob};
}

QByteArray trialT1(const Identity &who, const TrialHead &head, const TrialT1 &trial, int error)
{
    Row row = begun(who, head);
    row.integer(trial.rankSub).integer(trial.time);
    row.text(trial.figure).text(trial.figureAnswer);
    row.text(trial.position).text(trial.positionAnswer);
    row.integer(trial.answerTime).text(trial.answer).integer(trial.implement);
    return row.empty(9).integer(error).finished();
}

QByteArray trialT2(const Identity &who, const TrialHead &head, const TrialT2 &trial, int error)
{
    Row row = begun(who, head);
    row.integer(trial.rankSub).empty(8).text(trial.rt).text(trial.position);
    return row.empty(7).integer(error).finished();
}

QByteArray trialT3(const Identity &who, const TrialHead &head, const TrialT3 &trial, int error)
{
    Row row = begun(who, head);
    row.empty(11).text(trial.rt).text(trial.position).text(trial.direction);
    return row.empty(4).integer(error).finished();
}

QByteArray trialT4(const Identity &who, const TrialHead &head, const TrialT4 &trial, int error)
{
    Row row = begun(who, head);
    row.empty(14).text(trial.distFirst).text(trial.distLast);
    return row.integer(trial.posFirst).integer(trial.posLast).integer(error).finished();
}

qint64 ShownInterval::late() const
{
    return achieved - qint64(nominal) * qint64(nanosecondsPerMillisecond);
}

QByteArray timing(const TrialHead &head, const std::vector<ShownInterval> &intervals,
                  double refresh)
{
    constexpr int microsecond = 3; // decimals of a millisecond
    const auto milliseconds = [](qint64 ns) { return double(ns) / nanosecondsPerMillisecond; };
    Row row;
    row.date(head.stamp.date()).time(head.stamp.time());
    row.integer(head.task).integer(head.session).integer(head.rankTask);
    if (intervals.empty()) {
        row.empty(1);
    } else {
        const auto worst = std::ranges::max_element(intervals, {}, &ShownInterval::late);
        row.fixed(milliseconds(worst->late()), microsecond);
    }
    const int shown = std::min(int(intervals.size()), timingIntervals);
    for (int i = 0; i < shown; ++i) {
        const ShownInterval &interval = intervals[std::size_t(i)];
        row.integer(interval.nominal).fixed(milliseconds(interval.achieved), microsecond);
    }
    row.empty(2 * (timingIntervals - shown));
    if (refresh > 0)
        row.fixed(refresh / nanosecondsPerMillisecond, microsecond);
    else
        row.empty(1);
    return row.finished();
}

QByteArray timingHeader()
{
    QByteArray header = "date;time;task;session;rank_task;late";
    for (int i = 1; i <= timingIntervals; ++i) {
        const QByteArray number = QByteArray::number(i);
        header += ";nominal_" + number + ";achieved_" + number;
    }
    return header + ";refresh\n";
}

QByteArray marker(const Identity &who, QLatin1String word)
{
    return Row(who).text(word).finished();
}

QByteArray scoresT1(const Identity &who, const ScoreHead &head,
                    const std::array<std::optional<GroupT1>, 3> &groups)
{
    Row row = begun(who, head);
    for (const std::optional<GroupT1> &group : groups) {
        if (!group) {
            row.empty(groupColumnsT1);
            continue;
        }
        row.integer(group->value).integer(group->errors).integer(group->reversals);
        row.fixed(group->sup).integer(group->limitSup);
        row.fixed(group->inf).integer(group->limitInf);
    }
    return row.finished();
}

QByteArray scoresT2(const Identity &who, const ScoreHead &head,
                    const std::array<ConditionT2, 3> &conditions)
{
    Row row = begun(who, head);
    for (const ConditionT2 &condition : conditions) {
        row.fixed(condition.value).fixed(condition.error, 1);
        row.fixed(condition.slope).fixed(condition.r2);
    }
    return row.finished();
}

QByteArray scoresT3(const Identity &who, const ScoreHead &head, const ScoresT3 &scores)
{
    Row row = begun(who, head);
    row.fixed(scores.rt).fixed(scores.error, 1).fixed(scores.slope).fixed(scores.r2);
    row.fixed(scores.oblique).fixed(scores.cardinal);
    row.fixed(scores.left).fixed(scores.right).fixed(scores.top).fixed(scores.bottom);
    return row.finished();
}

QByteArray scoresT4(const Identity &who, const ScoreHead &head, const ScoresT4 &scores)
{
    Row row = begun(who, head);
    row.fixed(scores.averageF).fixed(scores.averageL);
    row.fixed(scores.slope).fixed(scores.intercept).fixed(scores.r2);
    row.fixed(scores.lSlope).fixed(scores.lR2).fixed(scores.error);
    return row.finished();
}

QString localNumber(double value, int width, int decimals)
{
    QString text = QString::number(value, 'f', decimals);
    const QString separator = QLocale().decimalPoint();
    if (separator.size() == 1 && separator.front().unicode() < 128)
        text.replace(u'.', separator);
    return text.rightJustified(width);
}

} // namespace rows
