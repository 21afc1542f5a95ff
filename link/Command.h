#pragma once

#include <QtGlobal>

// Command code bytes of the unit's serial protocol. A request and its answer
// carry the same code.
namespace Command {
constexpr quint8 SearchDevices = 0xFE;
constexpr quint8 ReadSbusTuning = 0xA3;
constexpr quint8 WriteSbusTuning = 0xA4;
constexpr quint8 ChannelReport = 0xA5;
constexpr quint8 ReadSbusNone = 0xA7;
constexpr quint8 WriteSbusNone = 0xA8;
constexpr quint8 ReadBattery = 0xAD;
constexpr quint8 ReadChannelHold = 0xB4;
constexpr quint8 WriteChannelHold = 0xB5;
constexpr quint8 ReadThrottleHold = 0xB6;
constexpr quint8 WriteThrottleHold = 0xB7;
constexpr quint8 ReadKeyCombinations = 0xC0;
constexpr quint8 WriteKeyCombinations = 0xC1;
constexpr quint8 ReadSuperKeys = 0xC2;
constexpr quint8 WriteSuperKeys = 0xC3;
constexpr quint8 ReadSbusOutput = 0xC4;
constexpr quint8 WriteSbusOutput = 0xC5;
constexpr quint8 ReadHidMapping = 0xC6;
constexpr quint8 WriteHidMapping = 0xC7;
constexpr quint8 ReadKeyAttributes = 0xCA;
constexpr quint8 WriteKeyAttributes = 0xCB;
constexpr quint8 StopUpload = 0xE4;
constexpr quint8 StartUpload = 0xE5;
constexpr quint8 StartCalibration = 0xE6;
constexpr quint8 FinishCalibration = 0xE7;
constexpr quint8 WriteIdleWarning = 0xE8;
constexpr quint8 ReadIdleWarning = 0xE9;
constexpr quint8 FactoryReset = 0xEA;
constexpr quint8 ReadLowVoltage = 0xEB;
constexpr quint8 WriteLowVoltage = 0xEC;
constexpr quint8 WriteExternalCharging = 0xED;
constexpr quint8 ReadExternalCharging = 0xEE;
constexpr quint8 ModuleGroundReset = 0x11;
constexpr quint8 ModuleAirReset = 0x12;
constexpr quint8 ReadBaud = 0x13;
constexpr quint8 WriteBaud = 0x14;
constexpr quint8 ReadOutputModule = 0x15;
constexpr quint8 WriteOutputModule = 0x16;
constexpr quint8 ReadHidOutput = 0x17;
constexpr quint8 WriteHidOutput = 0x18;
constexpr quint8 ReadExternalSbusInput = 0x19;
constexpr quint8 WriteExternalSbusInput = 0x1A;
constexpr quint8 CanData = 0x26;
constexpr quint8 ModuleKind = 0xDF;
constexpr quint8 Identify = 0xFF;

// Custom output group 0xD1..0xDE (odd: read, even: write), CAN data mapping
// 0x20..0x27 (even: read, odd: write), comprehensive and module power group
// 0x30..0x39 (even: read, odd: write).
constexpr quint8 CustomOutputFirst = 0xD1;
constexpr quint8 CustomOutputLast = 0xDE;
constexpr quint8 CanMappingFirst = 0x20;
constexpr quint8 CanMappingLast = 0x27;
constexpr quint8 GroupFirst = 0x30;
constexpr quint8 GroupLast = 0x39;

// Upload start modes (first payload byte of 0xE5); the second byte is 0x32.
constexpr quint8 UploadModeSettings = 0x01;
constexpr quint8 UploadModeModelPage = 0x02;
constexpr quint8 UploadRate = 0x32;

// First payload byte of an answer that the unit refused or failed.
constexpr quint8 StatusFailed = 0xEE;
constexpr quint8 StatusOk = 0x00;
} // namespace Command
