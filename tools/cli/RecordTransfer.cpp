#include "RecordTransfer.h"

#include "ButtonCodec.h"
#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "FrameCutter.h"
#include "HoldCodec.h"
#include "ModulePowerCodec.h"
#include "RecordAnswers.h"
#include "SbusCodec.h"

#include <QFile>
#include <QXmlStreamReader>

namespace RecordTransfer
{

AllPayloads allPayloads(const DeviceData &data, int model, int moduleKind)
{
    AllPayloads all;
    const QList<QByteArray> sbus = SbusCodec::payloadsFromRecord(data);
    all.sbus[0] = sbus.mid(0, kSbusPayloads);
    all.sbus[1] = sbus.mid(kSbusPayloads);
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
