#include "formeditors/FormEditorFactory.h"

#include "formeditors/FormPanels.h"

#include <QLatin1String>

namespace {

struct FormEditorKind
{
    QLatin1String kind;
    RemoteModEditor* (*create)(QWidget* parent);
};

constexpr FormEditorKind formEditorKinds[] = {
    {QLatin1String("am"), createAmPanel},
    {QLatin1String("fm"), createFmPanel},
    {QLatin1String("pm"), createPmPanel},
    {QLatin1String("pulse"), createPulsePanel},
    {QLatin1String("digital-ramp"), createRampPanel},
    {QLatin1String("awgn"), createAwgnPanel},
    {QLatin1String("playback"), createArbPanel},
    {QLatin1String("streaming"), createStreamingPanel},
    {QLatin1String("dsss"), createDsssPanel},
    {QLatin1String("ofdm"), createOfdmPanel},
};

} // namespace

RemoteModEditor* createFormEditor(const QString& kind, QWidget* parent)
{
    for (const FormEditorKind& entry : formEditorKinds) {
        if (kind == entry.kind) {
            return entry.create(parent);
        }
    }
    return nullptr;
}
