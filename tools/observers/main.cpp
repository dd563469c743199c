#include "Study.h"
#include "StudyOptions.h"
#include "table.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>

namespace {

enum Code { Done = 0, NotWritten = 1, BadArguments = 2 };

int complain(Code code, const QString &text)
{
    std::fprintf(stderr, "kelmoran-observers: %s\n", qPrintable(text));
    return code;
}

/// The reason why not; empty if all is well.
QString write(const QString &folder, const QByteArray &content)
{
    if (!QDir().mkpath(folder))
        return QStringLiteral("%1 can't be made").arg(folder);
    QSaveFile file(folder + QStringLiteral("/observers.csv"));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit())
        return QStringLiteral("%1: %2").arg(file.fileName(), file.errorString());
    return {};
}

void tell(qsizetype conditions, qint64 staircases, qint64 ms)
{
    constexpr double msInMinute = 60'000.0;
    const double seconds = double(ms) / 1000.0;
    const double perMinute = double(staircases) * msInMinute / double(std::max<qint64>(ms, 1));
    std::printf("%lld staircases of %lld observers in %s s, %s million a minute\n",
                static_cast<long long>(staircases), static_cast<long long>(conditions),
                QByteArray::number(seconds, 'f', 1).constData(),
                QByteArray::number(perMinute / 1e6, 'f', 1).constData());
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const StudyOptions options = StudyOptions::parse(QCoreApplication::arguments());
    if (options.wish == StudyOptions::Wish::Help) {
        std::fputs(qPrintable(options.text), stdout);
        return Done;
    }
    if (options.wish == StudyOptions::Wish::Complain)
        return complain(BadArguments, options.text);

    QElapsedTimer clock;
    clock.start();
    const std::vector<Condition> conditions = study::conditions();
    const std::vector<Finding> findings = study::run(conditions, options.settings);
    const QString error = write(options.folder, table::written(findings));
    if (!error.isEmpty())
        return complain(NotWritten, error);
    const auto count = qsizetype(conditions.size());
    tell(count, qint64(count) * options.settings.visits, clock.elapsed());
    return Done;
}
