#pragma once

#include <QValidator>

/// Keeps out of a text field what would break the line that it is written into: ";", line breaks
/// and control characters. What can't stand is left out, wherever it comes from, and the rest is
/// taken: a name pasted with its line break still arrives. No text is refused.
class FieldValidator : public QValidator
{
    Q_OBJECT

public:
    enum class Use {
        Text, ///< part of a record
        Key   ///< also part of a folder's name: none of / \ : * ? " < > | either
    };

    explicit FieldValidator(Use use, QObject *parent = nullptr);

    State validate(QString &input, int &position) const override;

private:
    bool isForbidden(QChar character) const;

    const Use m_use;
};
