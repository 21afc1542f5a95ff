#pragma once

#include <QtGlobal>

// The group codes the configurator addresses by number range (comprehensive
// and module power group 0x30..0x39, custom output 0xD1..0xDE and 0x20..0x27),
// named as the unit uses them.
namespace Vunit::Code
{
constexpr quint8 ReadSbusPriority = 0x30;
constexpr quint8 WriteSbusPriority = 0x31;
constexpr quint8 ReadSbusProtocol = 0x32;
constexpr quint8 WriteSbusProtocol = 0x33;
constexpr quint8 ReadSbusControl = 0x34;
constexpr quint8 WriteSbusControl = 0x35; // arrives as the fixed 12-byte frame
constexpr quint8 ReadModulePower = 0x36;
constexpr quint8 WriteModulePower = 0x37;
constexpr quint8 ReadModuleSwitch = 0x38;
constexpr quint8 WriteModuleSwitch = 0x39;

constexpr quint8 ReadEnableFlags = 0xD1;
constexpr quint8 WriteEnableFlags = 0xD2;
constexpr quint8 ReadCanFrequency = 0xD3;
constexpr quint8 WriteCanFrequency = 0xD4;
constexpr quint8 ReadCanFrame = 0xD5; // with the frame index; 0x0A asks for the count
constexpr quint8 WriteCanFrame = 0xD6;
constexpr quint8 ReadStreamHeader = 0xD7;
constexpr quint8 WriteStreamHeader = 0xD8;
constexpr quint8 ReadStreamTable = 0xD9;
constexpr quint8 WriteStreamTable = 0xDA;
// Per CAN frame, read and written with the frame index in byte 0 (layouts in
// CustomOutputCodec.h).
constexpr quint8 ReadFrameMasks = 0xDB;
constexpr quint8 WriteFrameMasks = 0xDC;
constexpr quint8 ReadFrameBitChannels = 0xDD;
constexpr quint8 WriteFrameBitChannels = 0xDE;
constexpr quint8 ReadFrameBitValues = 0x20;
constexpr quint8 WriteFrameBitValues = 0x21;
constexpr quint8 ReadFrameByteChannels = 0x22;
constexpr quint8 WriteFrameByteChannels = 0x23;
constexpr quint8 ReadCanBaud = 0x24;
constexpr quint8 WriteCanBaud = 0x25;
constexpr quint8 WriteCanData = 0x27;
} // namespace Vunit::Code
