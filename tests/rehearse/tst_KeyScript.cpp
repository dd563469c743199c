#include "KeyScript.h"

#include <QTest>

class tst_KeyScript : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyActionIsRead();
    void commentsAndEmptyLinesAreNothing();
    void aLateAnswerHasATimeOfItsOwn();
    void whatCannotBeUnderstoodIsRefused_data();
    void whatCannotBeUnderstoodIsRefused();
};

namespace {
QList<KeyScript::Line> lines(const QByteArray &text)
{
    QString error;
    const auto script = KeyScript::parse(text, error);
    if (!script)
        qFatal("%s", qPrintable(error));
    return script->lines;
}
} // namespace

void tst_KeyScript::everyActionIsRead()
{
    using Action = KeyScript::Action;
    const auto read =
        lines("1 4 P\n2 4 E 50\r\n3 6 Escape\n4 3 early 120\n5\t4  late 4000\n6 0 S 7");
    const QList<Action> actions{Action::Pause, Action::Error, Action::Escape,
                                Action::Early, Action::Late,  Action::Guides};
    const QList<int> stages{4, 4, 6, 3, 4, 0};
    const QList<int> times{0, 50, 0, 120, 4000, 7};
    QCOMPARE(read.size(), actions.size());
    for (qsizetype i = 0; i < read.size(); ++i) {
        QCOMPARE(read.at(i).trial, int(i) + 1);
        QCOMPARE(read.at(i).stage, stages.at(i));
        QVERIFY(read.at(i).action == actions.at(i));
        QCOMPARE(read.at(i).ms, times.at(i));
    }
}

void tst_KeyScript::commentsAndEmptyLinesAreNothing()
{
    QCOMPARE(lines("").size(), 0);
    QCOMPARE(lines("# a pause\n\n   \n7 4 P # at the seventh\n").size(), 1);
}

void tst_KeyScript::aLateAnswerHasATimeOfItsOwn()
{
    QCOMPARE(lines("1 4 late").constFirst().ms, int(KeyScript::late));
    QCOMPARE(lines("1 4 early").constFirst().ms, 0);
}

void tst_KeyScript::whatCannotBeUnderstoodIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char *name, const char *text, const char *complaint) {
        QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(complaint);
    };
    row("too few words", "1 4 P\n3 4\n", "line 2: not \"trial stage action [ms]\"");
    row("too many words", "1 4 P 5 6", "line 1: not \"trial stage action [ms]\"");
    row("trial 0", "0 4 P", "line 1: \"0\" is no trial number");
    row("no trial", "first 4 P", "line 1: \"first\" is no trial number");
    row("stage 7", "1 7 P", "line 1: \"7\" is no stage, 0 to 6");
    row("no stage", "1 -1 P", "line 1: \"-1\" is no stage, 0 to 6");
    row("a small p", "1 4 p", "line 1: \"p\" is none of P, E, S, Escape, early and late");
    row("a negative time", "1 4 P -1", "line 1: \"-1\" is no time in ms");
}

void tst_KeyScript::whatCannotBeUnderstoodIsRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, complaint);
    QString error;
    QVERIFY(!KeyScript::parse(text, error));
    QCOMPARE(error, complaint);
}

QTEST_GUILESS_MAIN(tst_KeyScript)
#include "tst_KeyScript.moc"
