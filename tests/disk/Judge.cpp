#include "Judge.h"

#include "patientsList.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

using faultyDisk::Way;

namespace {

const QString list = QStringLiteral("Parameters/patients_list.txt");
const QString screen = QStringLiteral("Parameters/screen.pix");
const QString assessor = QStringLiteral("Parameters/assessor.txt");
const QString trials = QStringLiteral("Results/output.csv");

QByteArrayList linesOf(const QByteArray &bytes)
{
    QByteArrayList lines = bytes.split('\n');
    for (qsizetype i = 0; i + 1 < lines.size(); ++i)
        lines[i] += '\n';
    if (lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

/// Some of these lines, in their order, and nothing else.
bool arePartOf(const QByteArrayList &some, const QByteArrayList &all)
{
    qsizetype from = 0;
    return std::all_of(some.begin(), some.end(), [&](const QByteArray &line) {
        from = all.indexOf(line, from) + 1;
        return from > 0;
    });
}

/// The file that is meant by a call, which may be one for a copy or for a file without a name, by
/// the calls of the reference.
QString meantBy(const std::vector<faultyDisk::Call> &calls, std::size_t number)
{
    while (QByteArrayView(calls.at(number).path).endsWith(faultyDisk::nameless) &&
           number + 1 < calls.size())
        ++number; // the next with a name gives it one, or puts it in place
    const QString path = QString::fromStdString(calls.at(number).path);
    if (path.endsWith(u"_patients_list.txt"))
        return list;
    for (const QString &whole : {screen, assessor, list}) {
        if (path.startsWith(whole))
            return whole;
    }
    return path;
}

/// No two of them are the same: they hold when they were made.
bool isWholePdf(const QString &path, const QByteArray &bytes)
{
    return path.endsWith(u".pdf") && bytes.startsWith("%PDF-") && bytes.trimmed().endsWith("%%EOF");
}

class Judge
{
public:
    Judge(const Plan &plan, const Outcome &outcome, const Outcome &reference, const Fault &fault,
          const Place &place)
        : m_plan(plan)
        , m_outcome(outcome)
        , m_reference(reference)
        , m_fault(fault)
        , m_place(place)
        , m_victim(place.closed.isEmpty() ? meantBy(reference.calls, fault.call) : place.closed)
        , m_kind(reference.calls.at(fault.call).kind)
        , m_nameless(
              QByteArrayView(reference.calls.at(fault.call).path).endsWith(faultyDisk::nameless))
        , m_atStart(fault.call < outcome.startCalls)
    {
    }

    QStringList judge()
    {
        m_unread = isUnread();
        judgeRun();
        judgeOldFiles();
        judgeNewFiles();
        judgeWhatIsMissing();
        judgeNextStart();
        return m_findings;
    }

private:
    static QString shown(const QByteArray &bytes)
    {
        return QString::fromLatin1(bytes.right(60).toPercentEncoding(" ;.:,/"));
    }

    void find(const QString &text) { m_findings.append(text); }

    void judgeRun()
    {
        if (!m_outcome.ended)
            find(QStringLiteral("the test stood still"));
        if (!m_outcome.early.isEmpty())
            find(QStringLiteral("a box while a trial ran: ") + m_outcome.early.constFirst());
        for (const QString &box : told()) {
            const QStringList lines = box.split(u'\n');
            const bool ofTemplate = m_victim.startsWith(u"Languages/");
            const bool why = !lines.constLast().isEmpty() && !box.contains(u"Unknown error");
            const bool isText = ofTemplate || lacksThresholds();
            if (!why || (!isText && lines.size() < 2))
                find(QStringLiteral("a box that doesn't say why: ") + box);
        }
    }

    /// The boxes that the disk alone can have opened.
    QStringList told() const
    {
        QStringList boxes = m_outcome.boxes;
        for (const QString &box : m_reference.boxes)
            boxes.removeOne(box);
        return boxes;
    }

    bool isTold(const QString &path) const
    {
        const QString opening =
            QStringLiteral("Failed to open %1\n").arg(QFileInfo(path).fileName());
        const QStringList boxes = told();
        return std::any_of(boxes.begin(), boxes.end(),
                           [&](const QString &box) { return box.contains(opening); });
    }

    /// The list can't be opened any more as the patient is chosen. No box says so then: the test
    /// goes on without the patient's name, numbered from what the store held.
    bool isUnread() const
    {
        const auto &calls = m_reference.calls;
        const auto ofList = [](const faultyDisk::Call &call) {
            return QString::fromStdString(call.path) == list;
        };
        const auto choice =
            std::find_if(calls.begin() + qsizetype(m_reference.deskCalls), calls.end(), ofList);
        const bool forGood = m_fault.way == Way::Denied || m_fault.way == Way::Folder ||
                             m_fault.way == Way::Lost || m_fault.way == Way::Deleted;
        return forGood && !m_plan.registers && m_fault.call == std::size_t(choice - calls.begin());
    }

    /// What a file holds if all is well, as far as it can be with this fault.
    QByteArray wanted(const QString &path) const
    {
        const QByteArray after = m_reference.files.value(path);
        if (!m_unread || !isOfATest(path) || path == list)
            return after;
        // The columns are named in the first line.
        QByteArrayList lines = linesOf(after);
        const QByteArrayList columns = lines.constFirst().trimmed().split(';');
        const qsizetype old = linesOf(m_reference.before.value(path)).size();
        // The scores of the memory task carry the number of the attention task.
        const QByteArray session = path.contains(u"results_T4") ? "0" : "1";
        for (qsizetype i = std::max<qsizetype>(1, old); i < lines.size(); ++i)
            lines[i] = withoutPatient(columns, lines.at(i), session);
        return lines.join();
    }

    /// A row of a patient whose line couldn't be read; the store began with zeros.
    static QByteArray withoutPatient(const QByteArrayList &columns, const QByteArray &row,
                                     const QByteArray &session)
    {
        QByteArrayList fields = row.split(';');
        for (const char *column : {"gender", "l_name", "f_name", "dob"}) {
            if (columns.contains(column))
                fields[columns.indexOf(column)].clear();
        }
        const qsizetype place = columns.indexOf("session");
        if (fields.size() > place) // a marker is shorter
            fields[place] = session;
        return fields.join(';');
    }

    void judgeOldFiles()
    {
        for (auto it = m_outcome.before.cbegin(); it != m_outcome.before.cend(); ++it) {
            const bool moved = m_outcome.movedAway.contains(it.key());
            if (!moved && !m_outcome.files.contains(it.key())) {
                if (!isDeleted(it.key()))
                    find(it.key() + QStringLiteral(" is gone"));
                continue;
            }
            judgeOld(it.key(), it.value(),
                     (moved ? m_outcome.movedAway : m_outcome.files).value(it.key()));
        }
    }

    void judgeOld(const QString &path, const QByteArray &before, const QByteArray &now)
    {
        const QByteArray after = wanted(path);
        bool well = false;
        if (isDeleted(path))
            well = true; // by somebody else
        else if (path == list && m_unread)
            well = now == before; // the number isn't one that follows on theirs
        else if (path == list)
            well = isListWell(before, after, now);
        else if (path == screen)
            well = now == before || now == after || now == withFrequency(before, after);
        else if (path == assessor)
            well = now == before || now == after || isEnteredAnew(now);
        else
            well = now.startsWith(before) &&
                   arePartOf(linesOf(now.mid(before.size())), linesOf(after.mid(before.size())));
        if (!well)
            find(path + QStringLiteral(" is harmed: ") + shown(now));
    }

    /// A record that can't be read is entered on an empty form, without a word; that harms nothing
    /// as long as nobody presses "Ok".
    bool isEnteredAnew(const QByteArray &record) const
    {
        const bool unread =
            m_victim == assessor && (m_place.closed.isEmpty() ? isReading() : !m_place.readable);
        return unread && !m_plan.keepsRecord && record == ";New;;New;;;;\n";
    }

    static QByteArray withFrequency(const QByteArray &pitch, const QByteArray &frequency)
    {
        return pitch.left(8) + frequency.mid(8);
    }

    /// The others' lines to the byte, and ours with old numbers or new ones.
    bool isListWell(const QByteArray &before, const QByteArray &after, const QByteArray &now) const
    {
        const QByteArray key = m_plan.options.patient.lastName.toUtf8();
        const auto isOurs = [&](const QByteArray &line) { return line.contains(key); };
        const auto others = [&](const QByteArray &bytes) {
            QByteArrayList lines = linesOf(bytes);
            lines.removeIf(isOurs);
            return lines;
        };
        const auto oursOf = [&](const QByteArray &bytes) {
            const QByteArrayList lines = linesOf(bytes);
            const auto found = std::find_if(lines.begin(), lines.end(), isOurs);
            return found == lines.end() ? QByteArray() : *found;
        };
        if (others(now) != others(before) || linesOf(now).count() - others(now).count() > 1)
            return false;
        const QByteArray was = oursOf(before);
        const QByteArrayList fields = oursOf(now).split(';');
        const QByteArrayList wanted = oursOf(after).split(';');
        QByteArrayList old = was.isEmpty() ? wanted : was.split(';');
        if (oursOf(now).isEmpty())
            return was.isEmpty();
        if (fields.size() != wanted.size())
            return false;
        for (qsizetype i = 0; i < fields.size(); ++i) {
            const QByteArray none = was.isEmpty() && i > 3 ? QByteArray("0") : old.at(i);
            const QByteArray field = fields.at(i).trimmed();
            if (field != wanted.at(i).trimmed() && field != none.trimmed())
                return false;
        }
        return oursOf(now).endsWith("\r\n");
    }

    void judgeNewFiles()
    {
        for (auto it = m_outcome.files.cbegin(); it != m_outcome.files.cend(); ++it) {
            if (m_outcome.before.contains(it.key()))
                continue;
            if (!m_reference.files.contains(it.key())) {
                // Who can't remove a file leaves it.
                if (!mayLeave(it.key()))
                    find(it.key() + QStringLiteral(" is left behind"));
                continue;
            }
            judgeNew(it.key(), it.value());
        }
    }

    bool mayLeave(const QString &path) const
    {
        if (!m_place.closed.isEmpty())
            return path.startsWith(m_place.closed + u'/');
        return m_fault.way == Way::ReadOnly || m_fault.way == Way::Denied ||
               m_kind == faultyDisk::Kind::Remove;
    }

    void judgeNew(const QString &path, const QByteArray &now)
    {
        const QByteArray after = wanted(path);
        if (isWholePdf(path, now))
            return;
        const QByteArray none(12, '\0'); // neither measured nor chosen yet
        if (path == screen &&
            (now == withFrequency(none, after) || now == none || now == withFrequency(after, none)))
            return;
        if (path == list ? isListWell({}, after, now) : arePartOf(linesOf(now), linesOf(after)))
            return;
        find(path + QStringLiteral(" is wrong: ") + shown(now));
    }

    bool isOfATest(const QString &path) const
    {
        return path.startsWith(u"Results/") || path.startsWith(u"Archives/") || path == list;
    }

    bool isDeleted(const QString &path) const
    {
        return m_fault.way == Way::Deleted && path == m_victim;
    }

    /// A log that is deleted while it is open has lost rows of this test.
    bool isOpenLog(const QString &path) const
    {
        const bool open = m_kind == faultyDisk::Kind::Write || m_kind == faultyDisk::Kind::Sync;
        return open && (path == trials || path.endsWith(u"timing.csv"));
    }

    /// Whatever isn't as on a whole disk is told, and is a matter of the fault.
    void judgeWhatIsMissing()
    {
        const bool refused = isRefused();
        for (auto it = m_reference.files.cbegin(); it != m_reference.files.cend(); ++it) {
            const QString path = it.key();
            const QByteArray now = m_outcome.files.value(path);
            const QByteArray whole = wanted(path);
            if (now == whole || m_outcome.movedAway.value(path) == whole || isWholePdf(path, now) ||
                m_outcome.before.value(path) == whole)
                continue;
            if (isOfATest(path) && !m_outcome.chosen) // no patient, no test
                judgeUntouched(path, now);
            else if (isOfATest(path) && refused)
                judgeRefusal(path, now);
            else if ((isDeleted(path) && !isOpenLog(path)) ||
                     (path == assessor && isEnteredAnew(now)))
                continue;
            else
                judgeMissing(path, now, whole);
        }
    }

    /// The test that is broken off in any case ends like one that was refused.
    bool isRefused() const
    {
        const bool none = m_outcome.files.value(trials) == m_outcome.before.value(trials) ||
                          m_outcome.movedAway.value(trials) == m_outcome.before.value(trials);
        return m_outcome.progress != m_reference.progress || (none && isTold(trials));
    }

    /// Without the patient's line there are no thresholds, and no test of vision.
    bool lacksThresholds() const
    {
        const QStringList boxes = told();
        return m_victim.startsWith(u"Parameters/") &&
               std::any_of(boxes.begin(), boxes.end(),
                           [](const QString &box) { return box.contains(u"Unable to start!"); });
    }

    void judgeUntouched(const QString &path, const QByteArray &now)
    {
        const QByteArray before = m_outcome.before.value(path);
        if (path != list && !before.isEmpty() && now != before &&
            !m_outcome.movedAway.contains(path) && !isDeleted(path))
            find(path + QStringLiteral(" has changed without a test"));
        if (m_plan.registers && !isTold(trials))
            find(QStringLiteral("the registration failed without a word"));
    }

    void judgeRefusal(const QString &path, const QByteArray &now)
    {
        if (!isTold(trials) && !lacksThresholds())
            find(QStringLiteral("no test, and no word why: ") + m_outcome.progress);
        else if (path != trials)
            judgeUntouched(path, now);
    }

    void judgeMissing(const QString &path, const QByteArray &now, const QByteArray &wanted)
    {
        // The start is silent: the header of a log that could not be made then is made up for by
        // nobody.
        if (path == trials && m_atStart && wanted.endsWith(now) && wanted.startsWith("code;"))
            return;
        if (!isTold(path) && !(path == list && m_plan.registers && isTold(trials)))
            find(path + QStringLiteral(" lacks something without a word"));
        if (!isMatterOfTheFault(path))
            find(path + QStringLiteral(" lacks something for no reason"));
        if (isPassing() && path.endsWith(u".csv") &&
            linesOf(wanted).size() - linesOf(now).size() > longestGap(path))
            find(path + QStringLiteral(" lacks more than one row"));
    }

    bool isPassing() const { return m_fault.way == Way::WasFull || m_fault.way == Way::Broken; }

    /// All valid rows are added at once, and a log that couldn't be opened gets none.
    qsizetype longestGap(const QString &path) const
    {
        constexpr qsizetype any = 1000;
        return isOpenLog(path) && !isPartOfOpening() ? 1 : any;
    }

    bool isReading() const
    {
        return m_kind == faultyDisk::Kind::Look || m_kind == faultyDisk::Kind::Read;
    }

    /// The header of a new file.
    bool isPartOfOpening() const
    {
        return m_fault.call > 0 &&
               m_reference.calls.at(m_fault.call - 1).kind == faultyDisk::Kind::Create;
    }

    bool isMatterOfTheFault(const QString &path) const
    {
        // The list is replaced by way of a copy in bin/.
        if (!m_place.closed.isEmpty())
            return path == m_victim || path.startsWith(m_victim + u'/') ||
                   (path == list && m_victim == u"bin");
        if (m_fault.way == Way::Full || m_fault.way == Way::ReadOnly || m_fault.way == Way::Lost)
            return true;
        // Who may not make a file in a folder may make none there.
        const bool none = m_fault.way == Way::Denied && m_nameless;
        return path == m_victim || path.startsWith(m_victim + u'/') ||
               (none && QFileInfo(path).path() == QFileInfo(m_victim).path());
    }

    void judgeNextStart()
    {
        if (m_fault.way == Way::Lost || m_fault.way == Way::Folder || m_fault.way == Way::Deleted)
            return;
        for (const QString &box : m_outcome.nextBoxes)
            find(QStringLiteral("the next start tells ") + box);
        const qsizetype expected = m_plan.before.isEmpty() ? 1 : 3;
        if (m_outcome.nextPatients != expected && (m_outcome.chosen || !m_plan.registers))
            find(QStringLiteral("the next start finds %1 patients").arg(m_outcome.nextPatients));
    }

    const Plan &m_plan;
    const Outcome &m_outcome;
    const Outcome &m_reference;
    const Fault m_fault;
    const Place &m_place;
    const QString m_victim;
    const faultyDisk::Kind m_kind;
    const bool m_nameless;
    const bool m_atStart;
    bool m_unread = false;
    QStringList m_findings;
};

} // namespace

QStringList findings(const Plan &plan, const Outcome &outcome, const Outcome &reference,
                     const Fault &fault, const Place &place)
{
    return Judge(plan, outcome, reference, fault, place).judge();
}
