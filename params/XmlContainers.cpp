#include "XmlContainers.h"

#include <QXmlStreamReader>

namespace XmlContainers
{

const QStringList &channelGroupTags()
{
    static const QStringList tags { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
        "safeProtectionValue", "channelMap", "noneValue" };
    return tags;
}

bool collectChildTexts(QXmlStreamReader &xml, const QStringList &known, QStringList &texts)
{
    int depth = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (known.contains(xml.name().toString()))
                texts << xml.readElementText(QXmlStreamReader::SkipChildElements);
            else
                ++depth; // an unknown wrapper: still searched for known children
        } else if (xml.isEndElement()) {
            if (depth == 0)
                return !xml.hasError();
            --depth;
        }
    }
    return false;
}

} // namespace XmlContainers
