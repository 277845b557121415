#pragma once

#include <QCoreApplication>
#include <QVector>

class LabelButton;
class QPushButton;
class QStackedLayout;
class QWidget;
struct BarStatus;

// The two pages of the bar and what their buttons show. Texts and states are written only when they differ
// from what is shown.
class BarPages final
{
    Q_DECLARE_TR_FUNCTIONS(RemoteMiniBarWindow)

public:
    // Builds both pages into the stack, as children of `parent`, showing the state before the first snapshot.
    BarPages(QStackedLayout* stack, QWidget* parent);

    QWidget* collapsedPage = nullptr;
    QWidget* expandedPage = nullptr;

    // The same quick controls stand on both pages.
    QVector<LabelButton*> rfButtons;
    QVector<LabelButton*> frequencyButtons;
    QVector<LabelButton*> levelButtons;
    LabelButton* sweepButton = nullptr;
    LabelButton* modButton = nullptr;
    QPushButton* restoreButton = nullptr;
    QPushButton* expandToggle = nullptr;
    QPushButton* collapseToggle = nullptr;

    void refresh(const BarStatus& status);
    void refreshModButton(const BarStatus& status);
    // Enables the quick controls; the sweep button also needs a sweep that the instrument offers.
    void setControlsEnabled(bool enabled, const BarStatus& status);
    void setModEnabled(bool enabled);

private:
    QWidget* buildPage(QStackedLayout* stack, QWidget* parent, const QString& objectName);
    void addQuickControls(QWidget* page);
    [[nodiscard]] static QString sweepButtonText(const BarStatus& status);
};
