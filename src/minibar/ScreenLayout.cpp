#include "minibar/ScreenLayout.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

Placement::Screens currentScreens(const QWidget* window)
{
    const QList<QScreen*> present = QGuiApplication::screens();
    Placement::Screens result;
    result.own = window->windowHandle() ? present.indexOf(window->windowHandle()->screen()) : -1;
    result.primary = present.indexOf(QGuiApplication::primaryScreen());
    for (const QScreen* screen : present)
        result.all.append({screen->geometry(), screen->availableGeometry()});
    return result;
}
