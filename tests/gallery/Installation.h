#pragma once

#include <QStringList>
#include <memory>
#include <vector>

class QTranslator;

// The installation that the running program has beside it: settings, style sheets, fonts, texts, sample
// files.
namespace Installation {

// The languages of the settings, and one of the gallery's own: English with every text twice as long.
[[nodiscard]] const QStringList& languages();
extern const QString doubledLanguage;

// Lays settings, style sheets and fonts beside the program, which one process at a time can do. To be called
// once, first. False if files cannot be written.
[[nodiscard]] bool prepare();
// Writes the theme into the settings; what is built from now on has it.
[[nodiscard]] bool setTheme(bool light);
// A folder with waveform files and folders of them, the same in every run and wherever the program lies.
[[nodiscard]] QString sampleFiles();

// The texts and the faces of a language, as the program has them from its start to its end; here as long as
// the object lives. No window may be there when it comes or goes.
class Language final
{
public:
    explicit Language(const QString& name);
    ~Language();
    Q_DISABLE_COPY(Language)

private:
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace Installation
