#include "Books.h"

#include "dataFolders.h"
#include "patientsList.h"
#include "rows.h"
#include "tables.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QTime>

#include <algorithm>
#include <array>

#include <sys/stat.h>

namespace {

enum Column {
    Who = 5, ///< columns
    Task = 5,
    Session,
    Date,
    Time,
    RankTask = 10,
    FigureAnswer = 14,
    PositionAnswer = 16,
    AnswerTime = 17,
    Answer = 18,
    RtAttention = 20,
    RtMovement = 22,
    DistFirst = 25,
    DistLast = 26,
    Error = 29,
    Columns = 30
};

constexpr int trialsColumn = 10; // of the scores
constexpr int slowestAttention = 2000;
constexpr int slowestMovement = 5000;

constexpr std::array<const char *, 4> scoreHeaders{rows::_headerResult_T1, rows::_headerResult_T2,
                                                   rows::_headerResult_T3, rows::_headerResult_T4};

bool isVision(int task)
{
    return task == 1 || task >= 5;
}

bool isInteger(const QByteArray &text)
{
    bool ok = false;
    text.toInt(&ok);
    return ok;
}

/// A number, also one that is none.
bool isNumber(const QByteArray &text)
{
    bool ok = false;
    QByteArray bare = text.trimmed();
    if (bare.startsWith('-'))
        bare.remove(0, 1);
    bare.toDouble(&ok);
    return ok || bare == "nan" || bare == "inf";
}

bool isDate(const QByteArray &text)
{
    return QDate::fromString(QString::fromLatin1(text), QStringLiteral("dd/MM/yyyy")).isValid();
}

bool isTime(const QByteArray &text)
{
    return QTime::fromString(QString::fromLatin1(text), QStringLiteral("hh:mm:ss.zzz")).isValid();
}

QString told(const char *what, const QByteArray &line)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromUtf8(line.trimmed()));
}

/// Changes whenever the file does.
QByteArray stamp(const QString &path)
{
    struct stat found = {};
    if (::stat(QFile::encodeName(path).constData(), &found) != 0)
        return {};
    return QByteArray::number(qulonglong(found.st_ino)) + ' ' +
           QByteArray::number(qlonglong(found.st_size)) + ' ' +
           QByteArray::number(qlonglong(found.st_mtim.tv_sec)) + ' ' +
           QByteArray::number(qlonglong(found.st_mtim.tv_nsec));
}

