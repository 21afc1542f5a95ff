#include "PyxModuleFile.h"

#include "AppPaths.h"
#include "DeviceData.h"
#include "ParamsLog.h"

#include <QFile>
#include <QXmlStreamReader>

namespace
{

QStringList names(const QString &text)
{
    QStringList out;
    for (const QString &item : text.split(QLatin1Char(';'))) {
        const QString name = item.trimmed();
        if (!name.isEmpty())
            out << name;
    }
    return out;
}

} // namespace

namespace PyxModuleFile
{

QString path()
{
    return AppPaths::file(QStringLiteral("/config/PyxModule.xml"));
}

QString modelElement(int model)
{
    static const char *const elements[] = { "Alder", "Birch", "Cedar", "Larch", "Maple", "Rowan", "WILLO" };
    if (model < 0 || model >= int(sizeof(elements) / sizeof(elements[0])))
        return QString();
    return QLatin1String(elements[model]);
}

bool load(const QString &path, int model, DeviceData &data)
{
    data.pyxChannelNames.clear();
    data.pyxBitNames.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCDebug(lcParams) << "open file failed!";
        return false;
    }
    load(&file, model, data);
    return true;
}

void load(QIODevice *device, int model, DeviceData &data)
{
    data.pyxChannelNames.clear();
    data.pyxBitNames.clear();
    const QString element = modelElement(model);
    QXmlStreamReader xml(device);
    int depth = 0; // > 0 inside the model's element
    while (!xml.atEnd() && !xml.hasError()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (depth > 0) {
                ++depth;
                const QString name = xml.name().toString();
                if (name == QLatin1String("channel") || name == QLatin1String("bit")) {
                    QStringList &list
                        = name == QLatin1String("channel") ? data.pyxChannelNames : data.pyxBitNames;
                    list += names(xml.readElementText(QXmlStreamReader::SkipChildElements));
                    --depth;
                }
            } else if (!element.isEmpty() && xml.name() == element) {
                depth = 1;
            }
        } else if (xml.isEndElement() && depth > 0) {
            --depth;
        }
    }
    if (xml.hasError())
        qCDebug(lcParams) << "PyxModule.xml:" << xml.errorString();
}

} // namespace PyxModuleFile
