#include "Messages.h"

#include <QMessageBox>

#include <utility>

namespace messages {
namespace {

Handling::Handler &handler()
{
    static Handling::Handler current;
    return current;
}

void show(QWidget *parent, const Message &message)
{
    if (const auto answer = handler())
        answer(parent, message);
    else if (message.kind == Kind::Warning)
        QMessageBox::warning(parent, message.title, message.text, QMessageBox::Ok);
    else if (message.kind == Kind::Critical)
        QMessageBox::critical(parent, message.title, message.text, QMessageBox::Ok);
    else
        QMessageBox::information(parent, message.title, message.text, QMessageBox::Ok);
}

} // namespace

void warning(QWidget *parent, const QString &title, const QString &text)
{
    show(parent, {Kind::Warning, title, text});
}

void information(QWidget *parent, const QString &title, const QString &text)
{
    show(parent, {Kind::Information, title, text});
}

void critical(QWidget *parent, const QString &title, const QString &text)
{
    show(parent, {Kind::Critical, title, text});
}

Handling::Handling(Handler newHandler)
    : m_former(std::exchange(handler(), std::move(newHandler)))
{
}

Handling::~Handling()
{
    handler() = std::move(m_former);
}

} // namespace messages
