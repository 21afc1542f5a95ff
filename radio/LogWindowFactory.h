#pragma once

class QWidget;

// A new link-quality log monitor window, without parent and not yet shown;
// the module window opens one per press of its "DRPR 上报日志" button.
QWidget *createLogWindow();
