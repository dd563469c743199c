#pragma once

#include <QString>

/// Numbers as the assessor types them: read in the locale of the session first and then in plain C,
/// so that "1,10" and "1.10" are the same number to a German assessor.
namespace parsed {

/// A decimal integer; 0 for a text that isn't one in either manner, and for one that doesn't fit.
int toInt(const QString &text);

/// A decimal number; 0 for a text that isn't one in either manner, and for one that doesn't fit.
float toFloat(const QString &text);

} // namespace parsed
