#include "Visit.h"

#include "Examiner.h"
#include "Kelmoran.h"
#include "KeyPresser.h"
#include "Messages.h"
#include "Patient.h"
#include "Result.h"
#include "Screen.h"
#include "SessionStore.h"
#include "TaskDialog.h"
#include "TaskTimer.h"
#include "VirtualTime.h"
#include "hands.h"
#include "resources.h"
#include "rows.h"
#include "startup.h"
#include "tables.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QDirIterator>
#include <QEventLoop>
#include <QFile>
#include <QLineEdit>
#include <QLockFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int second = 1000; // ms
const QString played = QStringLiteral("played");

QByteArray withRows(const QByteArray &header)
{
    return header + "1;somebody else's row\n2;another\n";
}

/// A data root after some years: other patients before and behind the one who comes.
Files usedRoot(const QByteArray &patients)
{
    const auto name = [](const char *path) { return QString::fromLatin1(path); };
    return {
        {name("Parameters/patients_list.txt"), patients},
        {name("Parameters/screen.pix"), QByteArray("\0\0\1\x04\0\0\1\x05\0\0\0\0", 12)},
        {name("Parameters/assessor.txt"), "Dr.;Old;Record;Ward;Street;1;Town;Country\n"},
        {name("Results/output.csv"), withRows(tables::_headerArchive)},
        {name("Results/timing.csv"), withRows(rows::timingHeader())},
        {name("Results/valid-output.csv"), withRows(tables::_headerArchive)},
        {name("Results/results_T1.csv"), withRows(rows::_headerResult_T1)},
        {name("Results/results_T2.csv"), withRows(rows::_headerResult_T2)},
        {name("Results/results_T3.csv"), withRows(rows::_headerResult_T3)},
        {name("Results/results_T4.csv"), withRows(rows::_headerResult_T4)},
        {name("Archives/Abel Ann 01.01.1950/results_T2_Abel Ann 01.01.1950.csv"), "an archive\n"},
    };
}

constexpr char ours[] = "Mrs.;REHEARSAL;Patient;01.01.1960;4;0;2;0;0;0;0;67;50;150\r\n";
constexpr char first[] = "Mr.;Abel;Ann;01.01.1950;1;2;3;4;5;6;7;8;9;10\r\n";
constexpr char last[] = "Mrs.;Z\xc3\xbcnd;Zo\xc3\xab;31.12.1999;0;0;0;0;0;0;0;0;0;0\r\n";
constexpr char behindTheEnd[] = "\r\nMr.;Kept;Aside;02.02.1972;0;0;0;0;0;0;0;0;0;0\r\n";

QByteArray listWithOurs()
{
    return QByteArray(first) + ours + last + behindTheEnd;
}

Plan plan(const char *name, int task, int number, const char *keys)
{
    Plan made;
    made.name = QString::fromLatin1(name);
    made.options.task = task;
    if (number > 0)
        made.options.number = number;
    made.options.frequency = 1;
    QString error;
    const auto script = KeyScript::parse(keys, error);
    if (!script)
        qFatal("%s: %s", name, qPrintable(error));
    made.options.keys = *script;
    made.before = usedRoot(listWithOurs());
    return made;
}

Files filesIn(const QString &root)
{
    Files files;
    QDirIterator all(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        QFile file(all.next());
        const bool readable = file.open(QIODevice::ReadOnly);
        files.insert(QDir(root).relativeFilePath(file.fileName()),
                     readable ? file.readAll() : QByteArray("unreadable"));
    }
    return files;
}

void layOut(const QString &root, const Files &files)
{
    if (!QDir(root).mkpath(QStringLiteral("bin")))
        qFatal("no data root");
    for (auto it = files.cbegin(); it != files.cend(); ++it) {
        QFile file(root + u'/' + it.key());
        if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly) ||
            file.write(it.value()) != it.value().size())
            qFatal("%s can't be written", qPrintable(it.key()));
    }
}

