#include "Rehearsed.h"
#include "TrialRow.h"

#include <QTest>

/// The scores of whole working memory tests, worked out a second time in another language from the
/// rows of the trials alone.
class tst_RecomputedMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theScoresFollowFromTheTrials_data();
    void theScoresFollowFromTheTrials();
    void distancesWithAnotherSeparatorAreRead();
    void theScoresCarryTheNumberOfTheAttentionTest();
    void aBrokenOffTestLeavesItsNumber();
    void aWrongNumberIsFound_data();
    void aWrongNumberIsFound();

private:
    Rehearsed m_sound; ///< a test in which all numbers agree
};

namespace {

constexpr QLatin1String task("test4");

constexpr char exact[] = R"({"memory": {"first": {"spread": 0}, "last": {"spread": 0},
                                        "confusions": 0}})";
constexpr char confused[] = R"({"memory": {"confusions": 0.4, "practice": 0.3}})";
constexpr char forgetful[] = R"({"memory": {"first": {"spread": 4, "growth": 1.5},
                                            "last": {"spread": 12, "growth": 0.8},
                                            "practice": -0.2}})";
constexpr char near[] = R"({"memory": {"first": {"spread": 0.8}, "last": {"spread": 0.6}}})";
constexpr char marks[] = "1 4 E\n3 0 P 100\n4 2 P 1600\n5 3 P 200\n7 4 P\n9 4 E 100\n12 4 E\n"
                         "13 4 E 1900\n20 0 S\n21 1 P 9\n25 4 late 9000\n28 4 E\n36 4 P 1800\n";
constexpr char manyStrikes[] = "1 4 E\n2 4 E\n3 4 E\n5 4 E\n8 4 E\n9 4 E\n10 4 E\n16 4 E\n22 4 E\n";

Rehearsed::Run recompute(const Rehearsed &rehearsed)
{
    return Rehearsed::execute(QStringLiteral(KELMORAN_PYTHON),
                              {QStringLiteral("-B"),
                               QStringLiteral(KELMORAN_WITNESSES "/recompute_memory.py"),
                               rehearsed.path(QStringLiteral("root"))});
}

} // namespace

