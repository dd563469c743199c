#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// Takes known keys out of a JSON object, one by one. What is missing leaves its value as it is;
/// the first thing that can't be taken becomes the complaint.
class JsonReader
{
public:
    JsonReader(QJsonObject object, QString &error);

    bool has(const QString &key) const { return m_object.contains(key); }
    void number(const QString &key, double least, double most, double &value);
    /// One of these words; the value becomes its index.
    void word(const QString &key, const QStringList &words, int &value);
    /// The object of this key, an empty one if it is missing.
    JsonReader object(const QString &key);
    /// To be called last: whatever is left is not known.
    void finish();

    /// About this object as a whole: the text follows its name.
    void complainOf(const QString &what) { complain(m_path, what); }

private:
    JsonReader(QJsonObject object, const QString &path, QString &error);
    QString path(const QString &key) const;
    QJsonValue take(const QString &key);
    void complain(const QString &path, const QString &what);

    QJsonObject m_object;
    QString m_path; ///< the keys that lead here, with points between them
    QString &m_error;
};
