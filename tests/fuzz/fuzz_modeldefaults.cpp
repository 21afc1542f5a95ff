// Feeds arbitrary bytes to the model default file reader
// (config/<Model>Config.xml) over a record whose other settings hold marked
// values, then builds the SBUS and channel hold writes from it as the pages
// do. Any crash or sanitizer report is a finding; so is a name that still
// holds its ";", a voltage limit that is no number, an SBUS control name list
// that lost what it held, or a setting the file has no element for that
// changed.
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ModelDefaults.h"
#include "SbusCodec.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace
{

void check(bool ok)
{
    if (!ok)
        std::abort();
}

constexpr int kMark = 77;

void checkNames(const QStringList &names)
{
    for (const QString &name : names)
        check(!name.contains(QLatin1Char(';')));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    DeviceData record;
    record.sbusControlNames = QStringList { QStringLiteral("before") };
    record.channelMapNames = QStringList { QStringLiteral("stale") };
    for (int &gear : record.keyGear)
        gear = kMark;
    for (auto &port : record.sbusHold)
        for (auto &position : port)
            for (int &value : position)
                value = kMark;
    record.lowVoltage = 3.5;
    record.freeWarning = kMark;

    QBuffer file;
    file.setData(reinterpret_cast<const char *>(data), int(size));
    file.open(QIODevice::ReadOnly);
    loadModelDefaults(&file, record);

    // A model file gives the first twelve key kinds only, and nothing of the
    // hold positions, the low voltage warning or the idle warning.
    for (int i = 12; i < kKeyGears; ++i)
        check(record.keyGear[i] == kMark);
    for (const auto &port : record.sbusHold)
        for (const auto &position : port)
            for (int value : position)
                check(value == kMark);
    check(record.lowVoltage == 3.5 && record.freeWarning == kMark);
    check(qIsFinite(record.minVolt) && qIsFinite(record.maxVolt));
    // The name lists are replaced, except the SBUS control names, which
    // only grow.
    check(!record.channelMapNames.contains(QStringLiteral("stale")));
    check(record.sbusControlNames.value(0) == QLatin1String("before"));
    for (const QStringList *names : { &record.channelMapNames, &record.holdSwitchNames, &record.keyMapNames,
             &record.hidMapNames, &record.sbusControlNames })
        checkNames(*names);

    // What the pages send from these starting values has the unit's sizes.
    const QList<QByteArray> sbus = SbusCodec::payloadsFromRecord(record);
    check(sbus.size() == 4);
    for (int port = 0; port < kSbusPorts; ++port)
        check(sbus.at(2 * port).size() == SbusCodec::kTuningBytes
            && sbus.at(2 * port + 1).size() == SbusCodec::kNoneBytes);
    check(HoldCodec::payload(record).size() == HoldCodec::kPayloadBytes);
    return 0;
}
