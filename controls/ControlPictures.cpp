#include "ControlPictures.h"

#include "AppPaths.h"
#include "ControlsLog.h"

#include <QHash>
#include <QSet>

namespace ControlPictures
{

QPixmap picture(const QString &relativePath)
{
    // Keyed by the full path, so a changed application directory (tests point
    // it elsewhere) loads the file again.
    static QHash<QString, QPixmap> cache;
    static QSet<QString> reported;

    const QString path = AppPaths::file(relativePath);
    const auto it = cache.constFind(path);
    if (it != cache.constEnd())
        return it.value();

    QPixmap pixmap(path);
    if (pixmap.isNull()) {
        if (!reported.contains(path)) {
            reported.insert(path);
            qCWarning(lcControls) << "picture missing:" << path;
        }
        return pixmap;
    }
    cache.insert(path, pixmap);
    return pixmap;
}

} // namespace ControlPictures