/// -1 if there is none.
qint64 sizeOf(const QString &path)
{
    struct stat found = {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 ? qint64(found.st_size) : -1;
}

QByteArray whole(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The columns of the other tasks are empty.
bool keepsToItsColumns(int task, const QList<QByteArray> &fields)
{
    for (int column = RankTask + 1; column < Error; ++column) {
        bool own = false;
        if (isVision(task))
            own = column < RtAttention;
        else if (task == 2)
            own = column == RankTask + 1 || column == RtAttention || column == RtAttention + 1;
        else if (task == 3)
            own = column >= RtMovement && column < DistFirst;
        else
            own = column >= DistFirst;
        if (!own && !fields.at(column).isEmpty())
            return false;
    }
    return true;
}

QByteArray resultOf(int task, const QList<QByteArray> &fields)
{
    if (isVision(task))
        return fields.at(Answer);
    if (task == 2)
        return fields.at(RtAttention);
    return fields.at(task == 3 ? RtMovement : DistFirst);
}

} // namespace

Books::Books(QString root)
    : m_root(std::move(root))
{
    const auto log = [this](const QString &name, const QByteArray &header) {
        return Log{m_root + QStringLiteral("/Results/") + name, 0, header, false};
    };
    m_output = log(QStringLiteral("output.csv"), tables::_headerArchive);
    m_timing = log(QStringLiteral("timing.csv"), rows::timingHeader());
    m_valid = log(QStringLiteral("valid-output.csv"), tables::_headerArchive);
    for (int task = 1; task <= int(scoreHeaders.size()); ++task)
        m_scores.append(log(QStringLiteral("results_T%1.csv").arg(task),
                            scoreHeaders.at(std::size_t(task - 1))));
}

void Books::runBegins()
{
    m_runBegins = true;
    blockBegins();
}

void Books::blockBegins()
{
    m_begins = true;
    m_edited = false;
    m_block.clear();
}

void Books::wants(int number)
{
    m_edited = m_edited || number != m_wanted;
    m_wanted = number;
}

QString Books::check()
{
    using Reader = QString (Books::*)();
    constexpr std::array<Reader, 5> readers{&Books::readTrials, &Books::readTimings,
                                            &Books::readValid, &Books::readScores,
                                            &Books::readPatients};
    for (const Reader reader : readers) {
        QString wrong = (this->*reader)();
        if (!wrong.isEmpty())
            return wrong;
    }
    return {};
}

QList<QByteArray> Books::grown(Log &log, QString &wrong) const
{
    const qint64 size = sizeOf(log.path);
    if (size < log.read && log.read > 0)
        wrong = QStringLiteral("%1 has lost bytes").arg(log.path);
    if (size <= log.read)
        return {};
    QFile file(log.path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(log.read)) {
        wrong = QStringLiteral("%1 can't be read").arg(log.path);
        return {};
    }
    QByteArray bytes = file.readAll();
    log.read += bytes.size();
    if (!bytes.endsWith('\n')) {
        wrong = QStringLiteral("%1 ends in half a line").arg(log.path);
        return {};
    }
    if (!log.seen) {
        log.seen = true;
        if (!bytes.startsWith(log.header)) {
            wrong = QStringLiteral("%1 doesn't begin with its header").arg(log.path);
            return {};
        }
        bytes = bytes.sliced(log.header.size());
    }
    QList<QByteArray> lines;
    for (qsizetype from = 0; from < bytes.size();) {
        const qsizetype end = bytes.indexOf('\n', from) + 1;
        lines.append(bytes.sliced(from, end - from));
        from = end;
    }
    return lines;
}

QString Books::readTrials()
{
    QString wrong;
    const QList<QByteArray> lines = grown(m_output, wrong);
    for (const QByteArray &line : lines) {
        if (wrong.isEmpty())
            wrong = takeTrial(line);
    }
    return wrong;
}

QString Books::takeTrial(const QByteArray &line)
{
    const QList<QByteArray> fields = line.trimmed().split(';');
    if (fields.size() == Who + 1)
        return takeMarker(fields);
    if (fields.size() != Columns)
        return told("a row without its 30 columns", line);
    for (const int column : {int(Task), int(Session), int(RankTask - 1), int(RankTask)}) {
        if (!isInteger(fields.at(column)))
            return told("a row with a number that is none", line);
    }
    if (!isDate(fields.at(Date)) || !isTime(fields.at(Time)))
        return told("a row without its date and time", line);
    if (fields.at(Error) != "0" && fields.at(Error) != "1")
        return told("a row that is neither valid nor invalid", line);

    Trial trial{line,
                fields.mid(0, Who).join(';'),
                fields.at(Task).toInt(),
                fields.at(Session).toInt(),
                fields.at(RankTask).toInt(),
                fields.at(Error) == "1",
                false,
                resultOf(fields.at(Task).toInt(), fields)};
    if (trial.task < 1 || trial.task > 7 || !keepsToItsColumns(trial.task, fields))
        return told("a row in the columns of another task", line);
    trial.struck = trial.result.isEmpty();
    if (trial.struck && !trial.error)
        return told("a valid row without a result", line);
    if (isVision(trial.task) && trial.struck &&
        (!fields.at(FigureAnswer).isEmpty() || !fields.at(PositionAnswer).isEmpty() ||
         fields.at(AnswerTime) != "0"))
        return told("a struck trial with an answer", line);
    if (trial.task == 4 && (trial.error != trial.struck ||
                            fields.at(DistFirst).isEmpty() != fields.at(DistLast).isEmpty()))
        return told("a memory row whose distances don't fit its error", line);
    const bool slow = (trial.task == 2 && trial.result.toInt() > slowestAttention) ||
                      (trial.task == 3 && trial.result.toInt() > slowestMovement);
    if (slow && !trial.error)
        return told("a valid answer that is too late", line);
    QString wrong = checkRank(trial);
    if (!wrong.isEmpty())
        return wrong;

    m_begins = false;
    m_runBegins = false;
    m_last = trial;
    m_block.append(trial);
    ++m_trials;
    m_struck += trial.struck ? 1 : 0;
    return {};
}

/// A valid trial takes its rank, and an invalid one leaves it; but for the memory task, where it
/// takes one back. In the visual recognition task only a struck trial leaves it.
QString Books::checkRank(const Trial &trial) const
{
    if (!m_runBegins &&
        (trial.who != m_last.who || trial.task != m_last.task || trial.session != m_last.session))
        return told("a trial of another patient, task or session in the middle of a test",
                    m_last.bytes + trial.bytes);
    const int former = m_begins ? 0 : m_last.rank;
    int due = former;
    if (isVision(trial.task))
        due = former + (trial.struck ? 0 : 1);
    else if (m_begins)
        due = 1;
    else if (!m_last.error)
        due = former + 1;
    else if (trial.task == 4)
        due = former - 1;
    if (trial.rank == due)
        return {};
    return told(qPrintable(QStringLiteral("rank %1 was due").arg(due)),
                (m_begins ? QByteArray() : m_last.bytes) + trial.bytes);
}

QString Books::takeMarker(const QList<QByteArray> &fields)
{
    if (fields.last() == "paused") {
        ++m_paused;
        return {};
    }
    if (fields.last() != "interrupted")
        return told("a marker of no kind", fields.join(';'));
    ++m_interrupted;
    runBegins();
    return {};
}

QString Books::readTimings()
{
    QString wrong;
    const QList<QByteArray> lines = grown(m_timing, wrong);
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.trimmed().split(';');
        if (fields.size() != m_timing.header.count(';') + 1)
            return told("a timing row without its columns", line);
        if (!isDate(fields.at(0)) || !isTime(fields.at(1)))
            return told("a timing row without its date and time", line);
        ++m_timings;
    }
    if (wrong.isEmpty() && m_timings != m_trials)
        wrong =
            QStringLiteral("%1 trials, but %2 rows of their times").arg(m_trials).arg(m_timings);
    return wrong;
}

