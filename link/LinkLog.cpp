#include "LinkLog.h"

Q_LOGGING_CATEGORY(lcLink, "quillmark.link")
