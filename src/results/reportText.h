#pragma once

#include <QDate>
#include <QDateTime>
#include <QLatin1String>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

/// The text of a report: a template of HTML in which every placeholder is replaced by its value.
namespace reportText {

/// A placeholder and the HTML that takes its place.
using Values = QList<std::pair<QString, QString>>;

/// The template of a task's report in a language, or, if there is none, in language 0. The path is
/// absolute.
/// @param dataRoot the parent of the working directory
/// @param task 1 to 4
/// @param language 0 to 5; any other number is taken as 0
QString templatePath(const QString &dataRoot, int task, int language);

/// A session number of at least two digits.
QString sessionText(int session);

/// What the reports of all tasks share.
struct Head
{
    QString firstName;
    QString lastName;
    QDate dob;
    QDateTime stamp;
    QString session; ///< of sessionText()
    QTime duration;  ///< its hours don't show
    int trials = 0;
};

/// The values that all reports share. Without a record of the assessor its placeholders have no
/// value.
Values headValues(const Head &head, const std::optional<QStringList> &assessor);

/// How a score shows: width padded with blanks, and decimals.
struct Score
{
    QLatin1String placeholder;
    int width;
    int decimals;
};

/// The scores of the second, third and fourth report in the order of the arguments of goResult2,
/// goResult3 and goResult4. Empty for any other task.
QList<Score> scoresOf(int task);

/// Numbers in the manner of the locale. `numbers` has one value for each of scoresOf(task).
Values scoreValues(int task, const QList<double> &numbers);
/// The 21 whole numbers of the first report, in the order of the arguments of goResult1.
Values scoreValues(const QList<int> &numbers);

/// Replaces every placeholder that has a value, wherever it stands; the others stay in the text. A
/// value is never searched for placeholders.
QString filled(const QString &htmlTemplate, const Values &values);

} // namespace reportText
