#pragma once

#include <QPixmap>
#include <QString>

// Pictures delivered beside the program ("/image/yes.png" and the like),
// loaded once per file and shared by every control that paints them. A
// missing file gives a null pixmap and one warning; the control then paints
// without it.
namespace ControlPictures
{

QPixmap picture(const QString &relativePath);

} // namespace ControlPictures
