#include "controls/ThemeManager.h"

// A library's resources are linked only where they are asked for; the macro works in no namespace.
static void provideImages()
{
    Q_INIT_RESOURCE(control_images);
}

namespace Controls {
namespace {

struct RoleColors
{
    ThemeManager::Role role;
    QRgb light;
    QRgb dark;
};

// The one table of colours, in the order of the roles. theme_light.css and theme.css take theirs from here;
// a test holds them against it.
constexpr RoleColors roleColors[] = {
    {ThemeManager::Surface, 0xffe2ddd7, 0xff1f2329},
    {ThemeManager::Raised, 0xfffaf6f3, 0xff252e35},
    {ThemeManager::Sunken, 0xffdad1ca, 0xff171a1f},
    {ThemeManager::Hovered, 0xffe0d5ce, 0xff364152},
    {ThemeManager::Pressed, 0xffb3cbe6, 0xff404c64},
    {ThemeManager::Border, 0xffbab4af, 0xff3e4349},
    {ThemeManager::Outline, 0xff7a7169, 0xff76818c},
    {ThemeManager::Text, 0xff3c2a22, 0xffffffff},
    {ThemeManager::SecondaryText, 0xbf3c2a22, 0xffaec4d0},
    {ThemeManager::DisabledText, 0x993c2a22, 0x66ffffff},
    {ThemeManager::Accent, 0xff63acf6, 0xff2f536c},
    {ThemeManager::FocusRing, 0xff15508c, 0xff63acf6},
    {ThemeManager::On, 0xff63acf6, 0xff00ce01},
    {ThemeManager::OnText, 0xff3c2a22, 0xff054604},
    {ThemeManager::Off, 0xffc4bdb3, 0xff30373f},
    {ThemeManager::Refused, 0xffb3261e, 0xffff8a80},
    {ThemeManager::ListItemDefault, 0xffdad1ca, 0xff171a1f},
    {ThemeManager::ListItemSelected, 0xff63acf6, 0xff2f536c},
    {ThemeManager::ListItemDisabled, 0xffe2ddd7, 0xff1f2329},
};

constexpr bool standInTheirRolesOrder()
{
    int expected = 0;
    for (const RoleColors& row : roleColors) {
        if (int(row.role) != expected++) {
            return false;
        }
    }
    return expected == int(ThemeManager::ListItemDisabled) + 1;
}
static_assert(standInTheirRolesOrder());

} // namespace

ThemeManager::ThemeManager()
{
    provideImages();
}

ThemeManager& ThemeManager::instance()
{
    static ThemeManager manager;
    return manager;
}

void ThemeManager::setTheme(Theme theme)
{
    if (theme == m_theme) {
        return;
    }
    m_theme = theme;
    emit themeChanged(theme);
}

QColor ThemeManager::color(Role role, Theme theme)
{
    const RoleColors& row = roleColors[role];
    return QColor::fromRgba(theme == Light ? row.light : row.dark);
}

} // namespace Controls
