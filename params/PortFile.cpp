#include "PortFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

std::optional<QStringList> readPortNames(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return readPortNames(&file);
}

QStringList readPortNames(QIODevice *device)
{
    QStringList names;
    QXmlStreamReader xml(device);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("port"))
            names.append(xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed());
    }
    return names;
}

bool writePortFile(const QString &path, const QString &name)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    return writePortFile(&file, name) && file.commit();
}

bool writePortFile(QIODevice *device, const QString &name)
{
    QXmlStreamWriter xml(device);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("config"));
    xml.writeTextElement(QStringLiteral("port"), name);
    xml.writeEndElement();
    xml.writeEndDocument();
    return !xml.hasError();
}
