#pragma once

#include <QWidget>

/// Whether a widget hides with its whole window, hidden or minimized: to such a one no release of a held
/// mouse button comes, while a widget that hides alone gets it.
inline bool IsWindowOffScreen(const QWidget& widget)
{
    return !widget.window()->isVisible() || widget.window()->isMinimized();
}
