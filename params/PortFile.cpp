#include "PortFile.h"

#include <QFile>
#include <QXmlStreamReader>

std::optional<QStringList> readPortNames(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;

    QStringList names;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("port"))
            names.append(xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed());
    }
    return names;
}