QString Books::readValid()
{
    QString wrong;
    const QList<QByteArray> lines = grown(m_valid, wrong);
    if (!wrong.isEmpty() || lines.isEmpty())
        return wrong;
    m_added = true;
    return checkValid(lines);
}

QString Books::checkValid(const QList<QByteArray> &rows)
{
    QList<QByteArray> due;
    for (const Trial &trial : std::as_const(m_block)) {
        if (isVision(trial.task) ? !trial.struck : !trial.error)
            due.append(trial.bytes);
    }
    if (rows != due)
        return QStringLiteral("%1 valid rows, but %2 valid trials: %3")
            .arg(rows.size())
            .arg(due.size())
            .arg(QString::fromUtf8(rows.constFirst()));
    return {};
}

QString Books::readScores()
{
    const int before = m_finished;
    for (int file = 1; file <= int(m_scores.size()); ++file) {
        QString wrong;
        const QList<QByteArray> lines = grown(m_scores[file - 1], wrong);
        for (const QByteArray &line : lines) {
            if (wrong.isEmpty())
                wrong = takeScores(file, line);
        }
        if (!wrong.isEmpty())
            return wrong;
    }
    if (m_added && m_finished == before)
        return QStringLiteral("valid rows, but no scores");
    m_added = false;
    if (m_finished > before + 1)
        return QStringLiteral("one test ended twice");
    return {};
}

