// Feeds arbitrary bytes to the parameter file reader, then builds every
// write payload and the file text from the record it left. Any crash,
// sanitizer report, a frame that is not well formed or a record outside its
// limits is a finding; so is an output module group that its own answers or
// its own file fragment do not give back.
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ParameterFile.h"
#include "SbusCodec.h"
#include "Sequences.h"

#include <cstdint>
#include <cstdlib>

namespace
{

void check(bool ok)
{
    if (!ok)
        std::abort();
}

// 0xFA, code, length (16-bit little-endian), payload, 0x5F. The SBUS control
// write is the one frame of fixed size; the setting groups fuzzed here never
// send it.
void checkFrame(const QByteArray &frame)
{
    check(frame.size() >= 5);
    check(quint8(frame.at(0)) == 0xFA && quint8(frame.at(frame.size() - 1)) == 0x5F);
    const int length = quint8(frame.at(2)) | (quint8(frame.at(3)) << 8);
    check(length == frame.size() - 5);
}

// The output module's group: the frame list and its count agree, the write
// has 7 or 5 F + 6 payloads of the layouts' sizes, a unit answering each
// write with it rebuilds the same write, and the fragment reads back as
// itself.
void checkCustomOutput(const DeviceData &record)
{
    using namespace CustomOutputCodec;
    const int frames = record.canFrames.size();
    check(frames <= kMaxCanFrames && record.CANFrameCnt == frames);
    for (int i = 0; i < frames; ++i)
        check(record.canFrames.at(i).index == i);

    const QList<QByteArray> payloads = payloadsFromRecord(record);
    check(payloads.size() == customOutputPayloadCount(frames));
    const int headers = qMax(1, frames);
    for (int i = 0; i < headers; ++i)
        check(payloads.at(3 + i).size() == (frames ? kFrameHeaderBytes : 1));
    check(payloads.at(3 + headers).size() == kStreamHeadBytes);
    check(payloads.at(4 + headers).size() == kStreamTableBytes);
    for (const QByteArray &p : payloads)
        check(!p.isEmpty() && p.size() <= 95);

    DeviceData echo;
    check(decodeEnables(payloads.at(1), echo));
    for (int i = 0; i < headers; ++i)
        check(decodeUnitFrameCount(payloads.at(3 + i), echo));
    check(decodeStreamHead(payloads.at(3 + headers), echo));
    check(decodeStreamTable(payloads.at(4 + headers), echo));
    using Decoder = bool (*)(const QByteArray &, DeviceData &);
    const Decoder perFrame[]
        = { decodeFrameMasks, decodeFrameBitChannels, decodeFrameBitValues, decodeFrameByteChannels };
    for (int g = 0; g < 4; ++g)
        for (int i = 0; i < frames; ++i)
            check(perFrame[g](payloads.at(5 + headers + g * frames + i), echo));
    check(decodeCanBaud(payloads.last(), echo));
    // Mode and CAN frequency answers out of their ranges are not taken.
    QList<QByteArray> rebuilt = payloadsFromRecord(echo);
    rebuilt[0] = payloads.at(0);
    rebuilt[2] = payloads.at(2);
    check(rebuilt == payloads);

    const QString fragment = fileFragment(record);
    DeviceData again;
    ParameterFile::loadBytes(ParameterFile::join({ fragment }).toUtf8(), again);
    check(fileFragment(again) == fragment);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    DeviceData record;
    CanFrameList::resize(record, 3);
    ParameterFile::loadBytes(bytes, record);
    checkCustomOutput(record);

    AllPayloads all;
    const QList<QByteArray> sbus = SbusCodec::payloadsFromRecord(record);
    all.sbus[0] = sbus.mid(0, 2);
    all.sbus[1] = sbus.mid(2, 2);
    all.channelHold = { HoldCodec::payload(record) };
    all.customOutput = CustomOutputCodec::payloadsFromRecord(record);
    all.canFrames = record.canFrames.size();
    all.moduleKind = 2;
    check(sbus.at(0).size() == SbusCodec::kTuningBytes && sbus.at(1).size() == SbusCodec::kNoneBytes);
    check(all.channelHold.at(0).size() == HoldCodec::kPayloadBytes);
    const RequestPlan plan = Sequences::writeAll(all);
    check(plan.size() == 2 * 2 + 1 + all.customOutput.size());
    for (const Request &request : plan)
        checkFrame(request.frame);

    // What the record holds is written and read again without harm.
    const QString text = ParameterFile::join({ SbusCodec::fileFragment(record),
        HoldCodec::fileFragment(record), CustomOutputCodec::fileFragment(record) });
    DeviceData again;
    ParameterFile::loadBytes(text.toUtf8(), again);
    return 0;
}
