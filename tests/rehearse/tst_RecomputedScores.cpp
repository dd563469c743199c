#include "Rehearsed.h"

#include <QTest>

/// The scores of whole tests, worked out a second time in another language from the rows of the
/// trials alone.
class tst_RecomputedScores : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theScoresFollowFromTheTrials_data();
    void theScoresFollowFromTheTrials();
    void aWrongScoreIsFound();
};

namespace {
constexpr char steady[] = R"({"anticipations": 0, "misses": 0})";
constexpr char erring[] = R"({"anticipations": 0.2, "misses": 0.1})";
constexpr char pauses[] = "5 4 P\n6 4 P 50\n20 4 P 700\n31 4 P\n40 4 P\n60 4 E\n70 4 E 600\n"
                          "80 3 early 100\n90 4 late\n95 4 P\n";

Rehearsed::Run recompute(const Rehearsed &rehearsed)
{
    return Rehearsed::execute(QStringLiteral(KELMORAN_PYTHON),
                              {QStringLiteral(KELMORAN_WITNESSES "/recompute_scores.py"),
                               rehearsed.path(QStringLiteral("root"))});
}
} // namespace

void tst_RecomputedScores::theScoresFollowFromTheTrials_data()
{
    QTest::addColumn<QByteArray>("observer");
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("arguments");
    const auto row = [](const char *name, const char *observer, const char *keys,
                        const char *arguments) {
        QTest::newRow(name) << QByteArray(observer) << QByteArray(keys)
                            << QString::fromLatin1(arguments);
    };
    row("without errors, seed 1", steady, "", "--seed 1");
    row("without errors, seed 2", steady, "", "--seed 2");
    row("without errors, three tests", steady, "", "--seed 3 --repeat 3");
    row("with errors, seed 4", erring, "", "--seed 4");
    row("with errors, seed 5", erring, "", "--seed 5");
    row("with pauses and strikes", steady, pauses, "--seed 6");
    row("with pauses, strikes and errors, seed 7", erring, pauses, "--seed 7");
    row("with pauses, strikes and errors, seed 8", erring, pauses, "--seed 8");
    row("fixed duration", steady, "", "--seed 9 --fixed-duration");
    row("fixed duration with errors", erring, "", "--seed 10 --fixed-duration");
    row("after instruction and training", erring, "", "--seed 11 --instruction --training");
    row("one trial", steady, "", "--seed 12 --number 1");
    row("fewer trials than are fitted", erring, "", "--seed 13 --number 30");
    row("just not enough for the fit", steady, "", "--seed 14 --number 59");
    row("one more than a row holds", steady, "", "--seed 15 --number 97");
    row("more trials than the table has rows for", erring, "", "--seed 16 --number 150");
    row("more trials than the whole table holds", steady, "", "--seed 17 --number 400");
    row("all times alike", R"({"reactionTime": {"mean": 300, "spread": 0}, "learningSlope": 0})",
        "", "--seed 18");
    row("by the left button", R"({"answer": "left button"})", "", "--seed 19");
}

void tst_RecomputedScores::theScoresFollowFromTheTrials()
{
    QFETCH(QByteArray, observer);
    QFETCH(QByteArray, keys);
    QFETCH(QString, arguments);
    const Rehearsed rehearsed;
    const auto played = rehearsed.play(
        arguments.split(u' ') +
        QStringList{QStringLiteral("--observer"),
                    rehearsed.write(QStringLiteral("observer.json"), observer),
                    QStringLiteral("--keys"), rehearsed.write(QStringLiteral("keys.txt"), keys)});
    QVERIFY2(played.code == 0, played.error.constData());

    const auto recomputed = recompute(rehearsed);
    QVERIFY2(recomputed.code == 0, (recomputed.out + recomputed.error).constData());
}

void tst_RecomputedScores::aWrongScoreIsFound()
{
    const Rehearsed rehearsed;
    QCOMPARE(rehearsed.play().code, 0);
    const QString file = QStringLiteral("Results/results_T2.csv");
    QByteArray scores = rehearsed.bytes(file);
    const auto digit = scores.lastIndexOf('\n') - 1;
    scores[digit] = scores.at(digit) == '5' ? '7' : '5';
    rehearsed.write(QStringLiteral("root/") + file, scores);

    const auto recomputed = recompute(rehearsed);
    QCOMPARE(recomputed.code, 1);
    QVERIFY2(recomputed.out.contains("score 12 is"), recomputed.out.constData());
}

QTEST_GUILESS_MAIN(tst_RecomputedScores)
#include "tst_RecomputedScores.moc"
