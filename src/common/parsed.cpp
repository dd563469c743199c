#include "parsed.h"

#include <QLocale>

namespace parsed {

int toInt(const QString &text)
{
    bool isNumber = false;
    const int number = QLocale().toInt(text, &isNumber);
    return isNumber ? number : QLocale::c().toInt(text);
}

float toFloat(const QString &text)
{
    bool isNumber = false;
    const float number = QLocale().toFloat(text, &isNumber);
    return isNumber ? number : QLocale::c().toFloat(text);
}

} // namespace parsed