QString Books::takeScores(int file, const QByteArray &line)
{
    const QList<QByteArray> fields = line.trimmed().split(';');
    if (fields.size() != m_scores.at(file - 1).header.count(';') + 1)
        return told("scores without their columns", line);
    for (qsizetype column = trialsColumn; column < fields.size(); ++column) {
        if (!isNumber(fields.at(column)) && !(file == 1 && fields.at(column).isEmpty()))
            return told("scores with a number that is none", line);
    }
    if (m_block.isEmpty())
        return told("scores of no trial", line);
    const Trial &last = m_block.constLast();
    if (fields.at(Task).toInt() != last.task || (isVision(last.task) ? 1 : last.task) != file)
        return told("scores of another task", line + last.bytes);
    const auto valid = std::count_if(m_block.cbegin(), m_block.cend(),
                                     [](const Trial &trial) { return !trial.error; });
    const int trials = fields.at(trialsColumn).toInt();
    if (file == 1 && trials != 0 && trials != last.rank)
        return told("scores of another number of trials", line);
    if ((file == 2 || file == 3) && (trials != m_block.size() || valid != m_wanted))
        return told(qPrintable(QStringLiteral("%1 trials, %2 of them valid, %3 wanted")
                                   .arg(m_block.size())
                                   .arg(valid)
                                   .arg(m_wanted)),
                    line);
    // Where none is wanted, the first valid trial ends the test.
    if (file == 4 && (trials != valid || (!m_edited && last.rank > std::max(m_wanted, 1))))
        return told(
            qPrintable(QStringLiteral("%1 valid trials, %2 wanted").arg(valid).arg(m_wanted)),
            line);
    QString wrong = archived(file, line);
    ++m_finished;
    ++m_finishedByTask[last.task];
    m_owed = last.session;
    m_owedField = last.task + 3;
    runBegins();
    return wrong;
}

/// The same row stands in the patient's folder.
QString Books::archived(int file, const QByteArray &line) const
{
    const QString key = dataFolders::asFileName(m_chosen);
    const QString path =
        QStringLiteral("%1/Archives/%2/results_T%3_%2.csv").arg(m_root, key, QString::number(file));
    const QByteArray all = whole(path);
    if (!all.startsWith(m_scores.at(file - 1).header) || !all.endsWith('\n' + line))
        return told("scores that don't stand in the patient's folder", line);
    return {};
}

QString Books::readPatients()
{
    const QString path = m_root + QStringLiteral("/Parameters/patients_list.txt");
    QByteArray now = stamp(path);
    if (now == m_listStamp && m_owed == 0)
        return {};
    const bool first = m_listStamp.isEmpty();
    m_listStamp = std::move(now);
    const QByteArray all = whole(path);
    if (!all.isEmpty() && !all.endsWith("\r\n"))
        return QStringLiteral("the list of patients ends in half a line");
    QList<QStringList> lines;
    QStringList texts = QString::fromUtf8(all).split(QStringLiteral("\r\n"));
    texts.removeLast();
    for (const QString &text : std::as_const(texts))
        lines.append(text.split(u';'));
    for (const QStringList &fields : std::as_const(lines)) {
        if (fields.size() != patientsList::FieldCount)
            return told("a patient without 14 fields", fields.join(u';').toUtf8());
        for (qsizetype i = patientsList::SessionT1; i < fields.size(); ++i) {
            if (!isInteger(fields.at(i).toLatin1()))
                return told("a patient with a number that is none", fields.join(u';').toUtf8());
        }
    }
    QString wrong = first ? QString() : comparePatients(lines);
    m_patients = lines;
    if (wrong.isEmpty() && m_owed != 0 &&
        patient(m_chosen).value(m_owedField) != QString::number(m_owed))
        wrong =
            QStringLiteral("session %1 of a finished test doesn't stand in the list").arg(m_owed);
    m_owed = 0;
    return wrong;
}

