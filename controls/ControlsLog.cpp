#include "ControlsLog.h"

Q_LOGGING_CATEGORY(lcControls, "quillmark.controls")
