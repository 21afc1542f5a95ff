#include "SettingPage.h"

#include "DeviceData.h"
#include "PageHost.h"

DeviceData &SettingPage::record()
{
    if (PageHost *host = PageHost::instance())
        return host->deviceData();
    static DeviceData standalone;
    return standalone;
}

const DeviceData &SettingPage::record() const
{
    return const_cast<SettingPage *>(this)->record();
}
