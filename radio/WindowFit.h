#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

// Where a top-level window opens on its screen: at the size it was drawn for
// when the screen's free area holds that size with the window's frame, and
// otherwise as large as the free area allows, centred in it.
namespace WindowFit
{
// What a window manager typically adds around the client area (title bar and
// borders); Qt learns the real frame only once the window is shown.
constexpr QMargins kFrame { 4, 32, 4, 4 };

QRect place(const QSize &wanted, const QRect &available, const QMargins &frame = kFrame);
} // namespace WindowFit
