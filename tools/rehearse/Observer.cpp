#include "Observer.h"

#include "Draws.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Takes known keys out of a JSON object, one by one, and keeps the first complaint.
class Reader
{
public:
    Reader(QJsonObject object, QString &error)
        : m_object(std::move(object))
        , m_error(error)
    {
    }

    bool has(const QString &key) const { return m_object.contains(key); }

    void number(const QString &key, double least, double most, double &value)
    {
        const QJsonValue found = take(key);
        if (found.isUndefined())
            return;
        if (!found.isDouble())
            complain(QStringLiteral("\"%1\" is not a number").arg(key));
        else if (found.toDouble() < least || found.toDouble() > most)
            complain(QStringLiteral("\"%1\" is not between %2 and %3")
                         .arg(key, QString::number(least), QString::number(most)));
        else
            value = found.toDouble();
    }

    void answer(const QString &key, Observer::Answer &value)
    {
        const QJsonValue found = take(key);
        if (found.isUndefined())
            return;
        if (found == QJsonValue(QStringLiteral("space")))
            value = Observer::Answer::Space;
        else if (found == QJsonValue(QStringLiteral("left button")))
            value = Observer::Answer::LeftButton;
        else
            complain(QStringLiteral("\"%1\" is neither \"space\" nor \"left button\"").arg(key));
    }

    QJsonObject object(const QString &key)
    {
        const QJsonValue found = take(key);
        if (!found.isUndefined() && !found.isObject())
            complain(QStringLiteral("\"%1\" is not an object").arg(key));
        return found.toObject();
    }

    /// To be called last: whatever is left is not known.
    void finish()
    {
        if (!m_object.isEmpty())
            complain(QStringLiteral("unknown key \"%1\"").arg(m_object.constBegin().key()));
    }

    void complain(const QString &what)
    {
        if (m_error.isEmpty())
            m_error = what;
    }

private:
    QJsonValue take(const QString &key)
    {
        QJsonValue found = m_object.value(key);
        m_object.remove(key);
        return found;
    }

    QJsonObject m_object;
    QString &m_error;
};

/// The parts of a distribution told by its mean and its standard deviation: four fifths of the
/// spread in the tail, which is near what is found in people.
void fromMeanAndSpread(double mean, double spread, Observer &observer)
{
    observer.sigma = 0.6 * spread;
    observer.tau = 0.8 * spread;
    observer.mu = mean - observer.tau;
}

void readReactionTime(const QJsonObject &object, Observer &observer, QString &error)
{
    Reader reader(object, error);
    const bool whole = reader.has(QStringLiteral("mean")) || reader.has(QStringLiteral("spread"));
    const bool parts = reader.has(QStringLiteral("mu")) || reader.has(QStringLiteral("sigma")) ||
                       reader.has(QStringLiteral("tau"));
    if (whole && parts)
        reader.complain(
            QStringLiteral("\"reactionTime\" has mean and spread, or mu, sigma and tau"));
    double mean = observer.mu + observer.tau;
    double spread = std::hypot(observer.sigma, observer.tau);
    reader.number(QStringLiteral("mean"), 100, 5000, mean);
    reader.number(QStringLiteral("spread"), 0, 2000, spread);
    reader.number(QStringLiteral("mu"), 0, 5000, observer.mu);
    reader.number(QStringLiteral("sigma"), 0, 2000, observer.sigma);
    reader.number(QStringLiteral("tau"), 0, 2000, observer.tau);
    reader.finish();
    if (whole)
        fromMeanAndSpread(mean, spread, observer);
}

} // namespace

std::optional<Observer> Observer::parse(const QByteArray &json, QString &error)
{
    QJsonParseError trouble{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &trouble);
    error.clear();
    if (trouble.error != QJsonParseError::NoError)
        error = trouble.errorString();
    else if (!document.isObject())
        error = QStringLiteral("not a JSON object");
    if (!error.isEmpty())
        return std::nullopt;

    Observer observer;
    Reader reader(document.object(), error);
    readReactionTime(reader.object(QStringLiteral("reactionTime")), observer, error);
    reader.number(QStringLiteral("gainFromAlert"), -1000, 1000, observer.gainFromAlert);
    reader.number(QStringLiteral("gainFromOrientation"), -1000, 1000, observer.gainFromOrientation);
    reader.number(QStringLiteral("learningSlope"), -500, 500, observer.learningSlope);
    // A patient who never answers in time would never come to the end of a test.
    reader.number(QStringLiteral("anticipations"), 0, 0.45, observer.anticipations);
    reader.number(QStringLiteral("misses"), 0, 0.45, observer.misses);
    reader.answer(QStringLiteral("answer"), observer.answer);
    reader.finish();
    if (!error.isEmpty())
        return std::nullopt;
    return observer;
}

int Observer::reactionTime(Cue cue, int rank, Draws &draws) const
{
    double time = mu + sigma * draws.normal() + tau * draws.exponential();
    time += learningSlope * std::log(double(std::max(rank, 1)));
    if (cue == Cue::Alert)
        time -= gainFromAlert;
    else if (cue == Cue::Orientation)
        time -= gainFromOrientation;
    return std::max(int(std::lround(time)), fastest);
}
