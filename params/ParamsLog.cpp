#include "ParamsLog.h"

Q_LOGGING_CATEGORY(lcParams, "quillmark.params")
