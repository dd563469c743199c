#include "HeldKeys.h"
#include "Kelmoran.h"
#include "languages.h"
#include "resources.h"
#include "startup.h"

#include <QApplication>
#include <QIcon>
#include <QLockFile>
#include <QTranslator>

#include <malloc.h>

namespace {
/// Blocks of so many bytes go back to the system when they are let go. It begins with this bound,
/// but would raise it with the first picture of a report; left in the heap, the next ones would
/// break it up, which then grows all day.
constexpr int largeBlock = 128 * 1024;
} // namespace

int main(int argc, char *argv[])
{
    mallopt(M_MMAP_THRESHOLD, largeBlock);
    startup::prepareEnvironment();
    QCoreApplication::setAttribute(
        Qt::AA_ShareOpenGLContexts); // the report's view wants it so early
    QApplication application(argc, argv);
    HeldKeys heldKeys;
    application.installEventFilter(&heldKeys);
    initResources();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/Kelmoran/Icons/Kelmoran_icone.png")));

    QTranslator translator;
    QTranslator toolkitTranslator;
    loadToolkitTexts(toolkitTranslator, selectLanguage(translator));
    QCoreApplication::installTranslator(&toolkitTranslator);
    QCoreApplication::installTranslator(&translator);

    QLockFile lock(QString::fromLatin1(startup::lockName));
    if (!startup::takeDataRoot(lock))
        return 1;

    Kelmoran window;
    window.show();
    return QApplication::exec();
}
