#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// The connected unit's whole parameter set. Field names follow the element
// names of the parameter file, so file, record and pages share one
// vocabulary. Channel arrays hold 16 entries (channel 1 at index 0); arrays
// per bus hold SBUS port 1 first, port 2 second.
//
// The record keeps values as the unit and the file know them: signed values
// are plain ints here; the sign-and-magnitude form of the wire is made where
// frames are built and parsed.

constexpr int kSbusPorts = 2;
constexpr int kChannels = 16;
constexpr int kHoldPositions = 3;
constexpr int kKeyCombinations = 5;
constexpr int kSuperKeys = 2;
constexpr int kKeyGears = 24;
constexpr int kHidAxes = 8;
constexpr int kSbusControlSets = 3;
constexpr int kMaxCanFrames = 10;
constexpr int kTtlTableSize = 40;

// Sentinels stored as they travel on the wire.
constexpr int kFailsafeOff = 255;   // safeProtectionValue: no failsafe value
constexpr int kChannelMapNone = 254; // channelMap: "NONE", output is noneValue
constexpr int kNoSelection = 255;   // key, hold switch, throttle switch: "NONE" / no switch

// One CAN frame the output module sends (edited by the CAN frame editors).
struct CanFrameRecord {
    qint32 index = 0;
    quint16 standardId = 0;
    quint32 extendedId = 0;
    // As edited 0/1; after a write the unit's 0/4 and 0/2 are stored back.
    // Readers test for non-zero.
    quint8 ide = 0;         // identifier type: 0 standard, non-zero extended
    quint8 rtr = 0;         // frame type: 0 data, non-zero remote
    quint8 dlc = 0;         // number of data bytes in use
    quint8 dataMask = 0;    // bit i: data byte i in use
    quint8 nonlinearMask = 0; // bit i: data byte i mapped bit by bit
    quint8 bitMap[8][8][2] = {};  // per data byte and bit: (source channel, second value)
    quint8 byteMap[8][3] = {};    // per data byte: (data index, source channel, third value)
};
constexpr int kCanChannelNone = 254; // a data mapping channel of "NONE"

// The custom serial (TTL) output stream definition.
struct TtlStream {
    quint8 header[4] = {};
    quint16 range[2] = {};
    quint8 table1[kTtlTableSize] = {};
    quint8 table2[kTtlTableSize] = {};
};

struct DeviceData {
    // Radio module kind reported by the unit (answer 0xDF): 0, 1 or 2.
    int m_module = 0;

    QStringList channelMapNames;

    // SBUS channel settings, [port][channel].
    int phase[kSbusPorts][kChannels] = {};
    int fineTuning[kSbusPorts][kChannels] = {};
    int leftTrip[kSbusPorts][kChannels] = {};
    int rightTrip[kSbusPorts][kChannels] = {};
    int safeProtectionState[kSbusPorts][kChannels] = {};
    int safeProtectionValue[kSbusPorts][kChannels] = {};
    int channelMap[kSbusPorts][kChannels] = {};
    int noneValue[kSbusPorts][kChannels] = {};

    // Channel hold.
    QStringList holdSwitchNames;
    int sbusHoldSwitch[kSbusPorts] = {};
    // File tags sbus1-0 .. sbus1-2 and sbus2-0 .. sbus2-2: [port][position][channel].
    int sbusHold[kSbusPorts][kHoldPositions][kChannels] = {};

    // Keys.
    QStringList keyMapNames;
    int ckeyMap[kKeyCombinations][3] = {};
    int sckeyMap[kSuperKeys][12] = {};
    int keyGear[kKeyGears] = {};

    QStringList hidMapNames;
    QStringList sbusControlNames;
    double minVolt = 0.0;
    double maxVolt = 0.0;

    // Comprehensive settings.
    double lowVoltage = 0.0;
    int hidMap[kHidAxes] = {};
    int throttleIndex = 0; // file tag throttleHoldSwitch
    int hidOutput = 0;
    int throttleData = 0;  // hold mode 0..2
    int freeWarning = 0;
    int baud = 0;
    int sbusOutput[2] = {};
    int externalInput = 0;
    double throttleDataValues[3] = {}; // hold value, recovery speed, hold speed
    quint8 sbusVersion = 0;
    quint8 sbusPriority = 0;
    int sbusControlSwitch = 0;
    int sbusControl[kSbusControlSets][4] = {}; // file tags sbusControl-0 .. sbusControl-2

    // Radio module power page.
    int modulePowerState[2] = {};
    int modulePhysicalCtl[2] = {};
    QStringList modulePhysicalNames; // items of the physical power switch selector

    // Custom output (external output module).
    int PyxGOutputMode = 0;
    bool TTLEnable = false;
    bool CANEnable = false;
    quint8 CANFrequency = 20;
    quint8 CANFrameCnt = 0;
    QString CANBaud;
    // Choices of the CAN data mapping, from config/PyxModule.xml: the inputs
    // that fill a whole data byte, and those that fill single bits.
    QStringList pyxChannelNames;
    QStringList pyxBitNames;
    // At most kMaxCanFrames; its length changes only through CanFrameList
    // (CustomOutputCodec.h), which keeps CANFrameCnt and the indices with it.
    QVector<CanFrameRecord> canFrames;
    TtlStream TTLStream;
};
