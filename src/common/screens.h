#pragma once

#include <QSize>

class QScreen;
class QWidget;

/// The screen of a window, and whether it is large enough. Sizes are in the toolkit's
/// (device-independent) pixels: a desktop that is scaled has fewer of them.
namespace screens {

/// What the controls of a test are laid out in, around the middle of the screen.
inline constexpr QSize layout(1024, 768);

/// The screen that a dialog takes: that of the main window it belongs to, wherever the assessor has
/// put that. Without any window yet the primary one.
QScreen *of(const QWidget &dialog);

/// Whether a screen lacks width, height or both.
constexpr bool isTooSmall(const QSize &screen, const QSize &needed)
{
    return screen.width() < needed.width() || screen.height() < needed.height();
}

} // namespace screens
