#include "Kelmoran.h"
#include "Options.h"
#include "Rehearsal.h"
#include "SessionStore.h"
#include "VirtualTime.h"
#include "catalogue.h"
#include "languages.h"
#include "resources.h"
#include "startup.h"
#include "tables.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QTranslator>

#include <cstdio>

namespace {

void print(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

QtMessageHandler s_printMessage = nullptr;

/// The toolkit tells of what a platform without a display lacks, and the browser engine of how it
/// is set up. The one line of this program must not drown in that; what is asked for through
/// QT_LOGGING_RULES is shown.
void dropRemarks(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const bool own = qstrncmp(context.category, "kelmoran", qstrlen("kelmoran")) == 0;
    if (own || type == QtCriticalMsg || type == QtFatalMsg)
        s_printMessage(type, context, text);
}

int complain(Rehearsal::Code code, const QString &text)
{
    std::fprintf(stderr, "kelmoran-rehearse: %s\n", qPrintable(text));
    return code;
}

/// The data root with its bin/, which becomes the working directory.
bool enter(const QString &root)
{
    const QString bin = root + QStringLiteral("/bin");
    return QDir().mkpath(bin) && QDir::setCurrent(bin);
}

/// The language of the catalogues beside the program, or the one that is asked for. Without a
/// catalogue the texts stay in English, and the reports are sought in that language.
void chooseLanguage(std::optional<int> wanted, QTranslator &translator, QTranslator &toolkit)
{
    int language = selectLanguage(translator);
    if (wanted && *wanted != language) {
        language = *wanted;
        const auto number = std::size_t(language);
        // The translator lets go of what it holds, whether this catalogue is there or not.
        [[maybe_unused]] const bool loaded = loadCatalogue(
            translator, QStringLiteral("..%1kelmoran%2.qm")
                            .arg(tables::_pathLanguage.at(number), tables::_language.at(number)));
        sessionStore().language = language;
    }
    loadToolkitTexts(toolkit, language);
    QCoreApplication::installTranslator(&toolkit);
    QCoreApplication::installTranslator(&translator);
}

/// A root that another program holds is told in a box; its text is the refusal.
bool takeRoot(QLockFile &lock, QString &refusal)
{
    const messages::Handling box(
        [&](QWidget *, const messages::Message &message) { refusal = message.text; });
    return startup::takeDataRoot(lock);
}

Rehearsal::Ending rehearse(const Options &options)
{
    const VirtualTime time(VirtualTime::Mode::FreeRunning, options.start, options.seed);
    QTranslator translator;
    QTranslator toolkit;
    chooseLanguage(options.language, translator, toolkit);

    QLockFile lock(QString::fromLatin1(startup::lockName));
    QString refusal;
    if (!takeRoot(lock, refusal))
        return {Rehearsal::Refused, refusal};

    Kelmoran window;
    Rehearsal rehearsal(options, window, print);
    window.show();
    Rehearsal::Ending ending = rehearsal.run();
    window.closeApp();
    return ending;
}

} // namespace

int main(int argc, char *argv[])
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    s_printMessage = qInstallMessageHandler(dropRemarks);
    startup::prepareEnvironment();
    QCoreApplication::setAttribute(
        Qt::AA_ShareOpenGLContexts); // the report's view wants it so early
    const QApplication application(argc, argv);
    initResources();

    const Options::Parsed parsed = Options::parse(QCoreApplication::arguments());
    if (parsed.wish == Options::Wish::Help) {
        print(parsed.text.toLocal8Bit());
        return Rehearsal::Done;
    }
    if (parsed.wish == Options::Wish::Complain)
        return complain(Rehearsal::BadArguments, parsed.text);
    if (!enter(parsed.options.root))
        return complain(Rehearsal::BadArguments,
                        QStringLiteral("--root: %1 can't be made.").arg(parsed.options.root));
    const Rehearsal::Ending ending = rehearse(parsed.options);
    return ending.code == Rehearsal::Done ? int(Rehearsal::Done)
                                          : complain(ending.code, ending.text);
}
