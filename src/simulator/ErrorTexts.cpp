#include "simulator/ErrorTexts.h"

#include "link/Keys.h"

#include <QCoreApplication>

namespace Simulator {

namespace Errors = MinibarHelperProtocol::Errors;

namespace {

struct ErrorText
{
    QLatin1String code;
    const char* text;
};

const ErrorText errorTexts[] = {
    {Errors::NOT_OPEN, QT_TRANSLATE_NOOP("Simulator", "The instrument is not open.")},
    {Errors::INVALID_ARG, QT_TRANSLATE_NOOP("Simulator", "An argument is missing or not valid.")},
    {Errors::NOT_SUPPORTED, QT_TRANSLATE_NOOP("Simulator", "The instrument does not support this.")},
    {Errors::INTERNAL_ERROR, QT_TRANSLATE_NOOP("Simulator", "The instrument failed to carry this out.")},
    {Errors::CONFLICT, QT_TRANSLATE_NOOP("Simulator", "The settings have changed in the meantime.")},
};

} // namespace

QString errorText(const QString& code)
{
    for (const ErrorText& row : errorTexts) {
        if (row.code == code)
            return QCoreApplication::translate("Simulator", row.text);
    }
    return {};
}

} // namespace Simulator