/// Leaves so much room on the disk.
void fill(const QString &path, qint64 room)
{
    QFile filler(path);
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        qFatal("no room for a filler");
    const QByteArray page(4096, '\0');
    while (filler.write(page) == page.size()) {
    }
    filler.resize(std::max<qint64>(0, filler.size() - room));
}

/// While one lives the process is that of a user who owns what lies in this folder, and no more.
class Somebody
{
public:
    explicit Somebody(const QString &folder)
    {
        own(folder);
        QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            own(all.next());
        if (::seteuid(nobody) != 0)
            qFatal("this needs root");
    }
    ~Somebody()
    {
        if (::seteuid(0) != 0)
            qFatal("no way back");
    }
    Somebody(const Somebody &) = delete;
    Somebody &operator=(const Somebody &) = delete;

private:
    static constexpr uid_t nobody = 65534;

    static void own(const QString &path)
    {
        if (::chown(QFile::encodeName(path).constData(), nobody, nobody) != 0)
            qFatal("this needs root");
    }
};

/// Makes it root's: a file that can only be read or not even that, a folder that can be entered.
void close(const QString &path, bool readable)
{
    const QByteArray name = QFile::encodeName(path);
    const bool isFolder = QFileInfo(path).isDir();
    const mode_t mode = isFolder ? 0755 : readable ? 0644 : 0600;
    if (::seteuid(0) != 0 || ::chown(name.constData(), 0, 0) != 0 ||
        ::chmod(name.constData(), mode) != 0 || ::seteuid(65534) != 0)
        qFatal("%s can't be closed", name.constData());
}

/// The assessor at the desk, at moments told from the program's start.
class Day
{
public:
    Day(const Plan &plan, Outcome &outcome)
        : m_plan(plan)
        , m_outcome(outcome)
        , m_boxes([this](QWidget *, const messages::Message &message) { note(message.text); })
    {
    }

    void spend()
    {
        QLockFile lock(QString::fromLatin1(startup::lockName));
        startup::takeDataRoot(lock);
        m_window = std::make_unique<Kelmoran>();
        for (const TaskDialog *task : m_window->findChildren<TaskDialog *>())
            task->result().setPrinting(m_plan.report);
        m_window->show();
        m_outcome.startCalls = faultyDisk::count();
        calibrate();
        changeAssessor();
        if (m_plan.registers) {
            registerPatient(30 * second);
            registerPatient(40 * second); // who isn't in the box now is registered once more
        }
        waitUntil(60 * second);
        m_outcome.chosen =
            find<QComboBox>("cob_patientName")->findText(m_plan.options.patient.key()) >= 0;
        m_outcome.deskCalls = faultyDisk::count();
        m_outcome.ended = !m_outcome.chosen || test();
        m_window->closeApp();
        m_window.reset();
    }

private:
    template <typename Widget>
    Widget *find(const char *name) const
    {
        return m_window->findChild<Widget *>(QString::fromLatin1(name));
    }

    void note(const QString &text)
    {
        m_outcome.boxes.append(text);
        if (!m_window)
            return;
        for (const TaskDialog *task : m_window->findChildren<TaskDialog *>()) {
            if (task->stage() != 0)
                m_outcome.early.append(text);
        }
    }

