#pragma once

class QWidget;

// A new link-quality log monitor: a top-level window without parent that
// deletes itself when closed. The caller shows it.
QWidget *createLogWindow();