void tst_RecomputedMemory::initTestCase()
{
    QCOMPARE(m_sound.playTask(task, m_sound.observer(forgetful)).code, 0);
    const auto recomputed = recompute(m_sound);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMemory::theScoresFollowFromTheTrials_data()
{
    QTest::addColumn<QByteArray>("observer");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("arguments");
    const auto row = [](const char *name, const char *observer, const char *keys,
                        const char *arguments) {
        QTest::addRow("%s, %s", name, arguments)
            << QByteArray(observer) << QByteArray(keys) << QString::fromLatin1(arguments);
    };
    row("typical", "{}", "", "--seed 1 --repeat 2");
    row("confused", confused, "", "--seed 2 --instruction --training");
    row("pauses and strikes", "{}", marks, "--seed 3");
    row("forgetful, pauses and strikes", forgetful, marks, "--seed 4 --training");
    row("forgetful, many strikes", forgetful, manyStrikes, "--seed 6 --repeat 2");
    row("all clicks at their places", exact, "", "--seed 7");
    row("many clicks nearer than a millimetre", near, marks, "--seed 8");
    row("fewer trials than are fitted", confused, marks, "--seed 10 --number 29");
    row("more trials than the table holds", "{}", manyStrikes, "--seed 12 --number 40");
}

void tst_RecomputedMemory::theScoresFollowFromTheTrials()
{
    QFETCH(QByteArray, observer);
    QFETCH(QByteArray, keys);
    QFETCH(QString, arguments);
    const Rehearsed rehearsed;
    const auto played = rehearsed.playTask(
        task, arguments.split(u' ') + rehearsed.observer(observer) + rehearsed.keys(keys));
    QVERIFY2(played.code == 0, played.error.constData());
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMemory::distancesWithAnotherSeparatorAreRead()
{
    const QByteArray locale = qgetenv("LC_ALL");
    const Rehearsed rehearsed;
    qputenv("LC_ALL", "de_DE.UTF-8");
    const auto played = rehearsed.playTask(task, rehearsed.keys(marks));
    qputenv("LC_ALL", locale);
    QVERIFY2(played.code == 0, played.error.constData());
    QVERIFY(rehearsed.trials().constLast().at(25).contains(','));
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMemory::theScoresCarryTheNumberOfTheAttentionTest()
{
    const Rehearsed rehearsed;
    const QStringList number = {QStringLiteral("--number"), QStringLiteral("5")};
    QCOMPARE(rehearsed.play(number).code, 0);
    QCOMPARE(rehearsed.play(number).code, 0);
    QCOMPARE(rehearsed.playTask(task, number).out.split(';').at(column::Session), QByteArray("2"));
    QCOMPARE(rehearsed.play(number + rehearsed.keys("3 2 Escape")).code, 4);
    QCOMPARE(rehearsed.playTask(task, number).out.split(';').at(column::Session), QByteArray("2"));
    QCOMPARE(rehearsed.play(number).code, 0);
    QCOMPARE(rehearsed.playTask(task, number).out.split(';').at(column::Session), QByteArray("3"));
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMemory::aBrokenOffTestLeavesItsNumber()
{
    const Rehearsed rehearsed;
    const QStringList number = {QStringLiteral("--number"), QStringLiteral("5")};
    QCOMPARE(rehearsed.playTask(task, number).code, 0);
    for (const char *escape : {"1 2 Escape", "3 4 Escape"}) { // without a row, and with two
        QCOMPARE(rehearsed.playTask(task, rehearsed.keys(escape)).code, 4);
        const auto recomputed = recompute(rehearsed);
        QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
    }
    QCOMPARE(rehearsed.playTask(task, number).code, 0);
    QCOMPARE(rehearsed.trials().constLast().at(column::Session), QByteArray("2"));
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMemory::aWrongNumberIsFound_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QList<QByteArray>>("complaints");
    QTest::newRow("a rank") << QStringLiteral("Results/output.csv") << QList<int>{10}
                            << QList<QByteArray>{"isn't that of rank"};
    QTest::newRow("a sector") << QStringLiteral("Results/output.csv") << QList<int>{28}
                              << QList<QByteArray>{"the valid rows are those of no test"};
    QTest::newRow("a valid row") << QStringLiteral("Results/valid-output.csv") << QList<int>{27}
                                 << QList<QByteArray>{"the valid rows are those of no test"};
    QTest::newRow("the scores") << QStringLiteral("Results/results_T4.csv")
                                << QList<int>{6, 10, 11, 12, 13, 14, 15, 16, 17, 18}
                                << QList<QByteArray>{"carry the number", " trials, ",
                                                     "average_f is ",    "average_l is ",
                                                     "t4_slope is ",     "t4_intercept is ",
                                                     "t4_r2 is ",        "t4l_slope is ",
                                                     "t4l_r2 is ",       "t4_error is "};
    QTest::newRow("the session on the list")
        << QStringLiteral("Parameters/patients_list.txt") << QList<int>{7}
        << QList<QByteArray>{"stands on the list"};
}

void tst_RecomputedMemory::aWrongNumberIsFound()
{
    QFETCH(QString, file);
    QFETCH(QList<int>, columns);
    QFETCH(QList<QByteArray>, complaints);
    const QByteArray sound = m_sound.bytes(file);
    QList<QByteArray> lines = sound.split('\n');
    QByteArray &last = lines[lines.size() - 2];
    QList<QByteArray> fields = last.split(';');
    for (const int column : columns) {
        QByteArray &field = fields[column];
        field.front() = field.front() == '5' ? '7' : '5';
    }
    last = fields.join(';');
    m_sound.write(QStringLiteral("root/") + file, lines.join('\n'));
    const auto recomputed = recompute(m_sound);
    m_sound.write(QStringLiteral("root/") + file, sound);
    QCOMPARE(recomputed.code, 1);
    for (const QByteArray &complaint : complaints)
        QVERIFY2(recomputed.out.contains(complaint), recomputed.out.constData());
}

QTEST_GUILESS_MAIN(tst_RecomputedMemory)
#include "tst_RecomputedMemory.moc"
