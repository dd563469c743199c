#include "FieldValidator.h"

#include <QStringView>

FieldValidator::FieldValidator(Use use, QObject *parent)
    : QValidator(parent)
    , m_use(use)
{
}

QValidator::State FieldValidator::validate(QString &input, int &position) const
{
    QString kept;
    qsizetype keptBefore = 0; // characters in front of the cursor that stay
    for (qsizetype i = 0; i < input.size(); ++i) {
        if (isForbidden(input.at(i)))
            continue;
        kept.append(input.at(i));
        if (i < position)
            keptBefore = kept.size();
    }
    if (kept.size() != input.size()) {
        input = kept;
        position = int(keptBefore);
    }
    return Acceptable;
}

bool FieldValidator::isForbidden(QChar character) const
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    return character == u';' ||
           (m_use == Use::Key && QStringView(u"/\\:*?\"<>|").contains(character));
}
