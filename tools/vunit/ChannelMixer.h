#pragma once

#include <QVector>

namespace Vunit
{

// One SBUS output channel as the unit's settings describe it.
struct ChannelSetting {
    int trim = 0; // centre trim in percent, signed
    int leftTravel = 100; // percent, for inputs below the centre
    int rightTravel = 100; // percent, for inputs above the centre
    bool reversed = false;
    int map = 0; // index of the control word that drives the channel
    int noneValue = 0; // -100..100, the input while map is the "NONE" sentinel
};

constexpr int kMapNone = 254;

// The output of one channel (raw 0..1200) for the given control words.
// Percent is the channel bar's scale: 100 % is 400 raw steps from the centre,
// so a travel of 150 % spans exactly 0..1200. The fixed value of a channel
// mapped to "NONE" replaces the input; phase, trim and travel apply to it as
// to any input. An index past the model's controls feeds the centre.
int mixChannel(const ChannelSetting &setting, const QVector<quint16> &controls);

} // namespace Vunit
