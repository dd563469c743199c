#include "Fuzz.h"
#include "reportText.h"

#include <QTextStream>

// The first line of an input is the patient's names and then the assessor's record, with ";"
// between them; what follows is the template.

using fuzz::demand;

namespace {

reportText::Values valuesOf(const QStringList &texts)
{
    const reportText::Head head{texts.value(0),
                                texts.value(1),
                                QDate(1950, 3, 2),
                                QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9)),
                                reportText::sessionText(int(texts.size())),
                                QTime(0, 2, 3),
                                101};
    reportText::Values values =
        reportText::headValues(head, texts.sliced(std::min(qsizetype(2), texts.size())));
    for (int task = 2; task <= 4; ++task)
        values += reportText::scoreValues(task, {1.5, -2.25, 1e9, 0.0, 0.5, 1.0, 7.0});
    return values;
}

/// As the report reads its template.
QString templateOf(const QByteArray &bytes)
{
    QTextStream stream(bytes);
    stream.setEncoding(QStringConverter::Utf8);
    return stream.readAll();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto [texts, rest] = fuzz::firstLine(input);
    const reportText::Values values = valuesOf(QString::fromUtf8(texts).split(u';'));
    const QString page = templateOf(rest);

    const QString report = reportText::filled(page, values);
    for (const QChar mark : {u'<', u'>', u'"'})
        demand(report.count(mark) == page.count(mark), "no text of a person becomes markup");
    demand(reportText::filled(page, {}) == page, "without a value nothing is replaced");

    // No placeholder goes over the end of a line.
    QString lines;
    for (const QString &line : page.split(u'\n'))
        lines += (line.isNull() ? QString() : reportText::filled(line, values)) + u'\n';
    lines.chop(1);
    demand(lines == report, "a line is filled like any other");
    return 0;
}
