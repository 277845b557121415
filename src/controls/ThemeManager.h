#pragma once

#include <QColor>
#include <QObject>

namespace Controls {

// The theme in force and its colour roles; the one process-wide object of the kit. While it is there, so are
// the kit's images under ":/Controls/Image".
class ThemeManager final : public QObject
{
    Q_OBJECT

public:
    enum Theme { Dark = 0, Light = 1 };
    Q_ENUM(Theme)

    enum Role {
        Surface, // window background
        Raised,  // titles, value line
        Sunken,  // buttons, fields
        Hovered, // a button under the pointer
        Pressed, // a button held down
        Border,  // 1 px lines
        Outline, // the edge of what only its edge tells: a field to type in, a box to tick, a scroll bar's
                 // handle
        Text,    // values
        SecondaryText,    // captions, units
        DisabledText,     // any text of a control that cannot be used
        Accent,           // checked, current
        FocusRing,        // keyboard focus
        On,               // switched on; always with a word or a mark as well
        OnText,           // a text that stands on the On colour
        Off,              // the half of a switch that says so while it is switched off
        Refused,          // a refusal's sentence
        ListItemDefault,  // list row background
        ListItemSelected, // current list row background
        ListItemDisabled  // background of a row that cannot be chosen, such as a table's header
    };
    Q_ENUM(Role)

    static ThemeManager& instance();

    [[nodiscard]] Theme theme() const { return m_theme; }
    // Emits themeChanged when the theme differs from the one in force.
    void setTheme(Theme theme);

    // The colour of a role in the theme in force, or in a given one.
    [[nodiscard]] QColor color(Role role) const { return color(role, m_theme); }
    [[nodiscard]] static QColor color(Role role, Theme theme);

    // Colours of the theme in force by name; opaque, so that their six-digit names say all.
    [[nodiscard]] QColor textColor() const { return color(Text); }
    [[nodiscard]] QColor borderColor() const { return color(Border); }
    [[nodiscard]] QColor listItemDefaultColor() const { return color(ListItemDefault); }
    [[nodiscard]] QColor listItemSelectedColor() const { return color(ListItemSelected); }
    [[nodiscard]] QColor listItemDisabledColor() const { return color(ListItemDisabled); }

signals:
    void themeChanged(Controls::ThemeManager::Theme theme);

private:
    ThemeManager();

    Theme m_theme = Light;
};

} // namespace Controls
