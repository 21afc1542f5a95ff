#pragma once

class QWidget;

// A new link-quality log monitor: a top-level window without parent that
// deletes itself when closed. The caller shows it; the module window opens
// one per press of its "DRPR 上报日志" button.
QWidget *createLogWindow();
