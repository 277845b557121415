// Read before every file by the analysers, never by the build. Qt's QLatin1String(const char*) is a constant expression
// by way of strlen(): gcc computes that call while compiling, clang only under this name.
#pragma once

#include <cstring>

#define strlen(text) __builtin_strlen(text)
