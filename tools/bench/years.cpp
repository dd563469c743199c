// What the program costs after years of use: the start, the patients' box, and a test, with so many
// patients and so many rows. It prints the median time of each step; under callgrind it does each
// step once and has its instructions dumped under the step's name.
//
//   kelmoran-years PATIENTS ROWS

#include "Kelmoran.h"
#include "Messages.h"
#include "Result.h"
#include "SessionStore.h"
#include "Test2.h"
#include "VirtualTime.h"
#include "dataFolders.h"
#include "patientsList.h"
#include "printed.h"
#include "rows.h"
#include "tables.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cstdio>
#include <functional>
#include <memory>

#include <valgrind/callgrind.h>

namespace {

constexpr int trialsOfATest = 96; // every so many rows one row of scores
constexpr int number = 2;         // trials of the tests that are measured here

/// A patient's name; the boxes and the list have them in the same order.
QString lastName(int patient)
{
    return QStringLiteral("Doe%1").arg(patient, 6, 10, QLatin1Char('0'));
}

QString key(int patient)
{
    return lastName(patient) + QStringLiteral(" Jane 01.02.1950");
}

void write(const char *folder, const char *name, const QByteArray &bytes)
{
    QFile file(dataFolders::path(folder, QString::fromLatin1(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s can't be written", name);
}

QByteArray listOf(int patients)
{
    QByteArray list;
    for (int i = 0; i < patients; ++i)
        list += "Mrs.;" + lastName(i).toUtf8() + ";Jane;01.02.1950;0;0;0;0;0;0;0;0;0;0\r\n";
    return list;
}

/// The result files after so many trials.
void layOutRows(int rows)
{
    const rows::Identity who{QStringLiteral("A"), QStringLiteral("Mrs."), QStringLiteral("Doe"),
                             QStringLiteral("Jane"), QDate(1950, 2, 1)};
    const QDateTime stamp(QDate(2025, 1, 6), QTime(9, 0, 0, 123), Qt::UTC);
    const QByteArray row = rows::trialT2(who, {2, 3, stamp, 1, 17},
                                         {6, QStringLiteral("287"), QStringLiteral("NE")}, 0);
    const QByteArray trials = tables::_headerArchive + row.repeated(rows);
    for (const char *name : {"output.csv", "valid-output.csv", "timing.csv"})
        write(dataFolders::results, name, trials);
    write(dataFolders::results, "results_T2.csv",
          rows::_headerResult_T2 + row.repeated(rows / trialsOfATest));
}

/// A data root after years, its bin/ being the working directory: a line and a folder for every
/// patient, a calibrated screen, the rows.
class Root
{
public:
    Root(int patients, int rows)
    {
        if (!QDir(m_folder.path()).mkdir(QStringLiteral("bin")) ||
            !QDir::setCurrent(m_folder.filePath(QStringLiteral("bin"))))
            qFatal("no folder to work in");
        dataFolders::create();
        write(dataFolders::parameters, patientsList::name, listOf(patients));
        write(dataFolders::parameters, "screen.pix", QByteArray("\0\0\1\16\0\0\1\16\0\0\0\0", 12));
        for (int i = 0; i < patients; ++i)
            QDir().mkdir(dataFolders::archiveOf(key(i)));
        layOutRows(rows);
    }
    ~Root() { QDir::setCurrent(QDir::tempPath()); }
    Root(const Root &) = delete;
    Root &operator=(const Root &) = delete;

private:
    QTemporaryDir m_folder;
};

/// The steps in the order in which they were taken first, each with its times.
class Steps
{
public:
    void take(const char *name, const std::function<void()> &step)
    {
        CALLGRIND_ZERO_STATS;
        QElapsedTimer clock;
        clock.start();
        step();
        const double taken = double(clock.nsecsElapsed()) / 1e6;
        CALLGRIND_DUMP_STATS_AT(name);
        for (Times &times : m_steps) {
            if (qstrcmp(times.name, name) == 0) {
                times.ms.push_back(taken);
                return;
            }
        }
        m_steps.push_back({name, {taken}});
    }

    void print() const
    {
        for (const Times &times : m_steps)
            std::printf("%s;%.3f\n", times.name, printed::percentile(times.ms, 0.5));
    }

private:
    struct Times
    {
        const char *name;
        std::vector<double> ms;
    };
    std::vector<Times> m_steps;
};

/// The assessor at the main window, and a patient who answers at once.
class Desk
{
public:
    explicit Desk(Steps &steps)
        : m_steps(steps)
    {
    }

    void start()
    {
        m_window.reset();
        m_steps.take("start", [this] {
            m_window = std::make_unique<Kelmoran>();
            m_window->show();
            QCoreApplication::processEvents();
        });
        m_time.advance(500);
        m_task = m_window->findChild<Test2 *>();
        m_task->result().setPrinting(false);
        m_box = find<QComboBox>("cob_patientName");
        for (const char *box : {"cb_withInstruction", "cb_withTraining"})
            find<QCheckBox>(box)->setChecked(false);
        find<QCheckBox>("cb_parameters")->setChecked(true);
    }

    void openBox()
    {
        m_steps.take("the box opened", [this] {
            m_box->showPopup();
            QCoreApplication::processEvents();
        });
        m_box->hidePopup();
    }

    void choose()
    {
        m_box->setCurrentIndex(0);
        m_steps.take("choice of the last", [this] { QTest::keyClick(m_box, Qt::Key_End); });
    }

    void registerPatient(int patient)
    {
        SessionStore &store = sessionStore();
        store.gender = QStringLiteral("Mrs.");
        store.lastName = lastName(patient);
        store.firstName = QStringLiteral("Jane");
        store.dob = QDate(1950, 2, 1);
        store.newPatient = true;
        m_steps.take("registration", [this] { m_time.advance(200); });
    }

    void rewrite(int patient)
    {
        m_steps.take("rewrite of a line", [&] {
            const QString error = patientsList::rewritePatientLine(
                key(patient), {{patientsList::SessionT1 + 1, ++m_session}});
            if (!error.isEmpty())
                qFatal("%s", qPrintable(error));
        });
    }

    void test()
    {
        m_steps.take("start of a test", [this] { find("pb_test2")->click(); });
        auto *trials = m_task->findChild<QLineEdit *>(QStringLiteral("le_number"));
        trials->setText(QString::number(number));
        QTest::keyClick(trials, Qt::Key_Return);
        m_task->findChild<QPushButton *>(QStringLiteral("pb_go"))->click();
        endTrial("end of a trial");
        endTrial("end of a test");
        m_steps.take("report left", [this] {
            m_task->findChild<QPushButton *>(QStringLiteral("pb_mainMenu"))->click();
            m_time.advance(600);
        });
    }

private:
    template <typename Widget = QPushButton>
    Widget *find(const char *name) const
    {
        auto *found = m_window->findChild<Widget *>(QString::fromLatin1(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }

    /// From the answer to the next trial or to the two buttons.
    void endTrial(const char *name)
    {
        constexpr int target = 4;
        constexpr int closing = 600; // ms
        while (m_task->stage() != target)
            m_time.advance(1);
        m_time.advance(250);
        m_steps.take(name, [this] {
            QTest::keyClick(m_task, Qt::Key_Space);
            m_time.advance(closing);
        });
    }

    Steps &m_steps;
    VirtualTime m_time{VirtualTime::Mode::Stepped};
    messages::Handling m_boxes{[](QWidget *, const messages::Message &) {}};
    std::unique_ptr<Kelmoran> m_window;
    Test2 *m_task = nullptr;
    QComboBox *m_box = nullptr;
    int m_session = 0;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int patients = arguments.value(1).toInt();
    if (patients < 1 || arguments.size() != 3) {
        std::fprintf(stderr, "usage: kelmoran-years PATIENTS ROWS\n");
        return 2;
    }
    const Root root(patients, arguments.at(2).toInt());
    Steps steps;
    Desk desk(steps);
    const int rounds = RUNNING_ON_VALGRIND ? 1 : 5;
    for (int round = 0; round < rounds; ++round) {
        desk.start();
        desk.openBox();
        desk.registerPatient(patients + round);
        desk.choose();
        desk.rewrite(patients + round);
        desk.test();
    }
    if (!RUNNING_ON_VALGRIND)
        steps.print();
    return 0;
}
