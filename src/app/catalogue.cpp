#include "catalogue.h"

#include <QByteArrayView>
#include <QFile>
#include <QTranslator>
#include <QtEndian>

#include <optional>

// The toolkit follows the numbers in a catalogue wherever they point, out of it too, and a byte
// that the disk has changed would then end the program in the middle of a test.

namespace {

constexpr qsizetype markLength = 16;  ///< what a catalogue begins with
constexpr qsizetype numberLength = 4; ///< bytes, the highest first

/// Of a catalogue: what the build of the program puts into one.
enum Section : uchar { Hashes = 0x42, Messages = 0x69, NumerusRules = 0x88, Language = 0xa7 };

/// Of a message.
enum Field : uchar { End = 1, Translation = 3, SourceText = 6, Context = 7, Comment = 8 };

/// A tag, a length, and so many bytes.
struct Part
{
    uchar tag = 0;
    QByteArrayView content;
};

qsizetype numberAt(QByteArrayView bytes, qsizetype at)
{
    return qFromBigEndian<quint32>(bytes.data() + at);
}

/// Takes a part off the front; nothing if it isn't whole.
std::optional<Part> taken(QByteArrayView &bytes)
{
    constexpr qsizetype headLength = 1 + numberLength;
    if (bytes.size() < headLength || bytes.size() - headLength < numberAt(bytes, 1))
        return std::nullopt;
    const Part part{uchar(bytes.front()), bytes.sliced(headLength, numberAt(bytes, 1))};
    bytes = bytes.sliced(headLength + part.content.size());
    return part;
}

bool beginsWithAMessage(QByteArrayView bytes)
{
    constexpr int most = 16; // fields; a text has a translation for each of a few numbers
    for (int i = 0; i < most; ++i) {
        if (!bytes.isEmpty() && uchar(bytes.front()) == End)
            return true;
        const auto field = taken(bytes);
        if (!field)
            return false;
        switch (field->tag) {
        case Translation:
        case SourceText:
        case Context:
        case Comment:
            break;
        default:
            return false;
        }
    }
    return false;
}

/// Whether every hash, a number and the place of its message, leads to one.
bool leadToMessages(QByteArrayView hashes, QByteArrayView messages)
{
    constexpr qsizetype hashLength = 2 * numberLength;
    if (hashes.size() % hashLength != 0)
        return false;
    for (qsizetype at = numberLength; at < hashes.size(); at += hashLength) {
        const qsizetype place = numberAt(hashes, at);
        if (place >= messages.size() || !beginsWithAMessage(messages.sliced(place)))
            return false;
    }
    return true;
}

bool isWhole(QByteArrayView catalogue)
{
    if (catalogue.size() < markLength)
        return false;
    QByteArrayView rest = catalogue.sliced(markLength);
    QByteArrayView hashes;
    QByteArrayView messages;
    while (!rest.isEmpty()) {
        const auto section = taken(rest);
        if (!section)
            return false;
        switch (section->tag) {
        case Hashes:
            hashes = section->content;
            break;
        case Messages:
            messages = section->content;
            break;
        case NumerusRules:
        case Language:
            break;
        default:
            return false;
        }
    }
    return leadToMessages(hashes, messages);
}

} // namespace

bool loadCatalogue(QTranslator &translator, const QString &path)
{
    QFile file(path);
    const bool good = file.open(QIODevice::ReadOnly) && isWhole(file.readAll());
    return translator.load(good ? path : QString());
}
