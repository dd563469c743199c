#include "KeyScript.h"

#include <QHash>
#include <QStringList>

namespace {

std::optional<int> number(const QString &text, int least, int most)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < least || value > most)
        return std::nullopt;
    return value;
}

std::optional<KeyScript::Action> action(const QString &word)
{
    using Action = KeyScript::Action;
    static const QHash<QString, Action> words{
        {QStringLiteral("P"), Action::Pause},     {QStringLiteral("E"), Action::Error},
        {QStringLiteral("S"), Action::Guides},    {QStringLiteral("Escape"), Action::Escape},
        {QStringLiteral("early"), Action::Early}, {QStringLiteral("late"), Action::Late}};
    const auto it = words.constFind(word);
    return it == words.constEnd() ? std::nullopt : std::optional(*it);
}

QString parseLine(const QStringList &words, KeyScript::Line &line)
{
    constexpr int mostTrials = 100'000;
    constexpr int longest = 3'600'000;
    if (words.size() < 3 || words.size() > 4)
        return QStringLiteral("not \"trial stage action [ms]\"");
    const auto trial = number(words.at(0), 1, mostTrials);
    if (!trial)
        return QStringLiteral("\"%1\" is no trial number").arg(words.at(0));
    const auto stage = number(words.at(1), 0, 6);
    if (!stage)
        return QStringLiteral("\"%1\" is no stage, 0 to 6").arg(words.at(1));
    const auto what = action(words.at(2));
    if (!what)
        return QStringLiteral("\"%1\" is none of P, E, S, Escape, early and late").arg(words.at(2));
    const auto ms = words.size() == 4
                        ? number(words.at(3), 0, longest)
                        : std::optional(*what == KeyScript::Action::Late ? KeyScript::late : 0);
    if (!ms)
        return QStringLiteral("\"%1\" is no time in ms").arg(words.at(3));
    line = {*trial, *stage, *what, *ms};
    return {};
}

} // namespace

std::optional<KeyScript> KeyScript::parse(const QByteArray &text, QString &error)
{
    KeyScript script;
    const QStringList lines = QString::fromUtf8(text).split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString content = lines.at(i).section(u'#', 0, 0).simplified();
        if (content.isEmpty())
            continue;
        Line line;
        const QString trouble = parseLine(content.split(u' '), line);
        if (!trouble.isEmpty()) {
            error = QStringLiteral("line %1: %2").arg(QString::number(i + 1), trouble);
            return std::nullopt;
        }
        script.lines.append(line);
    }
    return script;
}
