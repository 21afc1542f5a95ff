#include "RecordFile.h"

#include "ButtonCodec.h"
#include "ComprehensiveCodec.h"
#include "CustomOutputCodec.h"
#include "DeviceData.h"
#include "HoldCodec.h"
#include "ModulePowerCodec.h"
#include "ParameterFile.h"
#include "ParamsLog.h"
#include "SbusCodec.h"

namespace RecordFile
{

QString compose(const Fragments &fragments, int moduleKind)
{
    QString text = ParameterFile::opening() + fragments.sbus + fragments.channelHold + fragments.buttons
        + fragments.comprehensive;
    qCDebug(lcParams).noquote() << text;
    text += moduleKind == 2 ? fragments.customOutput : fragments.modulePower;
    return text + ParameterFile::closing();
}

Fragments fragmentsFromRecord(const DeviceData &data, int moduleKind)
{
    Fragments f;
    f.sbus = SbusCodec::fileFragment(data);
    f.channelHold = HoldCodec::fileFragment(data);
    f.buttons = ButtonCodec::fileFragment(ButtonCodec::Settings::fromRecord(data));
    f.comprehensive = ComprehensiveCodec::fileFragment(ComprehensiveCodec::Settings::fromRecord(data));
    if (moduleKind == 1)
        f.modulePower = ModulePowerCodec::fileFragment(data);
    else if (moduleKind == 2)
        f.customOutput = CustomOutputCodec::fileFragment(data);
    return f;
}

QString text(const DeviceData &data)
{
    return compose(fragmentsFromRecord(data, data.m_module), data.m_module);
}

QString text(const DeviceData &data, const FileParts::Parts &parts)
{
    Fragments f = fragmentsFromRecord(data, data.m_module);
    for (QString *fragment :
        { &f.sbus, &f.channelHold, &f.buttons, &f.comprehensive, &f.modulePower, &f.customOutput })
        *fragment = FileParts::keepOnly(*fragment, parts);
    return compose(f, data.m_module);
}

DeviceData withParts(const DeviceData &base, const DeviceData &from, const FileParts::Parts &parts)
{
    DeviceData out = base;
    DeviceData source = from;
    source.m_module = base.m_module;
    ParameterFile::loadBytes(text(source, parts).toUtf8(), out, ParameterFile::FixedValues::AsWritten);
    return out;
}

} // namespace RecordFile
