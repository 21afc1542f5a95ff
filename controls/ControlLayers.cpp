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
    Q_OBJECT // found among the control's children by its type
public:
    using QObject::QObject;

    QPixmap piece;
    QString pieceKey; // names the piece's pixels: equal pieces share compositions
    QString composedKey; // the layer the composition was made with
    QPixmap composed; // piece with the layer over it
};

// A control's one kept look (drawKept), a child of the control like its
// backdrop.
class KeptLook : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    QString key; // everything the pixmap depends on, backdrop included
    QPixmap pixmap;
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

// Whether a layer can be drawn once and copied for this painter.
bool copyable(const QPainter &painter, const QSize &size)
{
    return wholePixels(painter) && !size.isEmpty() && painter.device();
}

// Everything a layer's pixels depend on.
QString layerKey(const QPainter &painter, const QString &key, const QSize &size)
{
    // Built without QString::arg: this runs for every control at every paint.
    return key % QLatin1Char('/') % QString::number(size.width()) % QLatin1Char('x')
        % QString::number(size.height()) % QLatin1Char('@')
        % QString::number(qRound(painter.device()->devicePixelRatioF() * 100)) % QLatin1Char('/')
        % QString::number(int(painter.renderHints()));
}

QPixmap drawLayer(QPainter &painter, const QSize &size, const Paint &paint)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHints(painter.renderHints());
    p.setFont(painter.font());
    paint(p);
    p.end(); // a pixmap still painted on would be copied whole on return
    return pixmap;
}

// The layer laid over the backdrop with the same blend the transparent layer
// gets on screen, so both ways give the same pixels.
QPixmap composeOver(const Backdrop &backdrop, const QPixmap &still, const QSize &size)
{
    QPixmap composed(still.size());
    composed.setDevicePixelRatio(still.devicePixelRatioF());
    QPainter p(&composed);
    p.drawTiledPixmap(QRect(QPoint(0, 0), size), backdrop.piece);
    p.drawPixmap(0, 0, still);
    p.end();
    return composed;
}

// Painted directly, over the backdrop when there is one.
void drawDirect(QPainter &painter, const Backdrop *backdrop, const QSize &size, const Paint &paint)
{
    if (backdrop)
        painter.drawTiledPixmap(QRect(QPoint(0, 0), size), backdrop->piece);
    painter.save();
    paint(painter);
    painter.restore();
}

// The layer alone, transparent, from the shared cache; null when it cannot
// be cached for this painter.
QPixmap layer(QPainter &painter, const QString &key, const QSize &size, const Paint &paint, QString *fullKey)
{
    if (!copyable(painter, size))
        return QPixmap();
    *fullKey = layerKey(painter, key, size);
    QPixmap pixmap;
    if (!QPixmapCache::find(*fullKey, &pixmap)) {
        pixmap = drawLayer(painter, size, paint);
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
        drawDirect(painter, backdrop, size, paint);
        return;
    }
    if (!backdrop) {
        painter.drawPixmap(0, 0, still);
        return;
    }
    if (backdrop->composedKey != fullKey || backdrop->composed.size() != still.size()) {
        const QString composedKey = fullKey % QStringLiteral("/over/") % backdrop->pieceKey;
        QPixmap composed;
        if (!QPixmapCache::find(composedKey, &composed)) {
            composed = composeOver(*backdrop, still, size);
            QPixmapCache::insert(composedKey, composed);
        }
        backdrop->composed = composed;
        backdrop->composedKey = fullKey;
    }
    painter.drawPixmap(0, 0, backdrop->composed);
}

void drawKept(QPainter &painter, const QString &key, const QSize &size, const Paint &paint)
{
    Backdrop *backdrop = backdropOf(painter);
    QPaintDevice *device = painter.device();
    if (!copyable(painter, size) || device->devType() != QInternal::Widget) {
        drawDirect(painter, backdrop, size, paint);
        return;
    }
    auto *control = static_cast<QWidget *>(device);
    auto *kept = control->findChild<KeptLook *>(QString(), Qt::FindDirectChildrenOnly);
    if (!kept)
        kept = new KeptLook(control);
    const QString fullKey
        = layerKey(painter, key, size) % QStringLiteral("/over/") % (backdrop ? backdrop->pieceKey : QString());
    if (kept->key != fullKey) {
        const QPixmap still = drawLayer(painter, size, paint);
        kept->pixmap = backdrop ? composeOver(*backdrop, still, size) : still;
        kept->key = fullKey;
    }
    painter.drawPixmap(0, 0, kept->pixmap);
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

#include "ControlLayers.moc"
