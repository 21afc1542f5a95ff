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

} // namespace RecordFile