    void waitUntil(int ms)
    {
        QEventLoop loop;
        TaskTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &TaskTimer::timeout, &loop, &QEventLoop::quit);
        timer.start(int(ms - m_began.msecsTo(TimeSource::current().currentDateTime())));
        loop.exec();
    }

    static void enter(const char *field, const QString &text)
    {
        if (QWidget *edit = Screen::usable(QLatin1String(field))) {
            hands::type(edit, text);
            hands::pressOn(edit, Qt::Key_Return);
        }
    }

    static void click(const char *button)
    {
        if (QWidget *found = Screen::usable(QLatin1String(button)))
            hands::click(found);
    }

    void choose(const char *action) const { find<QAction>(action)->trigger(); }

    /// At the first start both lines, later the frequency alone.
    void calibrate()
    {
        waitUntil(2 * second);
        if (m_plan.measures) {
            enter("le_horzPitch", QStringLiteral("270"));
            enter("le_vertPitch", QStringLiteral("135"));
        } else if (QWidget *line = Screen::visible(QLatin1String("le_horzPitch"))) {
            line->window()->close();
        }
        if (QWidget *still = Screen::visible(QLatin1String("le_vertPitch")))
            still->window()->close();
        waitUntil(10 * second);
        choose("actionPreferences");
        if (auto *box = qobject_cast<QComboBox *>(Screen::usable(QLatin1String("cob_screenFreq"))))
            box->setCurrentIndex(1);
        click("pb_ok");
    }

    void changeAssessor()
    {
        waitUntil(20 * second);
        choose("actionAssessor");
        for (const char *field : {"le_lastName", "le_institution"}) {
            if (QWidget *edit = Screen::usable(QLatin1String(field)))
                hands::type(edit, QStringLiteral("New"));
        }
        if (!m_plan.keepsRecord)
            click("pb_ok");
        click("pb_cancel"); // still there if the record couldn't be written
    }

    void registerPatient(int when)
    {
        waitUntil(when);
        const Options::Patient &patient = m_plan.options.patient;
        if (find<QComboBox>("cob_patientName")->findText(patient.key()) >= 0)
            return;
        choose("actionAdd_patient");
        if (auto *box = qobject_cast<QComboBox *>(Screen::usable(QLatin1String("cob_genre"))))
            box->setCurrentIndex(1);
        enter("le_lastName", patient.lastName);
        enter("le_firstName", patient.firstName);
        if (auto *date = qobject_cast<QDateEdit *>(Screen::usable(QLatin1String("de_dateOfBirth"))))
            date->setDate(patient.dateOfBirth);
        click("pb_ok");
    }

    /// From the choice of the patient to "Main Menu". False if the test came to a standstill.
    bool test()
    {
        Options options = m_plan.options;
        options.frequency.reset(); // has been set
        Screen screen;
        const std::unique_ptr<Patient> patient = Patient::forTask(options, screen);
        KeyPresser keys(options.keys, *patient);
        for (const TaskDialog *task : m_window->findChildren<TaskDialog *>())
            keys.watch(task);
        Examiner examiner(options, *m_window, screen);
        QEventLoop loop;
        const auto end = [&](const QString &how) {
            m_outcome.progress = how;
            loop.quit();
        };
        QObject::connect(&examiner, &Examiner::blockBegins, &keys, &KeyPresser::beginBlock);
        QObject::connect(&examiner, &Examiner::left, &loop, [&end] { end(played); });
        QObject::connect(&examiner, &Examiner::brokenOff, &loop, end);
        QObject::connect(&examiner, &Examiner::refused, &loop, end);
        TaskTimer overlong;
        overlong.start(2 * 60 * 60 * second);
        QObject::connect(&overlong, &TaskTimer::timeout, &loop, &QEventLoop::quit);
        examiner.playTest();
        loop.exec();
        if (m_plan.report && m_outcome.progress == played)
            awaitReport();
        waitUntil(int(m_began.msecsTo(TimeSource::current().currentDateTime())) + 2 * second);
        return !m_outcome.progress.isEmpty();
    }

    /// In real time: the page is laid out and printed by other processes.
    void awaitReport()
    {
        QEventLoop loop;
        bool made = false;
        const auto end = [&made, &loop] {
            made = true;
            loop.quit();
        };
        for (const TaskDialog *task : m_window->findChildren<TaskDialog *>())
            QObject::connect(&task->result(), &Result::pdfFinished, &loop, end);
        QTimer::singleShot(30 * second, &loop, &QEventLoop::quit);
        loop.exec();
        if (!made)
            m_outcome.progress.clear();
    }

    const Plan &m_plan;
    Outcome &m_outcome;
    const messages::Handling m_boxes;
    const QDateTime m_began = TimeSource::current().currentDateTime();
    std::unique_ptr<Kelmoran> m_window;
};

