#include "Rehearsed.h"

#include <QTest>

/// The scores of whole movement detection tests, worked out a second time in another language from
/// the rows of the trials alone.
class tst_RecomputedMovement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theScoresFollowFromTheTrials_data();
    void theScoresFollowFromTheTrials();
    void aBrokenOffTestLeavesItsNumber();
    void aWrongNumberIsFound_data();
    void aWrongNumberIsFound();

private:
    Rehearsed m_sound; ///< a test in which all numbers agree
};

namespace {

constexpr QLatin1String task("test3");

/// Ill-sighted: a third of the trials has to be repeated.
constexpr char erring[] = R"({"movement": {"misses": 0.15, "unknown": 0.1,
                                           "rightDirections": 0.85, "obliqueCost": 200}})";
constexpr char fast[] = R"({"movement": {"reactionTime": {"mean": 450, "spread": 150}}})";
constexpr char alike[] = R"({"movement": {"reactionTime": {"mean": 800, "spread": 0},
                                          "obliqueCost": 0, "answer": "mouse"}})";
constexpr char marks[] = "2 4 P 30\n3 5 P 20\n4 5 E\n5 5 E 200\n9 3 late 5000\n10 3 late 5001\n"
                         "14 5 P 100\n20 3 early 20\n21 1 early 9\n39 5 E 50\n41 4 P\n";

Rehearsed::Run recompute(const Rehearsed &rehearsed)
{
    return Rehearsed::execute(QStringLiteral(KELMORAN_PYTHON),
                              {QStringLiteral("-B"),
                               QStringLiteral(KELMORAN_WITNESSES "/recompute_movement.py"),
                               rehearsed.path(QStringLiteral("root"))});
}

} // namespace

void tst_RecomputedMovement::initTestCase()
{
    QCOMPARE(m_sound.playTask(task, m_sound.observer(erring)).code, 0);
    const auto recomputed = recompute(m_sound);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMovement::theScoresFollowFromTheTrials_data()
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
    row("erring", erring, "", "--seed 2 --instruction --training");
    row("pauses and strikes", "{}", marks, "--seed 3");
    row("erring, pauses and strikes", erring, marks, "--seed 4 --training");
    row("fixed duration", "{}", marks, "--seed 5 --fixed-duration");
    row("erring under fixed duration", erring, "", "--seed 6 --fixed-duration");
    row("faster than the limit begins", fast, "", "--seed 7");
    row("all times alike", alike, "", "--seed 8");
    row("one trial", "{}", "", "--seed 9 --number 1");
    row("fewer trials than are fitted", erring, marks, "--seed 10 --number 29");
    row("more trials than the table holds", "{}", "", "--seed 12 --number 90");
}

void tst_RecomputedMovement::theScoresFollowFromTheTrials()
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

void tst_RecomputedMovement::aBrokenOffTestLeavesItsNumber()
{
    const Rehearsed rehearsed;
    const QStringList number = {QStringLiteral("--number"), QStringLiteral("5")};
    QCOMPARE(rehearsed.playTask(task, number).code, 0);
    for (const char *escape : {"1 2 Escape", "3 5 Escape"}) { // without a row, and with two
        QCOMPARE(rehearsed.playTask(task, rehearsed.keys(escape)).code, 4);
        const auto recomputed = recompute(rehearsed);
        QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
    }
    QCOMPARE(rehearsed.playTask(task, number).out.split(';').at(6), QByteArray("2"));
    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedMovement::aWrongNumberIsFound_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QList<QByteArray>>("complaints");
    QTest::newRow("a rank") << QStringLiteral("Results/output.csv") << QList<int>{10}
                            << QList<QByteArray>{"isn't that of rank"};
    QTest::newRow("a valid row") << QStringLiteral("Results/valid-output.csv") << QList<int>{22}
                                 << QList<QByteArray>{"the valid rows are those of no test"};
    QTest::newRow("the scores") << QStringLiteral("Results/results_T3.csv")
                                << QList<int>{10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}
                                << QList<QByteArray>{" trials, ",    "t3_rt is ", "t3_error is ",
                                                     "t3_slope is ", "t3_r2 is ", "oblique is ",
                                                     "cardinal is ", "left is ",  "right is ",
                                                     "top is ",      "bottom is "};
    QTest::newRow("the session on the list")
        << QStringLiteral("Parameters/patients_list.txt") << QList<int>{6}
        << QList<QByteArray>{"stands on the list"};
}

void tst_RecomputedMovement::aWrongNumberIsFound()
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
        field.back() = field.back() == '5' ? '7' : '5';
    }
    last = fields.join(';');
    m_sound.write(QStringLiteral("root/") + file, lines.join('\n'));
    const auto recomputed = recompute(m_sound);
    m_sound.write(QStringLiteral("root/") + file, sound);
    QCOMPARE(recomputed.code, 1);
    for (const QByteArray &complaint : complaints)
        QVERIFY2(recomputed.out.contains(complaint), recomputed.out.constData());
}

QTEST_GUILESS_MAIN(tst_RecomputedMovement)
#include "tst_RecomputedMovement.moc"
