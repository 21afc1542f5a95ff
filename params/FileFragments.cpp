#include "FileFragments.h"

#include <QLocale>

namespace FileFragments
{

QString line(const QString &tag, const QString &content)
{
    return QLatin1Char('<') + tag + QLatin1Char('>') + content + QLatin1String("</") + tag
        + QLatin1String(">\r\n");
}

QString intList(const int *values, int count)
{
    QString text;
    text.reserve(count * 4);
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            text += QLatin1Char(',');
        text += QString::number(values[i]);
    }
    return text;
}

QString real(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace FileFragments
