#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

struct DeviceData;

// What the setting pages show against what the unit holds: the fields whose
// write would send something else than the unit last answered (or last took
// from a write). Values are compared as they travel on the wire, so a record
// holding a failsafe signed and one holding it as a magnitude agree, and a
// speed the unit cannot store more finely than it does is no edit.
namespace UnwrittenEdits
{

// The groups the unit answers one by one. A group the unit has said nothing
// about in this connection has nothing to differ from.
enum Group : quint32 {
    SbusTuning1 = 1u << 0,
    SbusTuning2 = 1u << 1,
    SbusNone1 = 1u << 2,
    SbusNone2 = 1u << 3,
    ChannelHold = 1u << 4,
    KeyCombinations = 1u << 5,
    SuperKeys = 1u << 6,
    KeyKinds = 1u << 7,
    HidMapping = 1u << 8,
    HidOutput = 1u << 9,
    ThrottleHold = 1u << 10,
    IdleWarning = 1u << 11,
    LowVoltage = 1u << 12,
    Baud = 1u << 13,
    ExternalInput = 1u << 14,
    SbusOutput = 1u << 15,
    SbusPriority = 1u << 16,
    SbusProtocol = 1u << 17,
    SbusControl = 1u << 18,
    ModulePower = 1u << 19,
    ModulePhysical = 1u << 20,
    OutputMode = 1u << 21,
    OutputEnables = 1u << 22,
    CanFrequency = 1u << 23,
    StreamHead = 1u << 24,
    CanBaud = 1u << 25,
};
using Groups = quint32;

constexpr Groups kSbusPort1 = SbusTuning1 | SbusNone1;
constexpr Groups kSbusPort2 = SbusTuning2 | SbusNone2;
constexpr Groups kButtons = KeyCombinations | SuperKeys | KeyKinds;
constexpr Groups kComprehensive = HidMapping | HidOutput | ThrottleHold | IdleWarning | LowVoltage | Baud
    | ExternalInput | SbusOutput | SbusPriority | SbusProtocol | SbusControl;
constexpr Groups kModulePower = ModulePower | ModulePhysical;
constexpr Groups kCustomOutput = OutputMode | OutputEnables | CanFrequency | StreamHead | CanBaud;

// The group an accepted answer to the read request `readCode` filled (the
// SBUS answers name their port in byte 0); 0 for any other code.
Groups groupOfAnswer(quint8 readCode, const QByteArray &payload);

// A field's key: the record's field name and its indices, "fineTuning/0/3".
// The failsafe of a channel is "failsafe/p/c" (value and sign together), the
// three reals of the throttle hold "throttleValue/0" .. "/2", the TTL
// stream's header "TTLStream".
QString key(const char *field, int i = -1, int j = -1, int k = -1);

// The keys of the fields, among the groups given, whose write from `shown`
// differs from what `unit` holds. `model` (0..6) decides the key kinds' layout.
QSet<QString> differing(const DeviceData &shown, const DeviceData &unit, Groups groups, int model);

// Takes the groups' values from one record into the other, as the unit would
// answer them.
void copyGroups(const DeviceData &from, DeviceData &to, Groups groups, int model);

} // namespace UnwrittenEdits
