#include "support/WindowManagers.h"

#include <algorithm>

namespace TestSupport {
namespace {

constexpr char icewmPreferences[] = R"(ShowTaskBar=0
UseRootButtons=0
DesktopWinMenuButton=0
DesktopWinListButton=0
DesktopMenuButton=0
EdgeSwitch=0
ShowWorkspaceStatus=0
EdgeResistance=0
SnapMove=0
ConfirmLogout=0
QuickSwitch=0
)";

constexpr char openboxConfiguration[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><raiseOnFocus>no</raiseOnFocus></focus>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <resize><drawContents>yes</drawContents><popupShow>Never</popupShow></resize>
  <keyboard>
    <keybind key="A-F4"><action name="Close"/></keybind>
  </keyboard>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

} // namespace

const QVector<WindowManager>& windowManagers()
{
    static const QVector<WindowManager> table = {
        {QStringLiteral("none"), {}, {}, false},
        {QStringLiteral("icewm"), {QStringLiteral("--config=%1")}, icewmPreferences, false},
        {QStringLiteral("openbox"),
         {QStringLiteral("--config-file"), QStringLiteral("%1")},
         openboxConfiguration,
         true},
    };
    return table;
}

const WindowManager* findWindowManager(const QString& name)
{
    const auto& table = windowManagers();
    const auto found = std::find_if(table.cbegin(), table.cend(),
                                    [&](const WindowManager& entry) { return entry.name == name; });
    return found == table.cend() ? nullptr : found;
}

} // namespace TestSupport
