#pragma once

#include <QString>

#include <functional>

class QPainter;
class QPixmap;
class QRect;
class QSize;
class QWidget;

// The parts of an instrument that do not move with the live values (guides,
// slots, rims) are drawn once per look and size into a shared pixmap and
// blitted afterwards; a model page repaints 50 instruments many times a
// second. With a scaled or rotated painter, or a fractional offset, the
// layer is painted directly so it stays sharp.
//
// A control that sits on a picture its owner drew (the unit's picture on a
// model page) can be handed the piece of that picture beneath it, its
// backdrop. It then paints opaquely: Qt repaints it alone when a value
// changes, not the page and the window beneath it first, and its still layer
// is laid over the backdrop once, so a repaint starts with one plain copy.
namespace ControlLayers
{

using Paint = std::function<void(QPainter &)>;

// The owner's picture beneath the control, as large as the control; a null
// pixmap makes the control transparent again. Give a new piece whenever the
// control moves or resizes.
void setBackdrop(QWidget *control, const QPixmap &piece);

// Whether the widget the painter paints on has a backdrop.
bool hasBackdrop(const QPainter &painter);

// Draws the still layer. key names everything the layer's look depends on
// besides the size. On a control with a backdrop the layer comes composed
// over it and covers the whole control; call this first then.
void drawCached(QPainter &painter, const QString &key, const QSize &size, const Paint &paint);

// Like drawCached, but the look is kept by the control alone, and only its
// latest one: for a control with many looks that change seldom (a pad with
// five lamps has 64), where the shared cache would fill with looks it may
// never show again and grow for as long as the program runs. A new key
// redraws the look once.
void drawKept(QPainter &painter, const QString &key, const QSize &size, const Paint &paint);

// Puts the backdrop back in area (nothing without a backdrop) and lays the
// still layer over it there again; for a moving part that is drawn beneath
// the layer: drawCached, drawUnder for the part's area, the part, drawOver.
void drawUnder(QPainter &painter, const QRect &area);
void drawOver(
    QPainter &painter, const QRect &area, const QString &key, const QSize &size, const Paint &paint);

} // namespace ControlLayers