QString Books::comparePatients(const QList<QStringList> &now)
{
    if (now.size() < m_patients.size())
        return QStringLiteral("a patient is lost");
    for (qsizetype i = 0; i < m_patients.size(); ++i) {
        const QStringList &before = m_patients.at(i);
        const QStringList &after = now.at(i);
        if (before == after)
            continue;
        const QByteArray line =
            (before.join(u';') + QStringLiteral(" -> ") + after.join(u';')).toUtf8();
        if (before.first(patientsList::SessionT1) != after.first(patientsList::SessionT1))
            return told("a patient has changed", line);
        if (patientsList::key(after) != m_chosen)
            return told("the numbers of a patient who isn't tested have changed", line);
        for (int field = patientsList::SessionT1; field < patientsList::ThresholdS1; ++field) {
            if (before.at(field) == after.at(field))
                continue;
            if (m_owed == 0 || field != m_owedField)
                return told("a session number of no finished test", line);
            if (after.at(field).toInt() <= before.at(field).toInt())
                return told("a session number that doesn't grow", line);
        }
    }
    for (qsizetype i = m_patients.size(); i < now.size(); ++i) {
        if (!m_registration)
            return told("a patient whom nobody has registered", now.at(i).join(u';').toUtf8());
        m_registration = false;
        ++m_registered;
        if (now.at(i).sliced(patientsList::SessionT1).removeDuplicates() != 9)
            return told("a new patient with numbers", now.at(i).join(u';').toUtf8());
    }
    return {};
}

QStringList Books::patient(const QString &key) const
{
    for (const QStringList &fields : m_patients) {
        if (patientsList::key(fields) == key)
            return fields;
    }
    return {};
}

QString Books::checkDialogFiles() const
{
    const QString parameters = m_root + QStringLiteral("/Parameters/");
    if (sizeOf(parameters + QStringLiteral("screen.pix")) != 12)
        return QStringLiteral("screen.pix isn't whole");
    const QByteArray assessor = whole(parameters + QStringLiteral("assessor.txt"));
    if (!assessor.isEmpty() &&
        (assessor.count('\n') != 1 || !assessor.endsWith('\n') || assessor.count(';') != 7))
        return told("the assessor's record isn't one line of 8 fields", assessor);
    return {};
}

QString Books::checkTree() const
{
    const auto entries = [this](const QString &folder) {
        return QDir(m_root + folder)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    };
    const auto stray = [&entries](const QString &folder, const QStringList &allowed) {
        QStringList found = entries(folder);
        found.removeIf([&allowed](const QString &name) { return allowed.contains(name); });
        return found.isEmpty() ? QString()
                               : QStringLiteral("in %1/ lies %2").arg(folder, found.join(u' '));
    };
    QStringList results{QStringLiteral("output.csv"), QStringLiteral("timing.csv"),
                        QStringLiteral("valid-output.csv")};
    QStringList archives;
    for (int task = 1; task <= int(m_scores.size()); ++task)
        results.append(QStringLiteral("results_T%1.csv").arg(task));
    for (const QStringList &fields : m_patients)
        archives.append(dataFolders::asFileName(patientsList::key(fields)));

    QStringList wrong{stray(QString(), {QStringLiteral("bin"), QStringLiteral("Archives"),
                                        QStringLiteral("Languages"), QStringLiteral("Parameters"),
                                        QStringLiteral("Results")}),
                      stray(QStringLiteral("/bin"), {}),
                      stray(QStringLiteral("/Parameters"),
                            {QStringLiteral("screen.pix"), QStringLiteral("patients_list.txt"),
                             QStringLiteral("assessor.txt")}),
                      stray(QStringLiteral("/Results"), results),
                      stray(QStringLiteral("/Archives"), archives),
                      checkDialogFiles()};
    for (const QString &key : std::as_const(archives)) {
        QStringList files;
        for (int task = 1; task <= int(m_scores.size()); ++task)
            files.append(QStringLiteral("results_T%1_%2.csv").arg(QString::number(task), key));
        wrong.append(stray(QStringLiteral("/Archives/") + key, files));
    }
    wrong.removeAll(QString());
    return wrong.join(u'\n');
}
