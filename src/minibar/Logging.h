#pragma once

#include <QLoggingCategory>

// The log of the bar window; quiet but for warnings.
Q_DECLARE_LOGGING_CATEGORY(lcWindow)
