// One attention test in real time on the screen at hand: how late the intervals of the chain are,
// and what a link of it costs with its paints. It prints two tables, in ms.

#include "ChainProbe.h"
#include "Result.h"
#include "SessionStore.h"
#include "TaskTimer.h"
#include "Test2.h"
#include "dataFolders.h"
#include "patientsList.h"
#include "printed.h"
#include "resources.h"
#include "resultFiles.h"

#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace {

/// A patient who answers each target after a quarter of a second.
void answerTargets(Test2 &task, TaskTimer &reaction)
{
    reaction.setSingleShot(true);
    QObject::connect(&task, &TaskDialog::stageEntered, &reaction, [&reaction](int stage) {
        if (stage == 4)
            reaction.start(250);
    });
    QObject::connect(&reaction, &TaskTimer::timeout, &task,
                     [&task] { QTest::keyClick(&task, Qt::Key_Space); });
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    ChainProbe probe(argc, argv);
    const QString trials = probe.arguments().value(1, QStringLiteral("60"));

    const QTemporaryDir root;
    QDir(root.path()).mkdir(QStringLiteral("bin"));
    QDir::setCurrent(root.filePath(QStringLiteral("bin")));
    dataFolders::create();
    resultFiles::createTrialLog();
    patientsList::createIfMissing();
    initResources();
    sessionStore().patientName = QStringLiteral("Doe Jane 01.02.1950");

    QWidget desk;
    Test2 task(&desk);
    task.result().setPrinting(false);
    TaskTimer reaction;
    answerTargets(task, reaction);
    auto *results = task.findChild<QPushButton *>(QStringLiteral("pb_results"));

    task.goTest2(0, false, false, false, false);
    auto *number = task.findChild<QLineEdit *>(QStringLiteral("le_number"));
    number->setText(trials);
    task.toLe_number();
    if (!QTest::qWaitForWindowActive(&task))
        std::fprintf(stderr, "the window did not become active\n");
    probe.watch(task);
    task.findChild<QPushButton *>(QStringLiteral("pb_go"))->click();
    while (!results->isVisible())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    printed::line("an interval of the chain, late by", probe.lateness());
    std::vector<double> all;
    for (const auto &[link, work] : probe.work()) {
        all.insert(all.end(), work.begin(), work.end());
        printed::line(qPrintable(QStringLiteral("link %1, with its paints").arg(link)), work);
    }
    printed::line("all links", all);
    return 0;
}
