#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct CanFrameRecord;
struct DeviceData;
struct TtlStream;

// The output module's group (output mode, CAN frames with their data
// mapping, the custom serial stream) on the wire and in the parameter file.
//
// A write payload and the answer to the matching read have one layout, so a
// unit answers with what it was sent. Multi-byte values are little-endian.
//
//  read      write  answer  bytes  layout
//  0x15      0x16   38      1      PyxGOutputMode: 1 SBUS, 2 TTL, 3 RS232
//  0xD1      0xD2   44      1      bit 0 TTLEnable, bit 4 (0x10) CANEnable
//  0xD3      0xD4   46      1      CANFrequency; answers outside 10..200 are not taken
//  0xD5 k    0xD6   48      11     F, k, standard id (2), extended id (4), IDE sent as
//                                  0/4, RTR sent as 0/2, data length (held at 8)
//  0xD5 0x0A        48      1      F alone (0x0A names no frame); the write of "no
//                                  frames" is the single byte 0
//  0xD7      0xD8   50      8      TTLStream.header[0..3], minimum (2), maximum (2)
//  0xD9      0xDA   52      46     40 (the stream table size), the 40 stream flags
//                                  packed eight to a byte (bit k of byte 1 + j is flag
//                                  8j + k), then the 40 selector indices (table2)
//  0xDB k    0xDC   54      19     k, data mask, nonlinear mask, the first values of
//                                  the 8 byte triples, then their third values
//  0xDD k    0xDE   56      65     k, source channel of data byte j bit b at 1 + 8j + b
//  0x20 k    0x21   59      65     k, second value of the pair of byte j bit b, likewise
//  0x22 k    0x23   61      9      k, source channel of data byte 0..7 (254 "NONE")
//  0x24      0x25   63      1      CAN baud, index into "50K" .. "1M"
//
// Our choices where the unit's group leaves the layout open: the 0xD9/0xDA
// table leads with its size and the serial stream header with its frequency,
// so that no answer can start with the refusal byte 0xEE; the CAN baud
// travels in the closing one-byte write; the serial stream's baud rate,
// checksum and byte order share header[3] (see TtlFormat).
//
// TTLStream:
//   header[0]  frequency, 10..200
//   header[1]  frame head, header[2] frame end
//   header[3]  format: bits 0..3 baud index (ttlBaudTexts()), bits 4..5
//              checksum mode (sum, XOR, CRC16, CRC32), bit 7 big-endian
//   range[0], range[1]  data minimum and maximum, 16-bit two's complement
//   table1     the 40 stream flags (0 or 1), table2 the 40 selector indices
namespace CustomOutputCodec
{

constexpr int kFrameHeaderBytes = 11;
constexpr int kStreamHeadBytes = 8;
constexpr int kStreamTableBytes = 46;
constexpr int kFrameMasksBytes = 19;
constexpr int kFrameBitsBytes = 65;
constexpr int kFrameChannelsBytes = 9;
// The read of the frame count names no frame.
constexpr quint8 kCountOnly = 0x0A;

constexpr int kMinFrequency = 10;
constexpr int kMaxFrequency = 200;
constexpr int kDataLimit = 10000;

// TTLStream.header entries.
constexpr int kTtlFrequency = 0;
constexpr int kTtlFrameHead = 1;
constexpr int kTtlFrameEnd = 2;
constexpr int kTtlFormat = 3;

// Output modes.
constexpr int kModeSbus = 1;
constexpr int kModeTtl = 2;
constexpr int kModeRs232 = 3;

// The selector texts that stand for wire indices.
const QStringList &canBaudTexts();
const QStringList &ttlBaudTexts();
int canBaudIndex(const QString &text); // 0 for a text that is none of them

struct TtlFormat {
    int baud = 0; // index into ttlBaudTexts()
    int checksum = 0; // 0 sum, 1 XOR, 2 CRC16, 3 CRC32
    bool bigEndian = false;
};
TtlFormat ttlFormat(quint8 byte);
quint8 ttlFormatByte(const TtlFormat &format);

// Answers. Each returns true when it took the payload into the record; a
// payload of another length, a value the field cannot hold or a frame the
// list does not have leaves the record as it was.
bool decodeOutputMode(const QByteArray &payload, DeviceData &data); // 38
bool decodeEnables(const QByteArray &payload, DeviceData &data); // 44
bool decodeCanFrequency(const QByteArray &payload, DeviceData &data); // 46
// 48: a count below 11 becomes CANFrameCnt; a list holding more frames loses
// them from its end, a shorter one stays as it is. An 11-byte answer also
// fills the header of the frame it names, when the list has it.
bool decodeFrameCount(const QByteArray &payload, DeviceData &data);
// The same for a record that mirrors the unit (backups, the command line):
// there the list follows the count both ways.
bool decodeUnitFrameCount(const QByteArray &payload, DeviceData &data);
bool decodeStreamHead(const QByteArray &payload, DeviceData &data); // 50
bool decodeStreamTable(const QByteArray &payload, DeviceData &data); // 52
bool decodeFrameMasks(const QByteArray &payload, DeviceData &data); // 54
bool decodeFrameBitChannels(const QByteArray &payload, DeviceData &data); // 56
bool decodeFrameBitValues(const QByteArray &payload, DeviceData &data); // 59
bool decodeFrameByteChannels(const QByteArray &payload, DeviceData &data); // 61
bool decodeCanBaud(const QByteArray &payload, DeviceData &data); // 63

// Writes, one payload each.
QByteArray enablesPayload(const DeviceData &data);
QByteArray frameHeaderPayload(const CanFrameRecord &frame, int frameCount, int index);
QByteArray streamHeadPayload(const TtlStream &stream);
QByteArray streamTablePayload(const TtlStream &stream);
QByteArray frameMasksPayload(const CanFrameRecord &frame, int index);
QByteArray frameBitChannelsPayload(const CanFrameRecord &frame, int index);
QByteArray frameBitValuesPayload(const CanFrameRecord &frame, int index);
QByteArray frameByteChannelsPayload(const CanFrameRecord &frame, int index);

// The whole write in the order the write sequence sends it: 0x16, 0xD2,
// 0xD4, 0xD6 per frame (the single byte 0 without frames), 0xD8, 0xDA, then
// with frames 0xDC, 0xDE, 0x21 and 0x23 per frame each, and 0x25. That is 7
// payloads without frames and 5 F + 6 with F frames.
QList<QByteArray> payloadsFromRecord(const DeviceData &data);

// PyxGOutputMode, TTLEnable, CANEnable, CANFrequency, CANBaud, CANFrameCnt,
// one CANFrame per frame in list order, TTLStream (no line end after it).
QString fileFragment(const DeviceData &data);

} // namespace CustomOutputCodec

// The CAN frame list of the record. Every change of its length goes through
// here, so that CANFrameCnt and each frame's index always follow the list.
namespace CanFrameList
{

// Grows with zeroed frames or shrinks from the end to count (0..10).
void resize(DeviceData &data, int count);
// Appends a zeroed frame; false when the list holds ten already.
bool append(DeviceData &data);
// Removes the frame at index; the later frames move up and are renumbered.
bool remove(DeviceData &data, int index);

} // namespace CanFrameList
