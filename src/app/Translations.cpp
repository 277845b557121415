#include "app/Translations.h"

#include "utils/Folders.h"
#include "utils/Translator.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTranslator>

namespace {

QString chosenLanguage()
{
    const QSettings settings(Utils::besideProgram(QStringLiteral("../configuration/Settings.ini")),
                             QSettings::IniFormat);
    return settings.value(QStringLiteral("APP/Language"), QStringLiteral("English")).toString();
}

} // namespace

void installTranslations(QCoreApplication& application)
{
    const QString language = chosenLanguage();
    auto* const texts = new Utils::Translator;
    texts->setParent(&application);
    texts->loadFile(Utils::besideProgram(QStringLiteral("../configuration/Language.xlsx")), language);
    texts->setCurrentLanguage(language);
    QCoreApplication::installTranslator(texts);

    // Installed even without a file, and after ours: Qt's texts are asked of it first.
    auto* const qtTexts = new QTranslator(&application);
    const QString locale = QCoreApplication::translate("HelperApplication", "Localization");
    (void)qtTexts->load(QStringLiteral("qt_") + locale, Utils::besideProgram(QStringLiteral("translations")));
    QCoreApplication::installTranslator(qtTexts);
}
