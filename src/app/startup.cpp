#include "startup.h"

#include "Messages.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>
#include <QtGlobal>

#include <chrono>
#include <unistd.h>

namespace startup {
namespace {
constexpr QLatin1String takeover(".rmlock");

/// The toolkit takes a dead program's lock over under a second lock, and waits for that one half a
/// minute if its owner was killed before it had put its name in. The system knows whether it is
/// held.
void freeTakeover()
{
    QString name = QString::fromLatin1(lockName) + takeover;
    for (; QFile::exists(name); name += takeover) {
        QLockFile lock(name);
        if (!lock.getLockInfo(nullptr, nullptr, nullptr))
            lock.removeStaleLockFile();
    }
}
} // namespace

void prepareEnvironment()
{
    // The reports are rendered by a browser engine, whose sandbox can't run as root.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qEnvironmentVariableIsSet("DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb");
        qInfo("Using X11: under Wayland a program can't place the pointer.");
    }
}

bool takeDataRoot(QLockFile &lock)
{
    lock.setStaleLockTime(std::chrono::milliseconds::zero()); // only a dead owner's lock is stale
    freeTakeover();
    if (lock.tryLock() || lock.error() != QLockFile::LockFailedError)
        return true;
    // A lock that names nobody was cut short by a kill or a power failure. The system knows whether
    // it is held.
    if (!lock.getLockInfo(nullptr, nullptr, nullptr) && lock.removeStaleLockFile() &&
        lock.tryLock())
        return true;
    messages::warning(nullptr, QCoreApplication::translate("Kelmoran", "Error"),
                      QCoreApplication::translate(
                          "Kelmoran", "Kelmoran is already running with the same data folders."));
    return false;
}

} // namespace startup
