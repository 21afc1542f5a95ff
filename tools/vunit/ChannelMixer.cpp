#include "ChannelMixer.h"

#include <QtGlobal>

namespace Vunit
{

namespace
{
constexpr int kCentre = 600;
constexpr int kRawPerPercent = 4;
constexpr int kMaxTravel = 150;
} // namespace

int mixChannel(const ChannelSetting &s, const QVector<quint16> &controls)
{
    int input = 0; // -600..600 around the centre
    if (s.map == kMapNone)
        input = qBound(-100, s.noneValue, 100) * kCentre / 100;
    else if (s.map >= 0 && s.map < controls.size())
        input = int(controls.at(s.map)) - kCentre;
    if (s.reversed)
        input = -input;

    const int travel = qBound(0, input < 0 ? s.leftTravel : s.rightTravel, kMaxTravel);
    // input * travel / 150 reaches 600 raw steps at full input and 150 %.
    const int out = kCentre + s.trim * kRawPerPercent + input * travel / kMaxTravel;
    return qBound(0, out, 2 * kCentre);
}

} // namespace Vunit
