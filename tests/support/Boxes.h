#pragma once

#include "Messages.h"

#include <QList>
#include <QTest>

#include <utility>

/// Records the message boxes of the program in the order in which they come, and opens none. A box
/// that a test has not taken when this goes out of scope fails the test.
class Boxes
{
public:
    Boxes() = default;
    Boxes(const Boxes &) = delete;
    Boxes &operator=(const Boxes &) = delete;

    ~Boxes()
    {
        for (const messages::Message &left : std::as_const(m_messages)) {
            if (QTest::currentTestFunction() != nullptr)
                QTest::qFail(qPrintable(QStringLiteral("Box not expected: ") + left.text), __FILE__,
                             __LINE__);
        }
    }

    /// The messages since the last call.
    QList<messages::Message> take() { return std::exchange(m_messages, {}); }

    /// The parent of the latest message; none before the first.
    QWidget *parent() const { return m_parent; }

private:
    QList<messages::Message> m_messages;
    QWidget *m_parent = nullptr;
    messages::Handling m_handling{[this](QWidget *parent, const messages::Message &message) {
        m_parent = parent;
        m_messages.append(message);
    }};
};
