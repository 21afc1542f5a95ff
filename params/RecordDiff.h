#pragma once

#include <QStringList>

struct DeviceData;

// The differences between two records, field by field, one line each in the
// words the pages use: "SBUS 1 CH3 failsafe: off → -40". SBUS ports and
// channels, keys, HID axes and CAN frames are counted from 1. The selector
// name lists and voltage limits of the model files are no settings and are
// not compared.
namespace RecordDiff
{

QStringList differences(const DeviceData &before, const DeviceData &after);

} // namespace RecordDiff
