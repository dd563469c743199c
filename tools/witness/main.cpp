// kelmoran-witness: stamps what changes on a screen, and presses keys at told moments. It knows
// nothing of the programs that draw there.

#include "Options.h"
#include "Witness.h"
#include "selfTest.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

enum Code { Done = 0, Failed = 1, BadArguments = 2 };

int finish(const QString &error, Code code)
{
    if (error.isEmpty())
        return Done;
    std::fprintf(stderr, "kelmoran-witness: %s\n", qPrintable(error));
    return code;
}

QString watch(const Options &options)
{
    QString error;
    const auto desk = Desk::open(error);
    if (!desk)
        return error;
    return Witness(*desk, options.places, options.errands, options.seed).run();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const Options options = Options::parse(QCoreApplication::arguments());
    if (options.wish == Options::Wish::Complain)
        return finish(options.text, BadArguments);
    if (options.wish == Options::Wish::Help) {
        std::fputs(qPrintable(options.text), stdout);
        return Done;
    }
    const bool granted = moment::askForPriority();
    std::printf("# real-time priority %s\n", granted ? "granted" : "refused");
    return finish(options.wish == Options::Wish::SelfTest ? selfTest::run(options.rounds)
                                                          : watch(options),
                  Failed);
}
