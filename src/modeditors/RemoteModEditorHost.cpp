#include "modeditors/RemoteModEditorHost.h"

#include "controls/SwitchButton.h"
#include "modeditors/SpacerShrinking.h"
#include "modeditors/contract/RemoteModEditor.h"

#include <QLabel>
#include <QVBoxLayout>

using MinibarHelperProtocol::ModChangeRequest;

namespace {

constexpr int placeholderHeight = 60; // pixels, as the next
constexpr int placeholderMargin = 8;
constexpr int placeholderPointSize = 13;

// An item of this kind is known by its type alone.
const QLatin1String simpleKind("simple");
// The one editor whose switches have room for their full size.
const QLatin1String roomyKind("quick-waveform");

QString kindOf(const QString& rawKind, const QString& type)
{
    const QString kind = normalizeEditorKind(rawKind);
    return kind.isEmpty() || kind == simpleKind ? normalizeEditorKind(type) : kind;
}

} // namespace

RemoteModEditorHost::RemoteModEditorHost(QWidget* parent)
    : RemoteModEditorHost(createModEditor, parent)
{}

RemoteModEditorHost::RemoteModEditorHost(ModEditorFactory factory, QWidget* parent)
    : QWidget(parent)
    , m_createEditor(std::move(factory))
    , m_layout(new QVBoxLayout(this))
{
    setObjectName(QStringLiteral("remoteModEditorHost"));
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    rebuild();
}

RemoteModEditorHost::~RemoteModEditorHost() = default;

void RemoteModEditorHost::setModulationItem(const QString& key, const QString& type, const QString& title,
                                            const QJsonObject& state, const QString& rawKind,
                                            const QJsonObject& profile, int revision, bool enabled)
{
    const QString kind = kindOf(rawKind, type);
    const bool needsEditor = key != m_itemKey || kind != m_editorKind;
    const bool needsState = needsEditor || !m_stateApplied || state != m_editorState ||
                            profile != m_profile || enabled != m_lastEnabled || m_changePending;
    m_itemKey = key;
    m_itemType = type;
    m_itemTitle = title;
    m_editorState = state;
    m_editorKind = kind;
    m_profile = profile;
    m_itemRevision = revision;
    if (needsEditor) {
        rebuild();
        m_layout->activate(); // the popup measures before the event loop turns
    }
    if (m_editor && needsState) {
        m_editor->applyEditorState(m_editorState, m_profile, enabled);
        m_stateApplied = true;
        m_lastEnabled = enabled;
    }
    m_changePending = false;
}

bool RemoteModEditorHost::describeNumericField(const QString& key, NumericFieldSpec& spec) const
{
    return m_editor && m_editor->describeNumericField(key, spec);
}

void RemoteModEditorHost::applyNumericValue(const QString& key, double value)
{
    if (m_editor) {
        m_editor->applyNumericValue(key, value);
    }
}

void RemoteModEditorHost::setNumericFieldActive(const QString& key, bool active)
{
    if (m_editor) {
        m_editor->setNumericFieldActive(key, active);
    }
}

void RemoteModEditorHost::rebuild()
{
    m_stateApplied = false;
    // At once: what comes next must not find the old editor among the children.
    delete m_editor;
    delete m_placeholder;
    if (m_itemKey.isEmpty()) {
        addPlaceholder(tr("Select a modulation item."));
        return;
    }
    m_editor = m_createEditor(m_editorKind, this);
    if (!m_editor) {
        addPlaceholder(tr("No UI editor is available for %1.").arg(m_itemTitle));
        return;
    }
    addEditor();
}

void RemoteModEditorHost::addPlaceholder(const QString& text)
{
    m_placeholder = new QLabel(text, this);
    m_placeholder->setTextFormat(Qt::PlainText); // an item's title is not ours
    m_placeholder->setWordWrap(true);
    m_placeholder->setAlignment(Qt::AlignCenter);
    m_placeholder->setMinimumHeight(placeholderHeight);
    m_placeholder->setMargin(placeholderMargin);
    QFont font = m_placeholder->font();
    font.setPointSize(placeholderPointSize);
    m_placeholder->setFont(font);
    m_layout->addWidget(m_placeholder);
}

void RemoteModEditorHost::addEditor()
{
    m_layout->addWidget(m_editor);
    const auto switches = m_editor->findChildren<SwitchButton*>();
    for (SwitchButton* button : switches) {
        button->setCompactMode(m_editorKind != roomyKind);
    }
    shrinkLowestSpacers(m_editor);
    connect(m_editor, &RemoteModEditor::enabledEdited, this, &RemoteModEditorHost::onEnabledEdited);
    connect(m_editor, &RemoteModEditor::actionEdited, this, &RemoteModEditorHost::onActionEdited);
    connect(m_editor, &RemoteModEditor::numericEditRequested, this,
            &RemoteModEditorHost::numericEditRequested);
}

void RemoteModEditorHost::onEnabledEdited()
{
    ModChangeRequest change;
    change.hasEnabled = true;
    change.enabled = m_editor && m_editor->isModulationEnabled();
    request(change);
}

void RemoteModEditorHost::onActionEdited(const QString& action, const QJsonObject& arguments)
{
    if (action.isEmpty()) {
        return;
    }
    ModChangeRequest change;
    change.action = action;
    change.arguments = arguments;
    request(change);
}

void RemoteModEditorHost::request(ModChangeRequest request)
{
    if (m_itemKey.isEmpty()) {
        return;
    }
    request.businessId = m_itemKey;
    request.expectedRevision = m_itemRevision;
    m_changePending = true;
    emit changeRequested(request);
}
