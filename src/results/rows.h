#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QLatin1String>
#include <QString>

#include <array>
#include <optional>
#include <vector>

/// One line of a result file, as bytes: Latin-1, fields separated by ";", no quoting, a single line
/// feed at the end. A letter that Latin-1 lacks becomes "?". A ";" in a text shifts the columns of
/// its row; a line break in a text becomes a blank. Numbers hold a point whatever the locale is,
/// and what isn't a number stands as "nan", "-nan", "inf" or "-inf".
namespace rows {

/// What every row begins with.
struct Identity
{
    QString code; ///< the site's code
    QString gender;
    QString lastName;
    QString firstName;
    QDate dob; ///< empty field if it is invalid
};

/// The site and the chosen patient, from the session store.
Identity identity();

/// What the trial rows of all tasks share.
struct TrialHead
{
    int task = 0;
    int session = 0;
    QDateTime stamp;  ///< onset of the trial
    int subtask = 0;  ///< as in the column: counted from 1, a memory load from 0
    int rankTask = 0; ///< rank among the valid trials of the test, counted from 1
};

struct TrialT1
{
    int rankSub = 0; ///< rank within the subtask, counted from 1
    int time = 0;    ///< exposure of the target, ms
    QString figure;
    QString figureAnswer;
    QString position;
    QString positionAnswer;
    int answerTime = 0; ///< ms
    QString answer;     ///< "0" to "3", empty for a struck trial
    int implement = 0;  ///< 1 if the staircase hit a limit
};

struct TrialT2
{
    int rankSub = 0;  ///< rank within the condition, counted from 1
    QString rt;       ///< ms, empty for a struck trial
    QString position; ///< point of the compass
};

struct TrialT3
{
    QString rt; ///< ms, empty for a struck trial
    QString position;
    QString direction; ///< of the movement
};

struct TrialT4
{
    QString distFirst; ///< mm, a text of localNumber(); empty for an invalid trial
    QString distLast;
    int posFirst = 0; ///< sector, counted from 1
    int posLast = 0;
};

/// The row of one trial: the 30 columns of tables::_headerArchive, those of the other tasks empty.
/// `error` is 0 for a valid trial and 1 for an invalid one.
QByteArray trialT1(const Identity &who, const TrialHead &head, const TrialT1 &trial, int error);
QByteArray trialT2(const Identity &who, const TrialHead &head, const TrialT2 &trial, int error);
QByteArray trialT3(const Identity &who, const TrialHead &head, const TrialT3 &trial, int error);
QByteArray trialT4(const Identity &who, const TrialHead &head, const TrialT4 &trial, int error);

/// An interval between two pictures of a trial: what was asked for, and what it became.
struct ShownInterval
{
    int nominal = 0;     ///< ms
    qint64 achieved = 0; ///< ns

    /// ns; negative when the interval was too short.
    qint64 late() const;
};

/// How many intervals a timing row has room for: a wait, and seven crosses with their gaps.
inline constexpr int timingIntervals = 15;

/// The row of one trial in the timing log: whose it is, how late its worst interval was, and its
/// intervals in the order of the chain. `late` is empty when there are none; those behind the last
/// one are empty, and those beyond the room count in `late` alone. `refresh` is the time in ns from
/// one refresh of the screen to the next if the intervals run from refresh to refresh, 0 if they
/// run from paint to paint.
QByteArray timing(const TrialHead &head, const std::vector<ShownInterval> &intervals,
                  double refresh);
/// The line that names the columns of the timing log.
QByteArray timingHeader();

/// The short row of a break: the five identity columns and the word "paused" or "interrupted".
QByteArray marker(const Identity &who, QLatin1String word);

/// What the score rows of all tasks share.
struct ScoreHead
{
    int task = 0;
    int session = 0;
    QDateTime stamp;
    QTime duration; ///< of the test; less than 24 h
    int trials = 0; ///< all trials run
};

/// One subtask of the visual perception task.
struct GroupT1
{
    int value = 0; ///< exposure threshold, ms
    int errors = 0;
    int reversals = 0;
    double sup = 0.0;
    int limitSup = 0;
    double inf = 0.0;
    int limitInf = 0;
};

/// One cue condition of the attention task.
struct ConditionT2
{
    double value = 0.0; ///< ms: the neutral mean, or the gain against it
    double error = 0.0; ///< percent of all trials
    double slope = 0.0;
    double r2 = 0.0;
};

struct ScoresT3
{
    double rt = 0.0;    ///< ms
    double error = 0.0; ///< percent
    double slope = 0.0;
    double r2 = 0.0;
    double oblique = 0.0; ///< mean reaction times by place, ms
    double cardinal = 0.0;
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
};

struct ScoresT4
{
    double averageF = 0.0; ///< mm, first cross
    double averageL = 0.0; ///< mm, last cross
    double slope = 0.0;    ///< factor per load step
    double intercept = 0.0;
    double r2 = 0.0;
    double lSlope = 0.0; ///< practice line of the first cross
    double lR2 = 0.0;
    double error = 0.0; ///< percent
};

/// The row of a finished test, in the columns of the header of its task. A subtask that was not
/// tested leaves its seven columns empty.
QByteArray scoresT1(const Identity &who, const ScoreHead &head,
                    const std::array<std::optional<GroupT1>, 3> &groups);
QByteArray scoresT2(const Identity &who, const ScoreHead &head,
                    const std::array<ConditionT2, 3> &conditions);
QByteArray scoresT3(const Identity &who, const ScoreHead &head, const ScoresT3 &scores);
QByteArray scoresT4(const Identity &who, const ScoreHead &head, const ScoresT4 &scores);

/// A number for a text field, in the manner of "%L1" with format 'f': right-aligned with blanks to
/// `width`, with the decimal separator of the locale (a point where that is outside ASCII), without
/// group separators, in ASCII digits.
QString localNumber(double value, int width, int decimals);

inline constexpr char _headerResult_T1[] =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;"
    "t1_central;t1a_errors;t1a_reversals;t1a_sup;t1a_limits_s;t1a_inf;t1a_limit_i;"
    "t1_peripheral;t1b_errors;t1b_reversals;t1b_sup;t1b_limits_s;t1b_inf;t1b_limit_i;"
    "t1_dual;t1c_errors;t1c_reversals;t1c_sup;t1c_limits_s;t1c_inf;t1c_limit_i\n";

inline constexpr char _headerResult_T2[] =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;"
    "t2a;t2a_error;t2a_slope;t2a_r2;t2b;t2b_error;t2b_slope;t2b_r2;"
    "t2c;t2c_error;t2c_slope;t2c_r2\n";

inline constexpr char _headerResult_T3[] =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;"
    "t3_rt;t3_error;t3_slope;t3_r2;oblique;cardinal;left;right;top;bottom\n";

inline constexpr char _headerResult_T4[] =
    "code;gender;l_name;f_name;dob;task;session;date;time;duration;trials;"
    "average_f;average_l;t4_slope;t4_intercept;t4_r2;t4l_slope;t4l_r2;t4_error\n";

} // namespace rows
