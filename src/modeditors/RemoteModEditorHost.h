#pragma once

#include "link/ChangeRequests.h"
#include "modeditors/ModEditorFactory.h"

#include <QAbstractButton>
#include <QJsonObject>
#include <QPointer>
#include <QWidget>

class QLabel;
class QVBoxLayout;
class RemoteModEditor;
struct NumericFieldSpec;

// Shows the editor of one modulation item, or a sentence in its place, and turns what the editor reports into
// change requests. It is the owner of at most one editor, which a change of item or kind replaces at once.
class RemoteModEditorHost final : public QWidget
{
    Q_OBJECT

public:
    explicit RemoteModEditorHost(QWidget* parent = nullptr);
    explicit RemoteModEditorHost(ModEditorFactory factory, QWidget* parent = nullptr);
    ~RemoteModEditorHost() override;

    // Shows this item as a snapshot describes it. `type`: its kind unless `rawKind` says a better one than
    // "simple"; `revision`: goes into every request; `enabled`: it is the modulation that is switched on. The
    // editor is told only what it has not been told, or once more after a request, which may have been
    // refused.
    void setModulationItem(const QString& key, const QString& type, const QString& title,
                           const QJsonObject& state, const QString& rawKind, const QJsonObject& profile,
                           int revision, bool enabled);

    // The editor's operations of the same names; without an editor they give false and do nothing.
    [[nodiscard]] bool describeNumericField(const QString& key, NumericFieldSpec& spec) const;
    void applyNumericValue(const QString& key, double value);
    void setNumericFieldActive(const QString& key, bool active);

signals:
    void changeRequested(MinibarHelperProtocol::ModChangeRequest request);
    // The editor's own signal.
    void numericEditRequested(const QString& key, QAbstractButton* anchor);

private:
    void rebuild();
    void addEditor();
    void addPlaceholder(const QString& text);
    void onEnabledEdited();
    void onActionEdited(const QString& action, const QJsonObject& arguments);
    void request(MinibarHelperProtocol::ModChangeRequest request);

    ModEditorFactory m_createEditor;
    QString m_itemKey;
    QString m_itemType;
    QString m_itemTitle;
    QJsonObject m_editorState;
    QString m_editorKind; // normalised
    QJsonObject m_profile;
    int m_itemRevision = 0;
    QVBoxLayout* m_layout;
    QPointer<RemoteModEditor> m_editor;
    QPointer<QLabel> m_placeholder;
    bool m_stateApplied = false;
    bool m_lastEnabled = false;
    bool m_changePending = false;
};
