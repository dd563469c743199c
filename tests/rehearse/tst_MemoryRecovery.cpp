#include "Rehearsed.h"

#include <QTest>

/// What is known of a simulated patient comes back in the scores of the working memory task.
class tst_MemoryRecovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theScoresAreThoseThatTheScatterImplies();
    void practiceAndTheSmallestDistanceAreAllowedFor();
    void anotherPatientWouldBeNoticed_data();
    void anotherPatientWouldBeNoticed();

private:
    Rehearsed m_folder;
};

namespace {

constexpr char known[] = R"({"memory": {"first": {"spread": 3, "growth": 1.25},
                                        "last": {"spread": 2, "growth": 1.1},
                                        "practice": 0, "confusions": 0,
                                        "answerTime": {"mean": 300, "spread": 0}}})";
/// A quarter of the clicks lies nearer than a millimetre.
constexpr char practising[] = R"({"memory": {"first": {"spread": 1.5, "growth": 1.5},
                                             "last": {"spread": 2, "growth": 1},
                                             "practice": 0.3, "confusions": 0,
                                             "answerTime": {"mean": 300, "spread": 0}}})";

/// The tests in a folder, their scores compared with those that this patient would have.
Rehearsed::Run compare(const Rehearsed &folder, const QString &name, const QByteArray &observer,
                       const QStringList &arguments = {})
{
    return Rehearsed::execute(
        QStringLiteral(KELMORAN_PYTHON),
        QStringList{QStringLiteral("-B"), QStringLiteral(KELMORAN_WITNESSES "/memory_recovery.py"),
                    folder.path(name), folder.write(QStringLiteral("observer.json"), observer)} +
            arguments);
}

/// The same, played before.
Rehearsed::Run play(const Rehearsed &folder, const QString &name, const QByteArray &observer,
                    int tests)
{
    QDir().mkpath(folder.path(name));
    return compare(folder, name, observer,
                   {QStringLiteral("--play"), QStringLiteral(KELMORAN_REHEARSE),
                    QStringLiteral("--tests"), QString::number(tests)});
}

} // namespace

void tst_MemoryRecovery::initTestCase()
{
    const auto run = play(m_folder, QStringLiteral("known"), known, 200);
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.out.count('\n'), 6);
}

void tst_MemoryRecovery::theScoresAreThoseThatTheScatterImplies()
{
    const auto run = compare(m_folder, QStringLiteral("known"), known);
    QVERIFY2(run.code == 0, (run.out + run.error).constData());
}

void tst_MemoryRecovery::practiceAndTheSmallestDistanceAreAllowedFor()
{
    const auto run = play(m_folder, QStringLiteral("practising"), practising, 40);
    QVERIFY2(run.code == 0, (run.out + run.error).constData());
}

void tst_MemoryRecovery::anotherPatientWouldBeNoticed_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<QByteArray>("other");
    QTest::newRow("growth") << QByteArray("1.25") << QByteArray("1.3");
    QTest::newRow("first spread") << QByteArray("\"spread\": 3") << QByteArray("\"spread\": 3.5");
    QTest::newRow("last spread") << QByteArray("\"spread\": 2") << QByteArray("\"spread\": 2.3");
    QTest::newRow("practice") << QByteArray("\"practice\": 0") << QByteArray("\"practice\": 0.1");
}

void tst_MemoryRecovery::anotherPatientWouldBeNoticed()
{
    QFETCH(QByteArray, part);
    QFETCH(QByteArray, other);
    const QByteArray observer = QByteArray(known).replace(part, other);
    QVERIFY(observer != known);
    const auto run = compare(m_folder, QStringLiteral("known"), observer);
    QVERIFY2(run.code == 1, (run.out + run.error).constData());
    QCOMPARE(run.out.count('\n'), 6);
}

QTEST_GUILESS_MAIN(tst_MemoryRecovery)
#include "tst_MemoryRecovery.moc"
