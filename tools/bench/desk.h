#pragma once

#include "SessionStore.h"
#include "TaskDialog.h"
#include "dataFolders.h"
#include "patientsList.h"
#include "resources.h"
#include "resultFiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

/// A desk for the benches that run a task in real time.
namespace desk {

/// Lays a data root out, with one trained patient and a calibrated screen, and works in it.
inline void prepare(const QString &root)
{
    QDir(root).mkdir(QStringLiteral("bin"));
    QDir::setCurrent(root + QStringLiteral("/bin"));
    dataFolders::create();
    resultFiles::createTrialLog();
    QFile list(QStringLiteral("../Parameters/patients_list.txt"));
    if (list.open(QIODevice::WriteOnly))
        list.write("Mrs.;Doe;Jane;01.02.1950;0;0;0;0;0;0;0;283;283;283\r\n");
    initResources();
    SessionStore &store = sessionStore();
    store.patientName = QStringLiteral("Doe Jane 01.02.1950");
    store.horzPixel = store.vertPixel = 270;
}

/// Lets the task run until it stands in this link of its chain.
inline void waitForStage(const TaskDialog &task, int stage)
{
    while (task.stage() != stage)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace desk
