#include "minibar/ApplicationTheme.h"

#include "controls/ThemeManager.h"
#include "minibar/Theme.h"

#include <QApplication>
#include <QString>

using Controls::ThemeManager;

void applyTheme(bool light)
{
    ThemeManager::instance().setTheme(light ? ThemeManager::Light : ThemeManager::Dark);
    const QString sheet = loadApplicationStyleSheet(light);
    if (!sheet.isEmpty())
        qApp->setStyleSheet(sheet);
}
