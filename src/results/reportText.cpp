#include "reportText.h"

#include "assessorRecord.h"
#include "tables.h"

#include <QFile>

#include <array>

namespace reportText {
namespace {

constexpr QLatin1String version("1.1");
constexpr int fallbackLanguage = 0;
constexpr int decimalBase = 10;

constexpr std::array<Score, 12> scores2{{
    {QLatin1String("v_t2a_neutral"), 3, 0},
    {QLatin1String("v_t2a_error"), 5, 1},
    {QLatin1String("v_t2a_slope"), 3, 0},
    {QLatin1String("v_t2a_r2"), 5, 3},
    {QLatin1String("v_t2b_alerting"), 3, 0},
    {QLatin1String("v_t2b_error"), 5, 1},
    {QLatin1String("v_t2b_slope"), 3, 0},
    {QLatin1String("v_t2b_r2"), 5, 3},
    {QLatin1String("v_t2c_orientation"), 3, 0},
    {QLatin1String("v_t2c_error"), 5, 1},
    {QLatin1String("v_t2c_slope"), 3, 0},
    {QLatin1String("v_t2c_r2"), 5, 3},
}};

constexpr std::array<Score, 7> scores3{{
    {QLatin1String("v_t3rt"), 3, 0},
    {QLatin1String("v_t3_error"), 5, 1},
    {QLatin1String("v_t3_slope"), 3, 0},
    {QLatin1String("v_t3_r2"), 5, 3},
    {QLatin1String("v_t3_oc"), 3, 0},
    {QLatin1String("v_t3_lr"), 3, 0},
    {QLatin1String("v_t3_bt"), 3, 0},
}};

constexpr std::array<Score, 8> scores4{{
    {QLatin1String("v_t4_average_f"), 3, 0},
    {QLatin1String("v_t4_average_l"), 3, 0},
    {QLatin1String("v_t4_error"), 5, 1},
    {QLatin1String("v_t4l_slope"), 5, 3},
    {QLatin1String("v_t4l_r2"), 5, 3},
    {QLatin1String("v_t4_slope"), 5, 1},
    {QLatin1String("v_t4_intercept"), 3, 0},
    {QLatin1String("v_t4_r2"), 5, 3},
}};

/// Of the first report, in the order of its arguments: whole numbers all.
constexpr std::array<QLatin1String, 21> scores1{
    QLatin1String("v_t1_central"),    QLatin1String("v_t1a_errors"),
    QLatin1String("v_t1a_reversals"), QLatin1String("v_t1a_sup"),
    QLatin1String("v_t1a_limit_s"),   QLatin1String("v_t1a_inf"),
    QLatin1String("v_t1a_limit_i"),   QLatin1String("v_t1_peripheral"),
    QLatin1String("v_t1b_errors"),    QLatin1String("v_t1b_reversals"),
    QLatin1String("v_t1b_sup"),       QLatin1String("v_t1b_limit_s"),
    QLatin1String("v_t1b_inf"),       QLatin1String("v_t1b_limit_i"),
    QLatin1String("v_t1_dual"),       QLatin1String("v_t1c_errors"),
    QLatin1String("v_t1c_reversals"), QLatin1String("v_t1c_sup"),
    QLatin1String("v_t1c_limit_s"),   QLatin1String("v_t1c_inf"),
    QLatin1String("v_t1c_limit_i")};

QString templateOf(const QString &dataRoot, int task, int language)
{
    const auto number = std::size_t(language);
    return QStringLiteral("%1%2Kelmoran_Task%3%4.html")
        .arg(dataRoot, tables::_pathLanguage.at(number), QString::number(task),
             tables::_language.at(number));
}

Values assessorValues(const QStringList &record)
{
    using namespace assessorRecord;
    const auto value = [&record](Field number) { return field(record, number).toHtmlEscaped(); };
    return {{QStringLiteral("v_assessor"), fullName(record).toHtmlEscaped()},
            {QStringLiteral("v_institution"), value(Institution)},
            {QStringLiteral("v_street"), value(Street)},
            {QStringLiteral("v_code"), value(PostalCode)},
            {QStringLiteral("v_city"), value(City)},
            {QStringLiteral("v_country"), value(Country)}};
}

/// The value whose placeholder stands at this place of the template; none if there is none.
const std::pair<QString, QString> *valueAt(QStringView place, const Values &values)
{
    for (const auto &value : values) {
        if (place.startsWith(value.first))
            return &value;
    }
    return nullptr;
}

} // namespace

QString templatePath(const QString &dataRoot, int task, int language)
{
    if (language > fallbackLanguage && std::size_t(language) < tables::_language.size()) {
        QString path = templateOf(dataRoot, task, language);
        if (QFile::exists(path))
            return path;
    }
    return templateOf(dataRoot, task, fallbackLanguage);
}

QString sessionText(int session)
{
    return QStringLiteral("%1%2").arg(session < decimalBase ? QStringLiteral("0") : QString(),
                                      QString::number(session));
}

Values headValues(const Head &head, const std::optional<QStringList> &assessor)
{
    const QString dateFormat = QStringLiteral("dd.MM.yyyy");
    Values values{{QStringLiteral("v_version"), version}};
    if (assessor)
        values += assessorValues(*assessor);
    values += {{QStringLiteral("v_f_name"), head.firstName.toHtmlEscaped()},
               {QStringLiteral("v_l_name"), head.lastName.toHtmlEscaped()},
               {QStringLiteral("v_dob"), head.dob.toString(dateFormat)},
               {QStringLiteral("v_date"), head.stamp.toString(dateFormat)},
               {QStringLiteral("v_time"), head.stamp.toString(QStringLiteral("hh:mm"))},
               {QStringLiteral("v_session"), head.session},
               {QStringLiteral("v_duration"), head.duration.toString(QStringLiteral("mm:ss"))},
               {QStringLiteral("v_trials"), QString::number(head.trials)}};
    return values;
}

QList<Score> scoresOf(int task)
{
    switch (task) {
    case 2:
        return {scores2.begin(), scores2.end()};
    case 3:
        return {scores3.begin(), scores3.end()};
    case 4:
        return {scores4.begin(), scores4.end()};
    default:
        return {};
    }
}

Values scoreValues(int task, const QList<double> &numbers)
{
    const QList<Score> scores = scoresOf(task);
    Values values;
    for (qsizetype i = 0; i < std::min(scores.size(), numbers.size()); ++i) {
        const Score &score = scores.at(i);
        values.append({score.placeholder, QStringLiteral("%L1").arg(numbers.at(i), score.width, 'f',
                                                                    score.decimals, u' ')});
    }
    return values;
}

Values scoreValues(const QList<int> &numbers)
{
    Values values;
    for (qsizetype i = 0; i < std::min(qsizetype(scores1.size()), numbers.size()); ++i)
        values.append({scores1.at(std::size_t(i)), QString::number(numbers.at(i))});
    return values;
}

QString filled(const QString &htmlTemplate, const Values &values)
{
    const QString mark = QStringLiteral("v_");
    const QStringView text(htmlTemplate);
    QString result;
    result.reserve(htmlTemplate.size());
    qsizetype from = 0;
    qsizetype at = 0;
    while ((at = htmlTemplate.indexOf(mark, at)) >= 0) {
        const auto *value = valueAt(text.sliced(at), values);
        if (!value) {
            ++at;
            continue;
        }
        result += text.sliced(from, at - from);
        result += value->second;
        at += value->first.size();
        from = at;
    }
    result += text.sliced(from);
    return result;
}

} // namespace reportText
