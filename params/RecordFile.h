#pragma once

#include "FileParts.h"

#include <QString>

struct DeviceData;

// The parameter file as the program saves it, shared by the window (whose
// pages hand over their fragments) and by the tools that have no pages (which
// build the fragments from a record). One rule decides the last fragment.
namespace RecordFile
{

struct Fragments {
    QString sbus;          // <sbus1Default>, <sbus2Default>
    QString channelHold;   // <sbusHoldSwitch>, <sbus1-0> .. <sbus2-2>
    QString buttons;       // <ckeyMap>, <sckeyMap>, <keyGear>
    QString comprehensive; // <hidMap> .. <sbusControl-2>
    QString modulePower;   // empty when the unit has no module power page
    QString customOutput;  // empty when the unit has no output module
};

// The opening, the four fragments every unit has, then the output module's
// settings when the module kind is 2 and the module power settings
// otherwise, then the closing.
QString compose(const Fragments &fragments, int moduleKind);

// The fragments of a record as the pages write them after reading the unit.
// The module power page exists for module kind 1 only, the custom output
// page for kind 2 only: a unit of kind 0 gets neither.
Fragments fragmentsFromRecord(const DeviceData &data, int moduleKind);

// compose(fragmentsFromRecord(data, data.m_module), data.m_module).
QString text(const DeviceData &data);

// The same file holding only the given parts (what a backup knows of the
// unit): the elements of every other part are left out.
QString text(const DeviceData &data, const FileParts::Parts &parts);

// base with the values of the given parts taken from `from`, numbers as
// written (through the file, so exactly what a file of those parts would
// set); every other field keeps base's value.
DeviceData withParts(const DeviceData &base, const DeviceData &from, const FileParts::Parts &parts);

} // namespace RecordFile
