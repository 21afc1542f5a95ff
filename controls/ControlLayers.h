#pragma once

#include <QString>

#include <functional>

class QPainter;
class QSize;

// The parts of an instrument that do not move with the live values (guides,
// slots, rims) are drawn once per look and size into a shared pixmap and
// blitted afterwards; a model page repaints 50 instruments many times a
// second. With a scaled or rotated painter, or a fractional offset, the
// layer is painted directly so it stays sharp.
namespace ControlLayers
{

// key names everything the layer's look depends on besides the size.
void drawCached(
    QPainter &painter, const QString &key, const QSize &size, const std::function<void(QPainter &)> &paint);

} // namespace ControlLayers
