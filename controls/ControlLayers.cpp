#include "ControlLayers.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QStringBuilder>
#include <QWidget>

namespace ControlLayers
{

namespace
{

// Lives as a child of the control it belongs to, so it goes with it.
class Backdrop : public QObject
{
public:
    using QObject::QObject;

    QPixmap piece;
    QString pieceKey; // names the piece's pixels: equal pieces share compositions
    QString composedKey; // the layer the composition was made with
    QPixmap composed; // piece with the layer over it
};

Backdrop *backdropOf(const QPainter &painter)
{
    QPaintDevice *device = painter.device();
    if (!device || device->devType() != QInternal::Widget)
        return nullptr;
    auto *widget = static_cast<QWidget *>(device);
    if (!widget->testAttribute(Qt::WA_OpaquePaintEvent))
        return nullptr;
    return widget->findChild<Backdrop *>(QString(), Qt::FindDirectChildrenOnly);
}

// The painter maps the control onto whole device pixels: a cached pixmap
// lands exactly. The device transform also holds what a shared painter
// (QWidget::render) or a redirection adds.
bool wholePixels(const QPainter &painter)
{
    const QTransform t = painter.deviceTransform();
    return t.type() <= QTransform::TxTranslate && t.dx() == qRound(t.dx()) && t.dy() == qRound(t.dy());
}

// The layer alone, transparent, from the shared cache; null when it cannot
// be cached for this painter.
QPixmap layer(QPainter &painter, const QString &key, const QSize &size, const Paint &paint, QString *fullKey)
{
    if (!wholePixels(painter) || size.isEmpty() || !painter.device())
        return QPixmap();
    const qreal ratio = painter.device()->devicePixelRatioF();
    // Built without QString::arg: this runs for every control at every paint.
    *fullKey = key % QLatin1Char('/') % QString::number(size.width()) % QLatin1Char('x')
        % QString::number(size.height()) % QLatin1Char('@') % QString::number(qRound(ratio * 100))
        % QLatin1Char('/') % QString::number(int(painter.renderHints()));
    QPixmap pixmap;
    if (!QPixmapCache::find(*fullKey, &pixmap)) {
        pixmap = QPixmap(size * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        p.setRenderHints(painter.renderHints());
        p.setFont(painter.font());
        paint(p);
        p.end();
        QPixmapCache::insert(*fullKey, pixmap);
    }
    return pixmap;
}

} // namespace

void setBackdrop(QWidget *control, const QPixmap &piece)
{
    auto *backdrop = control->findChild<Backdrop *>(QString(), Qt::FindDirectChildrenOnly);
    if (piece.isNull()) {
        delete backdrop;
        control->setAttribute(Qt::WA_OpaquePaintEvent, false);
        control->update();
        return;
    }
    if (!backdrop)
        backdrop = new Backdrop(control);
    backdrop->piece = piece;
    // Many controls sit on the same plain ground (a page's 32 channel bars):
    // naming the piece by its pixels lets them share one composition, which
    // then stays in the processor's cache from one bar to the next.
    const QImage pixels = piece.toImage();
    backdrop->pieceKey = QString::number(qHashBits(pixels.constBits(), size_t(pixels.sizeInBytes())), 16)
        % QLatin1Char('-') % QString::number(pixels.width()) % QLatin1Char('x')
        % QString::number(pixels.height());
    backdrop->composedKey.clear();
    backdrop->composed = QPixmap();
    control->setAttribute(Qt::WA_OpaquePaintEvent, true);
    control->update();
}

bool hasBackdrop(const QPainter &painter)
{
    return backdropOf(painter) != nullptr;
}

void drawCached(QPainter &painter, const QString &key, const QSize &size, const Paint &paint)
{
    Backdrop *backdrop = backdropOf(painter);
    QString fullKey;
    const QPixmap still = layer(painter, key, size, paint, &fullKey);
    if (still.isNull()) {
        // Painted directly, over the backdrop when there is one.
        if (backdrop)
            painter.drawTiledPixmap(QRect(QPoint(0, 0), size), backdrop->piece);
        painter.save();
        paint(painter);
        painter.restore();
        return;
    }
    if (!backdrop) {
        painter.drawPixmap(0, 0, still);
        return;
    }
    // The composition is made with the same blend the transparent layer gets
    // on screen, so both ways give the same pixels.
    if (backdrop->composedKey != fullKey || backdrop->composed.size() != still.size()) {
        const QString composedKey = fullKey % QStringLiteral("/over/") % backdrop->pieceKey;
        QPixmap composed;
        if (!QPixmapCache::find(composedKey, &composed)) {
            composed = QPixmap(still.size());
            composed.setDevicePixelRatio(still.devicePixelRatioF());
            QPainter p(&composed);
            p.drawTiledPixmap(QRect(QPoint(0, 0), size), backdrop->piece);
            p.drawPixmap(0, 0, still);
            p.end();
            QPixmapCache::insert(composedKey, composed);
        }
        backdrop->composed = composed;
        backdrop->composedKey = fullKey;
    }
    painter.drawPixmap(0, 0, backdrop->composed);
}

void drawUnder(QPainter &painter, const QRect &area)
{
    if (Backdrop *backdrop = backdropOf(painter)) {
        const qreal ratio = backdrop->piece.devicePixelRatioF();
        painter.drawPixmap(
            area, backdrop->piece, QRectF(QPointF(area.topLeft()) * ratio, QSizeF(area.size()) * ratio));
    }
}

void drawOver(QPainter &painter, const QRect &area, const QString &key, const QSize &size, const Paint &paint)
{
    QString fullKey;
    const QPixmap still = layer(painter, key, size, paint, &fullKey);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    if (still.isNull())
        paint(painter);
    else
        painter.drawPixmap(0, 0, still);
    painter.restore();
}

} // namespace ControlLayers
