#include "modeditors/ModEditorFactory.h"

#include "formeditors/FormEditorFactory.h"
#include "modeditors/RemoteDigitalPanel.h"
#include "modeditors/RemoteMultitonePanel.h"
#include "modeditors/RemoteQuickWaveformPanel.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <initializer_list>

namespace {

struct EditorKind
{
    QLatin1String kind;
    RemoteModEditor* (*create)(QWidget* parent);
};

// The line of an editor: {QLatin1String("its kind"), make<ItsClass>}. Kinds are compared in this order.
template <typename Editor>
RemoteModEditor* make(QWidget* parent)
{
    return new Editor(parent);
}

constexpr std::initializer_list<EditorKind> editorKinds = {
    {QLatin1String("digital"), make<RemoteDigitalPanel>},
    {QLatin1String("multitone"), make<RemoteMultitonePanel>},
    {QLatin1String("quick-waveform"), make<RemoteQuickWaveformPanel>},
};

} // namespace

RemoteModEditor* createModEditor(const QString& kind, QWidget* parent)
{
    for (const EditorKind& entry : editorKinds) {
        if (kind == entry.kind) {
            return entry.create(parent);
        }
    }
    return createFormEditor(kind, parent);
}

QString normalizeEditorKind(const QString& text)
{
    return text.simplified().toLower().replace(QLatin1Char(' '), QLatin1Char('-'));
}
