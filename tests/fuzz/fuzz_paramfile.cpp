// Feeds arbitrary bytes to the parameter file reader, then builds every
// write payload and the file text from the record it left. Any crash,
// sanitizer report, a frame that is not well formed or a record outside its
// limits is a finding.
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    DeviceData record;
    record.canFrames.resize(3);
    ParameterFile::loadBytes(bytes, record);

    check(record.canFrames.size() <= kMaxCanFrames);
    check(record.CANFrameCnt <= kMaxCanFrames);

    AllPayloads all;
    const QList<QByteArray> sbus = SbusCodec::payloadsFromRecord(record);
    all.sbus[0] = sbus.mid(0, 2);
    all.sbus[1] = sbus.mid(2, 2);
    all.channelHold = { HoldCodec::payload(record) };
    check(sbus.at(0).size() == SbusCodec::kTuningBytes && sbus.at(1).size() == SbusCodec::kNoneBytes);
    check(all.channelHold.at(0).size() == HoldCodec::kPayloadBytes);
    for (const Request &request : Sequences::writeAll(all))
        checkFrame(request.frame);

    // What the record holds is written and read again without harm.
    const QString text
        = ParameterFile::join({ SbusCodec::fileFragment(record), HoldCodec::fileFragment(record) });
    DeviceData again;
    ParameterFile::loadBytes(text.toUtf8(), again);
    return 0;
}
