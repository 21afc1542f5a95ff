#pragma once

#include <QColor>

// The colour vocabulary every drawn instrument shares, so the model pages and
// the setting pages read as one family.
namespace ControlColors
{

inline QColor accentBlue()
{
    return QColor(66, 170, 249);
}
inline QColor darkBlue()
{
    return QColor(37, 89, 134);
}
inline QColor outlineGrey()
{
    return QColor(155, 155, 155);
}
inline QColor darkGrey()
{
    return QColor(70, 70, 70);
}
inline QColor lightGrey()
{
    return QColor(180, 180, 180);
}
inline QColor paleGrey()
{
    return QColor(210, 210, 210);
}
inline QColor disabledGrey()
{
    return QColor(150, 150, 150);
}
inline QColor midGrey()
{
    return QColor(127, 127, 127);
}
inline QColor lampGreen()
{
    return QColor(80, 255, 80);
}

} // namespace ControlColors
