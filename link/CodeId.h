#pragma once

#include <QMetaType>

// The number under which an answer's payload is handed to the pages through
// MainWindow::signal_information(CodeID, QByteArray). The values are fixed:
// the pages pick their answers by them.
enum CodeID : int {
    SearchDevicesData = 0,       // 0xFE
    SbusTuningData = 1,          // 0xA3
    ChannelDataReport = 3,       // 0xA5, payload without its status byte
    BatteryData = 4,             // 0xAD
    KeyCombinationData = 5,      // 0xC0
    SuperKeyData = 7,            // 0xC2
    SbusOutputData = 9,          // 0xC4
    HidMappingData = 11,         // 0xC6
    KeyAttributeData = 15,       // 0xCA
    SbusNoneData = 17,           // 0xA7
    ChannelHoldData = 19,        // 0xB4
    ThrottleHoldData = 21,       // 0xB6
    CalibrationStarted = 23,     // 0xE6
    CalibrationFinished = 24,    // 0xE7
    IdleWarningData = 26,        // 0xE9
    LowVoltageData = 29,         // 0xEB
    ExternalChargingData = 32,   // 0xEE
    ModuleGroundResetResult = 34, // 0x11
    ModuleAirResetResult = 35,   // 0x12
    BaudData = 36,               // 0x13
    OutputModuleRead = 38,       // 0x15
    OutputModuleWrite = 39,      // 0x16
    HidOutputData = 40,          // 0x17
    ExternalSbusInputData = 42,  // 0x19

    // 0xD1..0xDE: 44 + (code - 0xD1)
    CustomOutputD1 = 44, CustomOutputD2, CustomOutputD3, CustomOutputD4, CustomOutputD5, CustomOutputD6,
    CustomOutputD7, CustomOutputD8, CustomOutputD9, CustomOutputDA, CustomOutputDB, CustomOutputDC,
    CustomOutputDD, CustomOutputDE,

    // 0x20..0x27: 59 + (code - 0x20); 0x26 is shown in the CAN receive window instead
    CanMapping20 = 59, CanMapping21, CanMapping22, CanMapping23, CanMapping24, CanMapping25,
    CanMapping26, CanMapping27,

    // 0x30..0x39: 68 + (code - 0x30)
    Group30 = 68, Group31, Group32, Group33, Group34, Group35, Group36, Group37, Group38, Group39,
};
Q_DECLARE_METATYPE(CodeID)

// Registers CodeID for queued connections and QSignalSpy.
void registerCodeIdMetaType();
