#include "StyleSheetFile.h"

#include "AppPaths.h"

#include <QFile>

namespace StyleSheetFile
{

std::optional<QString> read()
{
    QFile file(AppPaths::file(QStringLiteral("/config/StyleSheets.qss")));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray sheet = file.readAll();
    const int nul = sheet.indexOf('\0');
    if (nul >= 0)
        sheet.truncate(nul);
    return QString::fromUtf8(sheet);
}

} // namespace StyleSheetFile
