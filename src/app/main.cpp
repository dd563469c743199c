#include "HeldKeys.h"
#include "Kelmoran.h"
#include "languages.h"
#include "resources.h"
#include "startup.h"

#include <QApplication>
#include <QIcon>
#include <QLockFile>
#include <QTranslator>

int main(int argc, char *argv[])
{
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
