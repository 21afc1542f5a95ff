#include "RecordTransfer.h"

#include "ButtonCodec.h"
#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "FrameCutter.h"
#include "HoldCodec.h"
#include "ModulePowerCodec.h"
#include "ParameterFile.h"
#include "RecordAnswers.h"
#include "RecordDiff.h"
#include "RecordFile.h"
#include "SbusCodec.h"

#include <QFile>
#include <QXmlStreamReader>

namespace RecordTransfer
{

AllPayloads allPayloads(const DeviceData &data, int model, int moduleKind)
{
    AllPayloads all;
    for (int port = 0; port < kSbusPorts; ++port)
        all.sbus[port] = { SbusCodec::tuningPayload(data, port), SbusCodec::nonePayload(data, port) };
    all.channelHold = { HoldCodec::payload(data) };
    all.buttons = ButtonCodec::payloads(ButtonCodec::Settings::fromRecord(data), model);
    all.comprehensive = ComprehensiveCodec::payloads(ComprehensiveCodec::Settings::fromRecord(data));
    if (moduleKind == 1)
        all.radioModule = ModulePowerCodec::payloads(data);
    else if (moduleKind == 2)
        all.customOutput = CustomOutputCodec::payloadsFromRecord(data);
    all.canFrames = data.canFrames.size();
    all.moduleKind = moduleKind;
    return all;
}

DeviceData afterWriting(const RequestPlan &plan, int model, int moduleKind)
{
    DeviceData data;
    data.m_module = moduleKind;
    FrameCutter cutter;
    for (const Request &request : plan) {
        cutter.feed(request.frame, [&](quint8 code, const QByteArray &payload) {
            if (const quint8 read = RecordAnswers::readCodeOfWrite(code))
                RecordAnswers::decode(read, payload, model, data);
        });
    }
    return data;
}

namespace
{

// The code and payload of a request frame.
bool cut(const Request &request, quint8 *code, QByteArray *payload)
{
    FrameCutter cutter;
    bool found = false;
    cutter.feed(request.frame, [&](quint8 c, const QByteArray &p) {
        if (!found) {
            *code = c;
            *payload = p;
            found = true;
        }
    });
    return found;
}

} // namespace

int partOfRead(const Request &request)
{
    quint8 code = 0;
    QByteArray payload;
    return cut(request, &code, &payload) ? FileParts::ofRead(code, payload) : -1;
}

int partOfWrite(const Request &request)
{
    quint8 code = 0;
    QByteArray payload;
    if (!cut(request, &code, &payload))
        return -1;
    const quint8 read = RecordAnswers::readCodeOfWrite(code);
    return read ? FileParts::ofRead(read, payload) : -1;
}

RequestPlan onlyParts(const RequestPlan &plan, const FileParts::Parts &parts, int (*partOf)(const Request &))
{
    RequestPlan out;
    for (const Request &r : plan) {
        const int part = partOf(r);
        if (part >= 0 && parts.test(size_t(part)))
            out.append(r);
    }
    return out;
}

QStringList verify(
    const DeviceData &file, const DeviceData &readBack, const FileParts::Parts &written, int model)
{
    DeviceData expected = RecordFile::withParts(readBack, file, written);
    // The unit has kinds for its own keys only; the file's others never travel.
    const int keys
        = model == ButtonCodec::kLarchModel ? ButtonCodec::kLarchKeyKindBytes : ButtonCodec::kKeyKindBytes;
    for (int k = keys; k < kKeyGears; ++k)
        expected.keyGear[k] = readBack.keyGear[k];
    return RecordDiff::differences(expected, readBack);
}

QString windowReadsFixedValuesOtherwise(const QByteArray &fileBytes)
{
    DeviceData written;
    DeviceData converted;
    ParameterFile::loadBytes(fileBytes, written, ParameterFile::FixedValues::AsWritten);
    ParameterFile::loadBytes(fileBytes, converted, ParameterFile::FixedValues::Converted);
    constexpr int kShown = 4;
    QStringList entries;
    int count = 0;
    for (int port = 0; port < kSbusPorts; ++port) {
        for (int c = 0; c < kChannels; ++c) {
            if (written.noneValue[port][c] == converted.noneValue[port][c])
                continue;
            if (++count <= kShown)
                entries << QStringLiteral("SBUS %1 CH%2 %3 as %4")
                               .arg(port + 1)
                               .arg(c + 1)
                               .arg(written.noneValue[port][c])
                               .arg(converted.noneValue[port][c]);
        }
    }
    if (count == 0)
        return QString();
    if (count > kShown)
        entries << QStringLiteral("%1 more").arg(count - kShown);
    return QStringLiteral("notice: the window's Load Config reads fixed values otherwise than written (%1); "
                          "quillmark-cli uses the numbers as written")
        .arg(entries.join(QStringLiteral(", ")));
}

bool checkFile(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    QXmlStreamReader xml(&file);
    bool root = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && !root) {
            root = true;
            if (xml.name() != QLatin1String("body")) {
                *error = QStringLiteral("%1: not a parameter file (its root is <%2>, not <body>)")
                             .arg(path, xml.name().toString());
                return false;
            }
        }
    }
    if (xml.hasError()) {
        *error = QStringLiteral("%1:%2:%3: %4")
                     .arg(path)
                     .arg(xml.lineNumber())
                     .arg(xml.columnNumber())
                     .arg(xml.errorString());
        return false;
    }
    if (!root) {
        *error = QStringLiteral("%1: not a parameter file (no <body>)").arg(path);
        return false;
    }
    return true;
}

} // namespace RecordTransfer
