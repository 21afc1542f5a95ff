#pragma once

#include <QString>

struct DeviceData;

// What the pages need of the main window: the parameter record, the page
// switches and the style of the program's dialogs. There is one host per
// process (the main window); pages reach it at their edges, in constructors
// and slots, and pass plain values further down.
class PageHost
{
public:
    static PageHost *instance();

    virtual DeviceData &deviceData() = 0;
    virtual int currentModel() const = 0;
    virtual QString dialogStyleSheet() const = 0;
    // The model page's channel-configuration button.
    virtual void showHub() = 0;
    // The hub's return button.
    virtual void showModelPage() = 0;

protected:
    PageHost();
    virtual ~PageHost();
};
