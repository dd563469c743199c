#include "DataRoot.h"
#include "resultFiles.h"
#include "rows.h"
#include "tables.h"

#include <QBuffer>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace resultFiles;

namespace {

/// What the end of a test files, in its order.
QList<Failure> fileScores(int task, const QString &patient, const QByteArray &validRows,
                          const QByteArray &scoreRow, QFile &valid, QFile &result)
{
    createArchive(patient);
    return appendValidRows(validRows, valid) + appendScores(task, patient, scoreRow, result);
}

constexpr QLatin1String trialLog("Results/output.csv");
constexpr QLatin1String validLog("Results/valid-output.csv");
constexpr QLatin1String scores("Results/results_T2.csv");
constexpr QLatin1String key("Martin Anne 30.12.1951");
constexpr QLatin1String archive("Archives/Martin Anne 30.12.1951");
constexpr QLatin1String
    patientScores("Archives/Martin Anne 30.12.1951/results_T2_Martin Anne 30.12.1951.csv");

QByteArray header()
{
    return tables::_headerArchive;
}

QByteArray header2()
{
    return rows::_headerResult_T2;
}

/// A device that takes so many bytes and fails then.
class FailingDevice : public QIODevice
{
public:
    explicit FailingDevice(qint64 room)
        : m_room(room)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    QByteArray taken;

protected:
    qint64 readData(char *, qint64) override { return -1; }

    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 part = std::min(size, m_room - taken.size());
        if (part <= 0) {
            setErrorString(QStringLiteral("the disk is full"));
            return -1;
        }
        taken.append(data, part);
        return part;
    }

private:
    qint64 m_room;
};

/// While this lives no file can grow beyond so many bytes, as on a disk that runs full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
        : m_formerHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerHandler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_formerHandler)(int);
    rlimit m_former{};
};

QStringList namesOf(const QList<Failure> &failures)
{
    QStringList names;
    for (const Failure &failure : failures)
        names.append(failure.fileName);
    return names;
}

QList<Failure> fileAll(const QByteArray &validRows, const QByteArray &scoreRow)
{
    QFile valid;
    QFile result;
    QList<Failure> failures = fileScores(2, key, validRows, scoreRow, valid, result);
    Q_ASSERT(!valid.isOpen() && !result.isOpen());
    return failures;
}

} // namespace

class tst_resultFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_root = std::make_unique<DataRoot>(); }
    void cleanup() { m_root.reset(); }

    void theStartMakesTheTrialLogWithItsHeader();
    void theStartLeavesAnExistingTrialLog_data();
    void theStartLeavesAnExistingTrialLog();
    void theStartSaysNothingWhenTheTrialLogCannotBeMade();
    void theStartNeverLeavesATrialLogWithoutItsHeader();
    void aRowIsInTheFileBeforeTheLogIsClosed();
    void theTrialLogIsOnlyAppendedTo();
    void theTrialLogGetsNoHeaderFromATest();
    void aTrialLogThatIsOpenIsOpenedAnew();
    void aTrialLogThatCannotBeOpenedSaysWhy();
    void halfALineIsFollowedByAFreshOne();
    void aRowOutsideTheTestPhaseIsDroppedWithoutAWord();
    void aRowThatDoesNotFitIsTakenBack();
    void aLogThatIsDeletedIsToldAndGoesOn_data();
    void aLogThatIsDeletedIsToldAndGoesOn();
    void aLogWhoseFolderIsMovedAwayKeepsItsRows();
    void aLogThatIsReplacedIsToldAndGoesOn();
    void aLogThatIsLostBehindItsLastRowIsTold();
    void aClosedTrialLogHoldsItsRows();
    void theEndOfATestFilesEverything();
    void aSecondTestWritesNoSecondHeader();
    void everyTaskHasItsFilesAndItsHeader_data();
    void everyTaskHasItsFilesAndItsHeader();
    void aDeletedOrEmptyFileGetsItsHeaderAgain();
    void halfALineInAScoreFileIsFollowedByAFreshOne();
    void noValidRowsStillMakeTheFileWithItsHeader();
    void anOddKeyStaysInTheArchives_data();
    void anOddKeyStaysInTheArchives();
    void aFileThatFailsIsToldAndTheOthersAreWritten_data();
    void aFileThatFailsIsToldAndTheOthersAreWritten();
    void withoutTheArchiveTheOtherFilesAreWritten();
    void scoresThatDoNotFitAreTakenBack();
    void aDeviceThatFailsSaysWhy_data();
    void aDeviceThatFailsSaysWhy();
    void aDeviceTakesAllBytesInParts();

