#include "Desk.h"
#include "resultFiles.h"

#include <QSignalSpy>

/// Patients and rows of years: what a step reads and writes of them, in bytes.
class tst_years : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStartReadsTheListOnceAndNoRow();
    void aChoiceReadsTheListOnce();
    void aRegistrationMovesNoOtherItem();
    void aTestCostsTheSameBehindAnyNumberOfRows();
};

namespace {

const char *const task2Template = "Languages/En/Kelmoran_Task2_en.html";

/// A buffer of the toolkit, and what the event loop reads to be woken: far less than what is laid
/// out.
constexpr qint64 besides = 65'536; // bytes

/// What the process has read and written so far, by calls to the system.
struct Traffic
{
    qint64 read = 0;
    qint64 written = 0;

    static Traffic now()
    {
        QFile file(QStringLiteral("/proc/self/io"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("the system doesn't count");
        Traffic traffic;
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("rchar: "))
                traffic.read = line.sliced(7).toLongLong();
            else if (line.startsWith("wchar: "))
                traffic.written = line.sliced(7).toLongLong();
        }
        return traffic;
    }

    Traffic since(const Traffic &earlier) const
    {
        return {read - earlier.read, written - earlier.written};
    }
};

/// About a megabyte.
QByteArray manyPatients()
{
    QByteArray list;
    for (int i = 10'000; i < 30'000; ++i)
        list += Desk::patient("Doe" + QByteArray::number(i));
    return list;
}

QByteArray manyRows()
{
    return QByteArray(";Mrs.;Doe;Jane;01/02/1950;2;1;06/01/2025;09:00:00.123;1;17\n")
        .repeated(100'000);
}

void isAbout(qint64 bytes, qint64 expected)
{
    QVERIFY2(bytes >= expected && bytes < expected + besides,
             qPrintable(QStringLiteral("%1 bytes").arg(bytes)));
}

/// What a test of one trial reads and writes, its report included.
Traffic testBehind(const QByteArray &rows)
{
    Desk desk;
    desk.root.write(QString::fromLatin1(task2Template), "v_l_name");
    desk.openWith(Desk::patient("Berg"));
    desk.choose(0);
    desk.playTest(); // the first one of a process reads fonts and images
    for (const char *log : {resultFiles::trialLogName, resultFiles::timingLogName,
                            resultFiles::validLogName, "results_T2.csv"})
        desk.root.write(QStringLiteral("Results/") + QString::fromLatin1(log), rows);
    const Traffic before = Traffic::now();
    desk.playTest();
    return Traffic::now().since(before);
}

} // namespace

void tst_years::aStartReadsTheListOnceAndNoRow()
{
    Desk desk;
    const QByteArray list = manyPatients();
    desk.openWith("");
    desk.root.write(Desk::listFile(), list);
    desk.root.write(QStringLiteral("Results/output.csv"), manyRows());
    const Traffic before = Traffic::now();
    desk.open();
    const Traffic start = Traffic::now().since(before);
    QCOMPARE(desk.patients()->count(), 20'000);
    isAbout(start.read, list.size());
    isAbout(start.written, 0);
}

void tst_years::aChoiceReadsTheListOnce()
{
    Desk desk;
    const QByteArray list = manyPatients();
    desk.openWith(list);
    const Traffic before = Traffic::now();
    desk.choose(desk.patients()->count() - 1);
    const Traffic choice = Traffic::now().since(before);
    QCOMPARE(sessionStore().lastName, QStringLiteral("Doe29999"));
    isAbout(choice.read, list.size());
    isAbout(choice.written, 0);
}

void tst_years::aRegistrationMovesNoOtherItem()
{
    Desk desk;
    const QByteArray list = manyPatients();
    desk.openWith(list);
    const QAbstractItemModel *items = desk.patients()->model();
    const QSignalSpy sorted(items, &QAbstractItemModel::layoutChanged);
    const QSignalSpy added(items, &QAbstractItemModel::rowsInserted);
    Desk::leaveNewPatient(QStringLiteral("Doe20000"), QStringLiteral("Bea"));
    const Traffic before = Traffic::now();
    desk.time.advance(200);
    const Traffic registration = Traffic::now().since(before);
    QCOMPARE(sorted.count(), 0);
    QCOMPARE(added.count(), 1);
    QCOMPARE(desk.patients()->currentIndex(), 10'001);
    QCOMPARE(desk.patients()->currentText(), QStringLiteral("Doe20000 Bea 02.03.1950"));
    // Once to find its end, and once to read the new line back.
    isAbout(registration.read, 2 * list.size());
    isAbout(registration.written, list.size()); // put in place in one step
}

void tst_years::aTestCostsTheSameBehindAnyNumberOfRows()
{
    const Traffic none = testBehind("a header\n");
    const Traffic many = testBehind(manyRows());
    QVERIFY2(std::abs(many.read - none.read) < besides,
             qPrintable(QStringLiteral("%1, then %2 bytes").arg(none.read).arg(many.read)));
    QVERIFY2(std::abs(many.written - none.written) < besides,
             qPrintable(QStringLiteral("%1, then %2 bytes").arg(none.written).arg(many.written)));
}

QTEST_MAIN(tst_years)
#include "tst_years.moc"
