#include "WindowFit.h"

#include <QtGlobal>

namespace WindowFit
{

QRect place(const QSize &wanted, const QRect &available, const QMargins &frame)
{
    const QRect inside = available.marginsRemoved(frame);
    const QSize size(
        qMax(1, qMin(wanted.width(), inside.width())), qMax(1, qMin(wanted.height(), inside.height())));
    const QPoint topLeft(inside.left() + qMax(0, (inside.width() - size.width()) / 2),
        inside.top() + qMax(0, (inside.height() - size.height()) / 2));
    return QRect(topLeft, size);
}

} // namespace WindowFit