private:
    std::unique_ptr<DataRoot> m_root;
};

void tst_resultFiles::theStartMakesTheTrialLogWithItsHeader()
{
    createTrialLog();
    QCOMPARE(m_root->bytes(trialLog), header());
    QVERIFY(!m_root->exists(validLog));
}

void tst_resultFiles::theStartLeavesAnExistingTrialLog_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("with rows") << header() + "a;b\n";
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("without a header") << QByteArray("a;b\n");
}

void tst_resultFiles::theStartLeavesAnExistingTrialLog()
{
    QFETCH(QByteArray, before);
    m_root->write(trialLog, before);
    createTrialLog();
    QCOMPARE(m_root->bytes(trialLog), before);
}

void tst_resultFiles::theStartSaysNothingWhenTheTrialLogCannotBeMade()
{
    const Boxes boxes; // fails on any box
    m_root->block(trialLog);
    createTrialLog();
    m_root->block(QStringLiteral("Results"));
    createTrialLog();
    QVERIFY(m_root->bytes(trialLog).isNull());
}

void tst_resultFiles::theStartNeverLeavesATrialLogWithoutItsHeader()
{
    {
        const FullDisk disk(8);
        createTrialLog();
    }
    QVERIFY(!m_root->exists(trialLog));
    createTrialLog();
    QCOMPARE(m_root->bytes(trialLog), header());
}

void tst_resultFiles::aRowIsInTheFileBeforeTheLogIsClosed()
{
    createTrialLog();
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), header() + "a;1\n");
    QCOMPARE(appendRow(log, "a;2\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), header() + "a;1\na;2\n");
}

void tst_resultFiles::theTrialLogIsOnlyAppendedTo()
{
    m_root->write(trialLog, header() + "a;1\n");
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(closeLog(log), QString());
    QCOMPARE(m_root->bytes(trialLog), header() + "a;1\n");
}

void tst_resultFiles::theTrialLogGetsNoHeaderFromATest()
{
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), QByteArray("a;1\n"));
}

void tst_resultFiles::aTrialLogThatIsOpenIsOpenedAnew()
{
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;2\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), QByteArray("a;1\na;2\n"));
}

void tst_resultFiles::aTrialLogThatCannotBeOpenedSaysWhy()
{
    m_root->block(trialLog);
    QFile log;
    QVERIFY(!openTrialLog(log).isEmpty());
    QVERIFY(!log.isOpen());
    m_root->unblock(trialLog);
    QCOMPARE(openTrialLog(log), QString());
}

void tst_resultFiles::halfALineIsFollowedByAFreshOne()
{
    m_root->write(trialLog, header() + "a;1\na;kil");
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;3\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), header() + "a;1\na;kil\na;3\n");
}

void tst_resultFiles::aRowOutsideTheTestPhaseIsDroppedWithoutAWord()
{
    createTrialLog();
    QFile log(QStringLiteral("../Results/output.csv"));
    QCOMPARE(appendRow(log, "a;interrupted\n"), QString());
    QCOMPARE(closeLog(log), QString());
    QCOMPARE(m_root->bytes(trialLog), header());
}

