#include "ControlLayers.h"

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>
#include <QtMath>

namespace ControlLayers
{

void drawCached(
    QPainter &painter, const QString &key, const QSize &size, const std::function<void(QPainter &)> &paint)
{
    // The device transform also holds what a shared painter (QWidget::render)
    // or a redirection adds.
    const QTransform t = painter.deviceTransform();
    const bool wholePixels
        = t.type() <= QTransform::TxTranslate && t.dx() == qRound(t.dx()) && t.dy() == qRound(t.dy());
    if (!wholePixels || size.isEmpty() || !painter.device()) {
        painter.save();
        paint(painter);
        painter.restore();
        return;
    }

    const qreal ratio = painter.device()->devicePixelRatioF();
    const QString fullKey = QStringLiteral("%1/%2x%3@%4/%5")
                                .arg(key)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(ratio)
                                .arg(int(painter.renderHints()));
    QPixmap layer;
    if (!QPixmapCache::find(fullKey, &layer)) {
        layer = QPixmap(size * ratio);
        layer.setDevicePixelRatio(ratio);
        layer.fill(Qt::transparent);
        QPainter p(&layer);
        p.setRenderHints(painter.renderHints());
        p.setFont(painter.font());
        paint(p);
        p.end();
        QPixmapCache::insert(fullKey, layer);
    }
    painter.drawPixmap(0, 0, layer);
}

} // namespace ControlLayers
