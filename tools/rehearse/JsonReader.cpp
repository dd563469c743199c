#include "JsonReader.h"

#include <utility>

namespace {
/// A key may hold line breaks, and a complaint is one line.
QString onOneLine(QString path)
{
    for (QChar &character : path) {
        if (character.isSpace() || (!character.isPrint() && !character.isSurrogate()))
            character = u' ';
    }
    return path;
}
} // namespace

JsonReader::JsonReader(QJsonObject object, QString &error)
    : JsonReader(std::move(object), QString(), error)
{
}

JsonReader::JsonReader(QJsonObject object, const QString &path, QString &error)
    : m_object(std::move(object))
    , m_path(path)
    , m_error(error)
{
}

void JsonReader::number(const QString &key, double least, double most, double &value)
{
    const QJsonValue found = take(key);
    if (found.isUndefined())
        return;
    if (!found.isDouble())
        complain(path(key), QStringLiteral("is not a number"));
    else if (found.toDouble() < least || found.toDouble() > most)
        complain(path(key), QStringLiteral("is not between %1 and %2")
                                .arg(QString::number(least), QString::number(most)));
    else
        value = found.toDouble();
}

void JsonReader::word(const QString &key, const QStringList &words, int &value)
{
    const QJsonValue found = take(key);
    if (found.isUndefined())
        return;
    const auto index = found.isString() ? words.indexOf(found.toString()) : -1;
    if (index < 0)
        complain(path(key),
                 QStringLiteral("is not one of \"%1\"").arg(words.join(QStringLiteral("\", \""))));
    else
        value = int(index);
}

JsonReader JsonReader::object(const QString &key)
{
    const QJsonValue found = take(key);
    if (!found.isUndefined() && !found.isObject())
        complain(path(key), QStringLiteral("is not an object"));
    return {found.toObject(), path(key), m_error};
}

void JsonReader::finish()
{
    if (!m_object.isEmpty() && m_error.isEmpty())
        m_error =
            QStringLiteral("unknown key \"%1\"").arg(onOneLine(path(m_object.constBegin().key())));
}

QString JsonReader::path(const QString &key) const
{
    return m_path.isEmpty() ? key : m_path + u'.' + key;
}

QJsonValue JsonReader::take(const QString &key)
{
    QJsonValue found = m_object.value(key);
    m_object.remove(key);
    return found;
}

void JsonReader::complain(const QString &path, const QString &what)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("\"%1\" %2").arg(path, what);
}
