#include "minibar/ScreenLayout.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

Placement::Screens currentScreens(const QWidget* window)
{
    Placement::Screens result;
    const QScreen* own = window->windowHandle() ? window->windowHandle()->screen() : nullptr;
    const QScreen* primary = QGuiApplication::primaryScreen();
    const QList<QScreen*> present = QGuiApplication::screens();
    for (const QScreen* screen : present) {
        if (screen == own)
            result.own = result.all.size();
        if (screen == primary)
            result.primary = result.all.size();
        result.all.append({screen->geometry(), screen->availableGeometry()});
    }
    return result;
}