void tst_resultFiles::aRowThatDoesNotFitIsTakenBack()
{
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    {
        const FullDisk disk(8);
        QCOMPARE(appendRow(log, "a;much too long\n"), QStringLiteral("File too large"));
    }
    QCOMPARE(m_root->bytes(trialLog), QByteArray("a;1\n"));
    QCOMPARE(appendRow(log, "a;3\n"), QString());
    QCOMPARE(closeLog(log), QString());
    QCOMPARE(m_root->bytes(trialLog), QByteArray("a;1\na;3\n"));
}

void tst_resultFiles::aLogThatIsDeletedIsToldAndGoesOn_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("newHeader");
    QTest::newRow("trials") << QString(trialLog) << header();
    QTest::newRow("timing") << QStringLiteral("Results/timing.csv") << rows::timingHeader();
}

void tst_resultFiles::aLogThatIsDeletedIsToldAndGoesOn()
{
    QFETCH(const QString, path);
    QFETCH(const QByteArray, newHeader);
    QFile log;
    QCOMPARE(path == trialLog ? openTrialLog(log) : openTimingLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QVERIFY(QFile::remove(m_root->path(path)));
    QCOMPARE(appendRow(log, "a;2\n"), QStringLiteral("No such file or directory"));
    QCOMPARE(appendRow(log, "a;3\n"), QString());
    QCOMPARE(closeLog(log), QString());
    QCOMPARE(m_root->bytes(path), newHeader + "a;2\na;3\n");
}

void tst_resultFiles::aLogWhoseFolderIsMovedAwayKeepsItsRows()
{
    m_root->write(trialLog, header());
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QVERIFY(QDir().rename(m_root->path(QStringLiteral("Results")),
                          m_root->path(QStringLiteral("away"))));
    const QString missing = QStringLiteral("No such file or directory");
    QCOMPARE(appendRow(log, "a;1\n"), missing);
    QCOMPARE(appendRow(log, "a;2\n"), missing);
    QCOMPARE(closeLog(log), missing);
    QCOMPARE(m_root->bytes(QStringLiteral("away/output.csv")), header() + "a;1\na;2\n");
}

void tst_resultFiles::aLogThatIsReplacedIsToldAndGoesOn()
{
    m_root->write(trialLog, header());
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    const QString other = m_root->path(QStringLiteral("Results/edited.csv"));
    m_root->write(QStringLiteral("Results/edited.csv"), header() + "by hand");
    QVERIFY(QFile::remove(m_root->path(trialLog)) && QFile::rename(other, m_root->path(trialLog)));
    QVERIFY(!appendRow(log, "a;1\n").isEmpty());
    QCOMPARE(appendRow(log, "a;2\n"), QString());
    QCOMPARE(closeLog(log), QString());
    QCOMPARE(m_root->bytes(trialLog), header() + "by hand\na;1\na;2\n");
}

void tst_resultFiles::aLogThatIsLostBehindItsLastRowIsTold()
{
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QVERIFY(QFile::remove(m_root->path(trialLog)));
    QCOMPARE(closeLog(log), QStringLiteral("No such file or directory"));
}

void tst_resultFiles::aClosedTrialLogHoldsItsRows()
{
    QFile log;
    QCOMPARE(openTrialLog(log), QString());
    QCOMPARE(appendRow(log, "a;1\n"), QString());
    QCOMPARE(closeLog(log), QString());
    QVERIFY(!log.isOpen());
    QCOMPARE(appendRow(log, "a;2\n"), QString());
    QCOMPARE(m_root->bytes(trialLog), QByteArray("a;1\n"));
}

void tst_resultFiles::theEndOfATestFilesEverything()
{
    QCOMPARE(namesOf(fileAll("a;1\na;2\n", "a;412\n")), QStringList());
    QCOMPARE(m_root->bytes(validLog), header() + "a;1\na;2\n");
    QCOMPARE(m_root->bytes(patientScores), header2() + "a;412\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;412\n");
    QVERIFY(!m_root->exists(trialLog));
}

void tst_resultFiles::aSecondTestWritesNoSecondHeader()
{
    fileAll("a;1\n", "a;412\n");
    QCOMPARE(namesOf(fileAll("a;2\n", "a;398\n")), QStringList());
    QCOMPARE(m_root->bytes(validLog), header() + "a;1\na;2\n");
    QCOMPARE(m_root->bytes(patientScores), header2() + "a;412\na;398\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;412\na;398\n");
}

void tst_resultFiles::everyTaskHasItsFilesAndItsHeader_data()
{
    QTest::addColumn<int>("task");
    QTest::addColumn<QByteArray>("firstLine");
    QTest::newRow("visual perception") << 1 << QByteArray(rows::_headerResult_T1);
    QTest::newRow("attention") << 2 << QByteArray(rows::_headerResult_T2);
    QTest::newRow("movement detection") << 3 << QByteArray(rows::_headerResult_T3);
    QTest::newRow("memory") << 4 << QByteArray(rows::_headerResult_T4);
}

void tst_resultFiles::everyTaskHasItsFilesAndItsHeader()
{
    QFETCH(int, task);
    QFETCH(QByteArray, firstLine);
    createArchive(key);
    QFile log;
    QCOMPARE(namesOf(appendScores(task, key, "a;b\n", log)), QStringList());
    QCOMPARE(m_root->bytes(QStringLiteral("Results/results_T%1.csv").arg(task)),
             firstLine + "a;b\n");
    QCOMPARE(m_root->bytes(
                 QStringLiteral("%1/results_T%2_%3.csv").arg(archive, QString::number(task), key)),
             firstLine + "a;b\n");
}

void tst_resultFiles::aDeletedOrEmptyFileGetsItsHeaderAgain()
{
    fileAll("a;1\n", "a;412\n");
    QVERIFY(QFile::remove(m_root->path(validLog)));
    m_root->write(scores, "");
    QCOMPARE(namesOf(fileAll("a;2\n", "a;398\n")), QStringList());
    QCOMPARE(m_root->bytes(validLog), header() + "a;2\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;398\n");
    QCOMPARE(m_root->bytes(patientScores), header2() + "a;412\na;398\n");
}

void tst_resultFiles::halfALineInAScoreFileIsFollowedByAFreshOne()
{
    m_root->write(scores, header2() + "a;kil");
    QCOMPARE(namesOf(fileAll("a;2\n", "a;398\n")), QStringList());
    QCOMPARE(m_root->bytes(scores), header2() + "a;kil\na;398\n");
}

void tst_resultFiles::noValidRowsStillMakeTheFileWithItsHeader()
{
    QCOMPARE(namesOf(fileAll({}, "a;412\n")), QStringList());
    QCOMPARE(m_root->bytes(validLog), header());
}

void tst_resultFiles::anOddKeyStaysInTheArchives_data()
{
    QTest::addColumn<QString>("patientKey");
    QTest::addColumn<QString>("file");
    QTest::newRow("slashes") << QStringLiteral("../../Out A 01.01.1950")
                             << QStringLiteral("Archives/.._.._Out A 01.01.1950/"
                                               "results_T2_.._.._Out A 01.01.1950.csv");
    QTest::newRow("the parent") << QStringLiteral("..")
                                << QStringLiteral("Archives/_/results_T2__.csv");
    QTest::newRow("letters") << QStringLiteral("Şahin Œ 01.01.1950")
                             << QStringLiteral("Archives/Şahin Œ 01.01.1950/"
                                               "results_T2_Şahin Œ 01.01.1950.csv");
    QTest::newRow("a per cent sign")
        << QStringLiteral("%1 %2 01.01.1950")
        << QStringLiteral("Archives/%1 %2 01.01.1950/results_T2_%1 %2 01.01.1950.csv");
}

void tst_resultFiles::anOddKeyStaysInTheArchives()
{
    QFETCH(QString, patientKey);
    QFETCH(QString, file);
    QFile valid;
    QFile result;
    QCOMPARE(namesOf(fileScores(2, patientKey, "a;1\n", "a;412\n", valid, result)), QStringList());
    QCOMPARE(m_root->bytes(file), header2() + "a;412\n");
}

void tst_resultFiles::aFileThatFailsIsToldAndTheOthersAreWritten_data()
{
    QTest::addColumn<QStringList>("blocked");
    QTest::addColumn<QStringList>("told");
    const QString patientName = QStringLiteral("results_T2_Martin Anne 30.12.1951.csv");
    QTest::newRow("valid rows") << QStringList{validLog}
                                << QStringList{QStringLiteral("valid-output.csv")};
    QTest::newRow("patient's scores") << QStringList{patientScores} << QStringList{patientName};
    QTest::newRow("all scores") << QStringList{scores}
                                << QStringList{QStringLiteral("results_T2.csv")};
    QTest::newRow("all three") << QStringList{validLog, patientScores, scores}
                               << QStringList{QStringLiteral("valid-output.csv"), patientName,
                                              QStringLiteral("results_T2.csv")};
}

void tst_resultFiles::aFileThatFailsIsToldAndTheOthersAreWritten()
{
    QFETCH(QStringList, blocked);
    QFETCH(QStringList, told);
    for (const QString &file : std::as_const(blocked))
        m_root->block(file);
    const QList<Failure> failures = fileAll("a;1\n", "a;412\n");
    QCOMPARE(namesOf(failures), told);
    for (const Failure &failure : failures)
        QVERIFY(!failure.error.isEmpty());
    for (const QLatin1String file : {validLog, patientScores, scores}) {
        if (!blocked.contains(file))
            QVERIFY(m_root->bytes(file).count('\n') == 2);
    }
}

void tst_resultFiles::withoutTheArchiveTheOtherFilesAreWritten()
{
    m_root->write(archive, "a file in the folder's place");
    QCOMPARE(namesOf(fileAll("a;1\n", "a;412\n")),
             QStringList{QStringLiteral("results_T2_Martin Anne 30.12.1951.csv")});
    QCOMPARE(m_root->bytes(validLog), header() + "a;1\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;412\n");
}

void tst_resultFiles::scoresThatDoNotFitAreTakenBack()
{
    fileAll("a;1\n", "a;412\n");
    {
        const FullDisk disk(rlim_t(header2().size()) + 10);
        const QList<Failure> failures = fileAll({}, "a;398.000000\n");
        QCOMPARE(failures.size(), 2);
        QCOMPARE(failures.first().error, QStringLiteral("File too large"));
    }
    QCOMPARE(m_root->bytes(patientScores), header2() + "a;412\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;412\n");
    QVERIFY(QFile::remove(m_root->path(scores)));
    {
        const FullDisk disk(20); // not even the header fits
        fileAll({}, "a;398.000000\n");
    }
    QCOMPARE(m_root->bytes(scores), QByteArray(""));
    fileAll({}, "a;377\n");
    QCOMPARE(m_root->bytes(scores), header2() + "a;377\n");
}

void tst_resultFiles::aDeviceThatFailsSaysWhy_data()
{
    QTest::addColumn<qint64>("room");
    QTest::newRow("at once") << qint64(0);
    QTest::newRow("in the middle") << qint64(2);
    QTest::newRow("before the line feed") << qint64(3);
}

void tst_resultFiles::aDeviceThatFailsSaysWhy()
{
    QFETCH(qint64, room);
    FailingDevice device(room);
    QCOMPARE(append(device, "a;1\n"), QStringLiteral("the disk is full"));
}

void tst_resultFiles::aDeviceTakesAllBytesInParts()
{
    FailingDevice device(4);
    QCOMPARE(append(device, "a;1\n"), QString());
    QCOMPARE(device.taken, QByteArray("a;1\n"));
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly | QIODevice::Append));
    QCOMPARE(append(buffer, "a;1\n"), QString());
    QCOMPARE(append(buffer, {}), QString());
    QCOMPARE(append(buffer, "a;2\n"), QString());
    QCOMPARE(buffer.data(), QByteArray("a;1\na;2\n"));
}

QTEST_APPLESS_MAIN(tst_resultFiles)

#include "tst_resultFiles.moc"
