#pragma once

#include "DeviceData.h"
#include "PageHost.h"

// A page host for programs that show pages without the main window (the
// page renderer, benchmarks): it holds a record of its own, and page switches
// go nowhere.
class RecordHost : public PageHost
{
public:
    DeviceData data;
    int model = 0;

    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return model; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override { }
    void showModelPage() override { }
};
