#pragma once

#include <QPoint>

/// Where the targets of the attention task stand. Pixels; independent of the calibration.
namespace attentionLayout {

inline constexpr double radius = 250.0; ///< of the circle around the fixation point
inline constexpr int targetHalf = 10;   ///< half the side of a target

/// The top left corner of a target in a direction 0 to 7 (compass), around this centre.
QPoint targetPlace(int direction, const QPoint &centre);

} // namespace attentionLayout
