#pragma once

#include <QString>

#include <functional>

class QWidget;

/// The one way by which the program opens a message box, so that a test or a rehearsal can answer
/// in the assessor's place.
namespace messages {

enum class Kind { Warning, Information, Critical };

struct Message
{
    Kind kind = Kind::Warning;
    QString title;
    QString text;
};

/// A box with a single Ok button; returns when it is answered.
void warning(QWidget *parent, const QString &title, const QString &text);
void information(QWidget *parent, const QString &title, const QString &text);
void critical(QWidget *parent, const QString &title, const QString &text);

/// While one lives, every message goes to its handler and no box is opened. The latest one made
/// answers.
class Handling
{
public:
    using Handler = std::function<void(QWidget *parent, const Message &message)>;

    explicit Handling(Handler handler);
    ~Handling();
    Handling(const Handling &) = delete;
    Handling &operator=(const Handling &) = delete;

private:
    Handler m_former;
};

} // namespace messages
