#pragma once

class QCoreApplication;

// From now on the application speaks the language that "APP/Language" in "../configuration/Settings.ini"
// names, English without it: the program's texts come from the table "../configuration/Language.xlsx", Qt's
// own from the file in "translations" whose locale the table gives as the translation of "Localization". All
// paths count from the program's folder. What is missing leaves texts as they are. To be called once, before
// any text is shown; the translators belong to the application.
void installTranslations(QCoreApplication& application);
