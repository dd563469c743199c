#include "Judge.h"
#include "Visit.h"
#include "startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <random>

#include <unistd.h>

// Plays whole visits on a disk that fails, and judges what came of each: one case for each call of
// the program that concerns its files, and each way in which it can fail.

namespace {

using faultyDisk::Way;

constexpr std::array ways{Way::Full,     Way::WasFull, Way::Broken, Way::Denied,
                          Way::ReadOnly, Way::Folder,  Way::Lost,   Way::Deleted};

const QString screenFile = QStringLiteral("Parameters/screen.pix");

struct Case
{
    Fault fault;
    Place place;
    QString name;
};

struct Count
{
    int tried = 0;
    int failed = 0;
};

/// The toolkit tells of what a platform without a display lacks.
void dropRemarks(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(text));
}

void print(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

QString way(const Case &one)
{
    if (one.place.room)
        return QStringLiteral("a disk that is full");
    if (!one.place.closed.isEmpty())
        return QStringLiteral("somebody else's");
    return QString::fromLatin1(faultyDisk::nameOf(one.fault.way));
}

/// One plan, its course on a whole disk, and the cases made of it.
class Series
{
public:
    explicit Series(Plan plan)
        : m_plan(std::move(plan))
        , m_reference(carryOut(m_plan))
    {
    }

    const Plan &plan() const { return m_plan; }
    const std::vector<faultyDisk::Call> &calls() const { return m_reference.calls; }

    /// Otherwise no difference would tell anything.
    bool isRepeatable() const
    {
        const Outcome again = carryOut(m_plan);
        const auto same = [](const faultyDisk::Call &one, const faultyDisk::Call &other) {
            return one.kind == other.kind;
        };
        return m_reference.ended &&
               std::equal(again.calls.begin(), again.calls.end(), calls().begin(), calls().end(),
                          same) &&
               again.files.keys() == m_reference.files.keys() &&
               (m_plan.report || again.files == m_reference.files);
    }

    /// Every file that the visit has changed was changed through a call that can be made to fail.
    bool knowsEveryFile() const
    {
        for (auto it = m_reference.files.cbegin(); it != m_reference.files.cend(); ++it) {
            const bool changed = m_reference.before.value(it.key()) != it.value();
            const auto names = [&](const faultyDisk::Call &call) {
                return QString::fromStdString(call.path) == it.key();
            };
            if (changed && std::none_of(calls().begin(), calls().end(), names))
                return false;
        }
        return true;
    }

    QList<Case> everyCall() const
    {
        QList<Case> cases;
        for (std::size_t number = 0; number < calls().size(); ++number) {
            const faultyDisk::Call &call = calls().at(number);
            // A report takes its time; what else it does is tried without one.
            if (m_plan.report && !ofReport(call))
                continue;
            // What is done at the desk is the same in all visits.
            if (!m_plan.registers && number < m_reference.deskCalls)
                continue;
            for (const Way each : ways) {
                if (concerns(each, call))
                    cases.append(Case{Fault{each, number}, Place(), nameOf(each, number)});
            }
        }
        return cases;
    }

    /// A real disk with ever more room.
    QList<Case> everyRoom(const QString &folder) const
    {
        constexpr qint64 page = 4096;
        constexpr qint64 enough = 24;
        QList<Case> cases;
        for (qint64 pages = 0; pages < enough; ++pages)
            cases.append(Case{Fault{Way::Full, 0}, Place{folder, pages * page, {}, false},
                              QStringLiteral("%1, %2 pages left").arg(m_plan.name).arg(pages)});
        return cases;
    }

    /// A real disk, with a file or folder that belongs to somebody else.
    QList<Case> everyOwner() const
    {
        QStringList paths{QStringLiteral("bin"), QStringLiteral("Parameters"),
                          QStringLiteral("Results"), QStringLiteral("Archives")};
        for (auto it = m_plan.before.cbegin(); it != m_plan.before.cend(); ++it)
            paths.append(it.key());
        QList<Case> cases;
        for (const QString &path : std::as_const(paths)) {
            if (m_plan.before.isEmpty() && path != u"bin")
                continue;
            for (const bool readable : {true, false})
                cases.append(Case{Fault{Way::ReadOnly, 0}, Place{{}, {}, path, readable},
                                  QStringLiteral("%1, %2 somebody else's, %3")
                                      .arg(m_plan.name, path,
                                           readable ? QStringLiteral("can be read")
                                                    : QStringLiteral("can't be read"))});
        }
        return cases;
    }

    /// True if nothing was found.
    bool stands(const Case &one) const
    {
        const Outcome outcome = carryOut(m_plan, one.fault, one.place);
        const bool unmeasured = one.place.closed == screenFile && !one.place.readable;
        const QStringList lines = findings(
            m_plan, outcome, unmeasured ? withoutPixels() : m_reference, one.fault, one.place);
        if (lines.isEmpty())
            return true;
        print(one.name);
        for (const QString &line : lines)
            print(QStringLiteral("    ") + line);
        for (const QString &box : outcome.boxes)
            print(QStringLiteral("    box: ") + QString(box).replace(u'\n', u'|'));
        return false;
    }

private:
    /// The tests of whoever can't read the size of a pixel are those of a screen that was never
    /// calibrated. Of the file itself the same is wanted as ever, so that the lack is told.
    Outcome withoutPixels() const
    {
        Plan plan = m_plan;
        plan.before.remove(screenFile);
        plan.measures = false;
        Outcome outcome = carryOut(plan);
        outcome.before = m_reference.before;
        outcome.files[screenFile] = m_reference.files.value(screenFile);
        return outcome;
    }

    static bool ofReport(const faultyDisk::Call &call)
    {
        return call.path.find(".pdf") != std::string::npos ||
               (call.path.starts_with("Archives/") && call.path.ends_with(faultyDisk::nameless));
    }

    QString nameOf(Way way, std::size_t number) const
    {
        const faultyDisk::Call &call = calls().at(number);
        return QStringLiteral("%1, call %2 (%3 %4), %5")
            .arg(m_plan.name, QString::number(number), QLatin1String(faultyDisk::nameOf(call.kind)),
                 QString::fromStdString(call.path), QLatin1String(faultyDisk::nameOf(way)));
    }

    const Plan m_plan;
    const Outcome m_reference;
};

struct Wishes
{
    QString plan;
    QString call;        ///< empty: all
    qsizetype share = 0; ///< 0: all
    unsigned seed = 1;
    qsizetype part = 0;
    qsizetype parts = 1;
    bool owners = false;
    QString smallDisk;
};

Wishes wishesOf(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Whole visits on a disk that fails."));
    parser.addHelpOption();
    parser.addOptions(
        {{u"share"_qs, u"Try so many of all cases, drawn by the seed; none of the report."_qs,
          u"N"_qs},
         {u"seed"_qs, u"Of the draw."_qs, u"N"_qs, u"1"_qs},
         {u"part"_qs, u"Try the I-th of N parts, from 1."_qs, u"I/N"_qs},
         {u"plan"_qs, u"Try this visit alone."_qs, u"NAME"_qs},
         {u"call"_qs, u"Try this call alone."_qs, u"N"_qs},
         {u"owners"_qs, u"Try files and folders of somebody else, by a real user; needs root."_qs},
         {u"small-disk"_qs, u"Try a real disk without room: a small one, for this alone."_qs,
          u"DIR"_qs}});
    parser.process(application);
    Wishes wishes;
    wishes.plan = parser.value(u"plan"_qs);
    wishes.share = parser.value(u"share"_qs).toLongLong();
    wishes.seed = parser.value(u"seed"_qs).toUInt();
    const QStringList part = parser.value(u"part"_qs).split(u'/');
    if (part.size() == 2) {
        wishes.part = part.at(0).toLongLong() - 1;
        wishes.parts = std::max(1LL, part.at(1).toLongLong());
    }
    wishes.call = parser.value(u"call"_qs);
    wishes.owners = parser.isSet(u"owners"_qs);
    wishes.smallDisk = parser.value(u"small-disk"_qs);
    return wishes;
}

QList<Case> casesOf(const Series &series, const Wishes &wishes)
{
    if (!wishes.smallDisk.isEmpty())
        return series.everyRoom(wishes.smallDisk);
    return wishes.owners ? series.everyOwner() : series.everyCall();
}

/// One line that says why, if this can't be tried here.
QString refusal(const Wishes &wishes)
{
    constexpr qint64 small = 64 << 20;
    if (!wishes.smallDisk.isEmpty() && QStorageInfo(wishes.smallDisk).bytesTotal() > small)
        return QStringLiteral("%1 isn't a small disk, and would be filled").arg(wishes.smallDisk);
    if (wishes.owners && ::getuid() != 0)
        return QStringLiteral("only root can be somebody else");
    return {};
}

/// Plays the visits that are wanted on a whole disk. Empty if one comes out otherwise each time.
std::vector<Series> seriesOf(const Wishes &wishes)
{
    const bool all = wishes.share == 0 && !wishes.owners && wishes.smallDisk.isEmpty();
    const QList<Plan> plans = Plan::all();
    std::vector<Series> series;
    for (const Plan &plan : plans) {
        if (wishes.plan.isEmpty() ? plan.report && !all : plan.name != wishes.plan)
            continue;
        const Series &added = series.emplace_back(plan);
        if (!added.knowsEveryFile() || (all && !added.isRepeatable())) {
            print(plan.name + QStringLiteral(" comes out otherwise when it is repeated"));
            return {};
        }
    }
    return series;
}

using Cases = std::vector<std::pair<const Series *, Case>>;

Cases select(const std::vector<Series> &series, const Wishes &wishes)
{
    Cases cases;
    for (const Series &each : series) {
        const QList<Case> wanted = casesOf(each, wishes);
        for (const Case &one : wanted) {
            if (wishes.call.isEmpty() || wishes.call.toULongLong() == one.fault.call)
                cases.emplace_back(&each, one);
        }
    }
    if (wishes.share > 0) {
        std::mt19937 dice(wishes.seed);
        std::shuffle(cases.begin(), cases.end(), dice);
        cases.resize(std::min(cases.size(), std::size_t(wishes.share)));
    }
    return cases;
}

void printCount(const QString &name, const Count &count)
{
    print(QStringLiteral("%1 %2 %3").arg(name, -24).arg(count.tried, 6).arg(count.failed, 6));
}

/// True if nothing was found.
bool stand(const Cases &cases, const Wishes &wishes)
{
    std::map<QString, Count> counts;
    Count sum;
    for (auto i = std::size_t(wishes.part); i < cases.size(); i += std::size_t(wishes.parts)) {
        const auto &[series, one] = cases.at(i);
        Count &count = counts[way(one)];
        const int failed = series->stands(one) ? 0 : 1;
        for (Count *each : {&count, &sum}) {
            ++each->tried;
            each->failed += failed;
        }
    }
    for (const auto &[name, count] : counts)
        printCount(name, count);
    printCount(QStringLiteral("all"), sum);
    return sum.failed == 0 && sum.tried > 0;
}

int run(const Wishes &wishes)
{
    if (const QString reason = refusal(wishes); !reason.isEmpty()) {
        print(reason);
        return 2;
    }
    QElapsedTimer clock;
    clock.start();
    const std::vector<Series> series = seriesOf(wishes);
    const bool well = stand(select(series, wishes), wishes);
    print(QStringLiteral("%1 s").arg(clock.elapsed() / 1000));
    return well ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(dropRemarks);
    startup::prepareEnvironment();
    QCoreApplication::setAttribute(
        Qt::AA_ShareOpenGLContexts); // the report's view wants it so early
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false); // one visit follows another
    return run(wishesOf(application));
}
