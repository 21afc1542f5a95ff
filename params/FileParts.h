#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <bitset>

// The parts of a parameter file, each filled by the unit's answer to one read
// request and written back by one write frame. Three parts need more than one
// answer before the file can hold them: an SBUS port's container (its tuning
// and its fixed values: the reader ignores a container without all eight
// children), the CAN frames (their count, then five answers per frame) and
// the serial stream (its header and its table). A part goes into a backup
// whole or not at all; the reader keeps the record's values for the elements
// a file leaves out.
namespace FileParts
{

enum Part {
    Sbus1,
    Sbus2,
    ChannelHold,
    KeyCombinations,
    SuperKeys,
    KeyKinds,
    HidMapping,
    HidMode,
    ThrottleHold,
    IdleWarning,
    LowVoltage,
    Baud,
    ExternalInput,
    SbusOutputs,
    SbusPriorities,
    SbusProtocols,
    SbusControl,
    ModulePower,
    ModuleSwitch,
    OutputMode,
    OutputEnables,
    CanFrequency,
    CanBaud,
    CanFrames,
    SerialStream,
    PartCount
};
using Parts = std::bitset<PartCount>;

// For messages: "SBUS 2 channel settings", "key kinds", ...
QString name(Part part);
// The names of the parts in the set, in file order, joined by ", ".
QString names(const Parts &parts);

// The file elements of a part (the SBUS parts: their container).
const QStringList &tags(Part part);

// The parts a unit of this radio module kind has: those of every unit, then
// the module power parts (kind 1) or the output module's (kind 2).
Parts ofModuleKind(int moduleKind);

// The part a read request or its answer belongs to; -1 for a request that
// reads no setting. Only the SBUS reads look at the payload: byte 0 is the
// port.
int ofRead(quint8 readCode, const QByteArray &payload);

// The parts a file holds completely: every element of the part present, an
// SBUS container with its eight children, and a frame count of 1 to 10 with
// a CANFrame element for each frame (a count of 0 stands for "no frames").
Parts inFile(const QByteArray &bytes);

// A file text made by the program (one element per line) without the
// elements of the parts not in the set; other lines stay.
QString keepOnly(const QString &text, const Parts &parts);

} // namespace FileParts
