#include "AppLog.h"

Q_LOGGING_CATEGORY(lcApp, "quillmark.app")