void startAgain(Outcome &outcome)
{
    // A lock that couldn't be taken away names this process, which lives on.
    QFile::remove(QString::fromLatin1(startup::lockName));
    sessionStore() = SessionStore();
    const messages::Handling boxes([&outcome](QWidget *, const messages::Message &message) {
        outcome.nextBoxes.append(message.text);
    });
    QLockFile lock(QString::fromLatin1(startup::lockName));
    startup::takeDataRoot(lock);
    Kelmoran window;
    outcome.nextPatients =
        window.findChild<QComboBox *>(QStringLiteral("cob_patientName"))->count();
}

} // namespace

QList<Plan> Plan::all()
{
    Plan firstStart = plan("first start", 2, 3, "");
    firstStart.before.clear();
    firstStart.registers = true;
    Plan registration = plan("registration", 2, 3, "1 4 P 100");
    registration.before = usedRoot(QByteArray(first) + last + behindTheEnd);
    registration.registers = true;
    Plan report = plan("report", 2, 3, "");
    report.report = true;
    report.before.insert(QStringLiteral("Languages/En/Kelmoran_Task2_en.html"),
                         "<html><body><p>v_lastName</p></body></html>\n");
    Plan twoDisks = plan("two disks", 2, 3, "");
    twoDisks.twoDisks = true;
    Plan brokenOff = plan("broken off", 2, 6, "2 4 P 100\n4 2 Escape\n");
    brokenOff.keepsRecord = true;
    return {firstStart,
            registration,
            report,
            twoDisks,
            plan("attention", 2, 6, "2 4 P 100\n4 4 E\n"),
            brokenOff,
            plan("vision", 5, 0, "2 5 P 100\n4 5 E\n"),
            plan("unstable", 1, 6, ""),
            plan("movement", 3, 4, "2 5 P 100\n3 5 E\n"),
            plan("memory", 4, 4, "2 4 P 100\n3 4 E\n")};
}

Outcome carryOut(const Plan &plan, const Fault &fault, const Place &place)
{
    // In memory, where there is such a place: a real disk would be waited for.
    const QString memory = QStringLiteral("/dev/shm");
    const QString usual = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    const QString among = place.folder.isEmpty() ? usual : place.folder;
    const QTemporaryDir folder(among + QStringLiteral("/visit"));
    const QString root = folder.filePath(QStringLiteral("root"));
    const QString away = folder.filePath(QStringLiteral("away"));
    const QString former = QDir::currentPath();
    layOut(root, plan.before);
    if (!QDir::setCurrent(root + QStringLiteral("/bin")))
        qFatal("no data root");
    if (place.room)
        fill(folder.filePath(QStringLiteral("filler")), *place.room);
    std::optional<Somebody> somebody = place.closed.isEmpty()
                                           ? std::nullopt
                                           : std::optional<Somebody>(std::in_place, folder.path());
    if (somebody)
        close(root + u'/' + place.closed, place.readable);
    sessionStore() = SessionStore();
    initResources();

    Outcome outcome;
    outcome.before = plan.before;
    {
        const VirtualTime time(VirtualTime::Mode::FreeRunning, VirtualTime::defaultStart(),
                               plan.options.seed);
        const bool real = place.room || somebody;
        faultyDisk::watch(root.toStdString(), away.toStdString(),
                          real ? faultyDisk::Way::None : fault.way, fault.call, plan.twoDisks);
        Day(plan, outcome).spend();
        outcome.calls = faultyDisk::leave();
        somebody.reset();
        QFile::remove(folder.filePath(QStringLiteral("filler")));
        outcome.files = filesIn(root);
        outcome.movedAway = filesIn(away);
        startAgain(outcome);
    }
    QDir::setCurrent(former);
    return outcome;
}
