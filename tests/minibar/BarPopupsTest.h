#pragma once

#include "controls/TouchNumKeyboard.h"
#include "minibar/BarParts.h"
#include "minibar/RemoteMiniBarWindow.h"

#include <QDialog>
#include <QJsonObject>
#include <QMenu>
#include <QObject>
#include <QSignalSpy>

#include <memory>

class LabelButton;

// What the tests of the sweep popup, the modulation menu and the modulation popup share: each case begins
// with the real bar, expanded, after a snapshot with a sweep and two modulation items.
class BarPopupsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    static constexpr const char* sweepName = "miniBarHelperSweepPopup";
    static constexpr const char* modName = "miniBarHelperModPopup";

    [[nodiscard]] static QJsonObject
    snapshot(const char* mod = R"({"enabled":true,"enabledBusinessId":"am","businesses":[
                        {"id":"am","name":"Amplitude\nModulation","text":"AM","revision":2},
                        {"id":"fm","name":"","text":"FM & more","revision":1}]})",
             const char* sweepAvailable = "true");
    // A visible button of the bar by its text, or for the sweep button by its info line; null if there is
    // none.
    [[nodiscard]] LabelButton* button(const char* info) const;
    [[nodiscard]] QDialog* popup(const char* name) const
    {
        return window().findChild<QDialog*>(QLatin1String(name));
    }
    [[nodiscard]] bool isShown(const char* name) const { return popup(name) && popup(name)->isVisible(); }
    [[nodiscard]] QMenu* menu() const { return window().findChild<QMenu*>(QStringLiteral("miniBarModMenu")); }
    // The one that is shown; null if there is none.
    [[nodiscard]] Controls::TouchNumKeyboard* keyboard() const { return BarParts::keyboard(window()); }
    void openSweep();
    void openMod(int action);

    [[nodiscard]] RemoteMiniBarWindow& window() const { return *m_window; }
    [[nodiscard]] QSignalSpy& sweepRequests() const { return *m_sweepRequests; }

private:
    std::unique_ptr<RemoteMiniBarWindow> m_window;
    std::unique_ptr<QSignalSpy> m_sweepRequests;
};
