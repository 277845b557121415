#include "minibar/Logging.h"

Q_LOGGING_CATEGORY(lcWindow, "tarvinel.window", QtWarningMsg)
