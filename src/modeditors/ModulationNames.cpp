#include "modeditors/ModulationNames.h"

#include <QCoreApplication>
#include <QHash>

namespace {

constexpr char context[] = "AnalogModulationPlugin";

struct DisplayName
{
    const char* value; // in the editor state
    const char* name;
};

constexpr DisplayName displayNames[] = {
    {"RaisedCosine", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Raised Cosine")},
    {"RootRaisedCosine", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Root Raised Cosine")},
    {"HalfSine", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Half-Sine")},
    {"PSK8", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "8PSK")},
    {"PSK16", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "16PSK")},
    {"QAM16", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "16QAM")},
    {"QAM64", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "64QAM")},
    {"QAM256", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "256QAM")},
    {"QAM1024", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "1024QAM")},
    {"ASK2", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "2ASK")},
    {"ASK4", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "4ASK")},
    {"ASK8", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "8ASK")},
    {"FSK2", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "2FSK")},
    {"FSK4", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "4FSK")},
    {"FSK8", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "8FSK")},
    {"FSK16", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "16FSK")},
    {"Pi4DQPSK", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Pi/4 DQPSK")},
    {"APSK16", QT_TRANSLATE_NOOP("AnalogModulationPlugin", "16APSK")},
};

// Values that are shown as they stand, for the translators.
[[maybe_unused]] constexpr const char* furtherNames[] = {
    QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Rectangular"),
    QT_TRANSLATE_NOOP("AnalogModulationPlugin", "Gaussian"),
    QT_TRANSLATE_NOOP("AnalogModulationPlugin", "BPSK"),
    QT_TRANSLATE_NOOP("AnalogModulationPlugin", "QPSK"),
};

QHash<QString, const char*> namesByValue()
{
    QHash<QString, const char*> names;
    for (const DisplayName& entry : displayNames) {
        names.insert(QLatin1String(entry.value), entry.name);
    }
    return names;
}

} // namespace

QString modulationDisplayName(const QString& value)
{
    static const QHash<QString, const char*> names = namesByValue();
    const char* const name = names.value(value);
    return QCoreApplication::translate(context, name ? name : value.toUtf8().constData());
}
