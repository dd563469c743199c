#include "Errand.h"

#include <QStringList>

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<const char *, std::uint32_t>, 7> namedKeys{{{"space", 0x20},
                                                                           {"Return", 0xFF0D},
                                                                           {"Escape", 0xFF1B},
                                                                           {"Left", 0xFF51},
                                                                           {"Up", 0xFF52},
                                                                           {"Right", 0xFF53},
                                                                           {"Down", 0xFF54}}};

/// 0 if there is no such key.
std::uint32_t keySymbol(const QString &name)
{
    for (const auto &[known, symbol] : namedKeys) {
        if (name == QLatin1String(known))
            return symbol;
    }
    const QChar letter = name.size() == 1 ? name.at(0) : QChar();
    const bool plain = (letter >= u'a' && letter <= u'z') || (letter >= u'0' && letter <= u'9');
    return plain ? letter.unicode() : 0; // these have the numbers of their characters
}

std::uint32_t buttonNumber(const QString &name)
{
    const bool known = name == u'1' || name == u'2' || name == u'3';
    return known ? name.toUInt() : 0;
}

/// Milliseconds, decimals allowed.
moment::Ns readMs(const QString &text, QString &error)
{
    bool ok = false;
    const double ms = text.toDouble(&ok);
    constexpr double longest = 60'000.0;
    if (!ok || !(ms >= 0.0 && ms <= longest)) {
        error = QStringLiteral("\"%1\" is no number of ms from 0 to 60000").arg(text);
        return 0;
    }
    return moment::Ns(ms * double(moment::perMs));
}

Errand::When readWhen(const QString &text, QString &error)
{
    if (text == QLatin1String("brighter"))
        return Errand::When::Brighter;
    if (text == QLatin1String("darker"))
        return Errand::When::Darker;
    if (text != QLatin1String("changes"))
        error = QStringLiteral("\"%1\" is none of changes, brighter, darker").arg(text);
    return Errand::When::Changes;
}

} // namespace

Press Press::parse(const QString &text, QString &error)
{
    Press press;
    press.name = text.toStdString();
    const QString name = text.section(u'=', 1);
    if (text.startsWith(QLatin1String("key="))) {
        press.symbol = keySymbol(name);
    } else if (text.startsWith(QLatin1String("button="))) {
        press.kind = Kind::Button;
        press.symbol = buttonNumber(name);
    }
    if (press.symbol == 0)
        error = QStringLiteral("\"%1\" is nothing that can be pressed").arg(text);
    return press;
}

Errand Errand::parse(const QString &text, QString &error)
{
    const QStringList words = text.simplified().split(u' ');
    if (words.size() != 4) {
        error = QStringLiteral("\"%1\" is not PLACE WHEN PRESS MS").arg(text);
        return {};
    }
    Errand errand;
    errand.place = words.at(0);
    errand.when = readWhen(words.at(1), error);
    const QStringList presses = words.at(2).split(u'|');
    for (const QString &press : presses)
        errand.presses.push_back(Press::parse(press, error));
    const QString &delay = words.at(3);
    errand.shortest = readMs(delay.section(QStringLiteral(".."), 0, 0), error);
    errand.longest = readMs(delay.section(QStringLiteral(".."), -1), error);
    if (error.isEmpty() && errand.longest < errand.shortest)
        error = QStringLiteral("\"%1\": the longest time comes second").arg(delay);
    return errand;
}

bool Errand::isFor(const QString &name, double before, double after) const
{
    const bool named = place.endsWith(u'*') ? name.startsWith(place.chopped(1)) : name == place;
    switch (when) {
    case When::Brighter:
        return named && after > before;
    case When::Darker:
        return named && after < before;
    case When::Changes:
        break;
    }
    return named;
}

moment::Ns Errand::drawDelay(std::mt19937_64 &dice) const
{
    return std::uniform_int_distribution<moment::Ns>(shortest, longest)(dice);
}

const Press &Errand::drawPress(std::mt19937_64 &dice) const
{
    return presses[std::uniform_int_distribution<std::size_t>(0, presses.size() - 1)(dice)];
}
