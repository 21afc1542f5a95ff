#include "RadioLog.h"

Q_LOGGING_CATEGORY(lcRadio, "quillmark.radio")
