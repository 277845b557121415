// Renders the editors of modulation items to pictures.
//
//   tarvinel_gallery --out <folder> [--theme light|dark] [--scale <factor>] [--long] [--only <kind>]

#include "controls/EnumTextButton.h"
#include "controls/PopupWidget.h"
#include "controls/ThemeManager.h"
#include "gallery/GalleryItems.h"
#include "minibar/EditorPopup.h"
#include "minibar/StyleSheets.h"
#include "modeditors/RemoteModEditorHost.h"
#include "modeditors/contract/RemoteModEditor.h"
#include "support/Translators.h"
#include "utils/WavBytes.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QJsonDocument>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

QJsonObject object(const QByteArray& json)
{
    return QJsonDocument::fromJson(json).object();
}

// WAV files for the items that play some; false if they cannot be written.
bool writeWaveforms(const QString& folder)
{
    for (const char* name : {"tone", "a recording with a long name, made in the spring campaign", "third"}) {
        QFile file(folder + QLatin1Char('/') + QLatin1String(name) + QLatin1String(".wav"));
        const QByteArray chunks = WavBytes::fmt() + WavBytes::chunk("data", WavBytes::samples(123456));
        if (!file.open(QIODevice::WriteOnly) || file.write(WavBytes::file(chunks)) < 0)
            return false;
    }
    return true;
}

QString styleSheetOf(bool light)
{
    QFile file(QStringLiteral(CONFIGURATION_DIR) + QLatin1String(light ? "/theme_light.css" : "/theme.css"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// The scale of everything counts from the application's start.
void applyScale(int argc, char* argv[])
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], "--scale") == 0)
            qputenv("QT_SCALE_FACTOR", argv[i + 1]);
    }
}

class Gallery
{
public:
    Gallery(QString folder, bool light)
        : m_folder(std::move(folder))
        , m_light(light)
        , m_popup({QStringLiteral("miniBarHelperModOverlayHost"), QStringLiteral("miniBarHelperModPopup")},
                  &m_bar)
        , m_anchor(&m_bar)
    {
        m_bar.setGeometry(600, 10, 120, 60);
        m_popup.build(QString(), [this](QDialog* dialog) {
            m_dialog = dialog;
            return m_host = new RemoteModEditorHost(dialog);
        });
        m_popup.setStyleSheet(modPopupStyleSheet(light));
    }

    // False if there is no such editor or a picture could not be written.
    bool render(const GalleryItem& item, const QString& name)
    {
        if (!m_waveforms.isValid() || !writeWaveforms(m_waveforms.path()))
            return false;
        const QString title = QString::fromUtf8(item.title);
        m_popup.setTitle(title);
        const QByteArray state = QByteArray(item.state).replace("%FILES%", m_waveforms.path().toUtf8());
        m_host->setModulationItem(name, title, title, object(state), QString::fromUtf8(item.kind),
                                  object(item.profile), 1, item.enabled);
        if (!m_host->findChild<RemoteModEditor*>())
            return false;
        m_popup.open(&m_anchor, m_bar.geometry(), true);
        QCoreApplication::processEvents();
        bool written = save(m_dialog, name);
        written = saveStates(name) && written;
        const auto pickers = m_host->findChildren<EnumTextButton*>();
        for (EnumTextButton* picker : pickers) {
            picker->click();
            if (picker->isListOpen()) {
                auto* const list = m_dialog->window()->findChild<PopupWidget*>();
                written = save(list, name + QLatin1Char('-') + picker->objectName()) && written;
                list->close();
                QCoreApplication::sendPostedEvents(list, QEvent::DeferredDelete);
            }
        }
        m_popup.close();
        return written;
    }

private:
    // The states of a field side by side: held down, with its keyboard open, focused, disabled.
    bool saveStates(const QString& name)
    {
        QVector<LabelButton*> fields;
        const auto buttons = m_host->findChildren<LabelButton*>();
        for (LabelButton* button : buttons) {
            if (button->isVisible() && button->isEnabled() && !button->isReadOnly() &&
                !qobject_cast<EnumTextButton*>(button))
                fields.append(button);
        }
        if (fields.size() < 4)
            return true;
        fields.at(0)->setDown(true);
        fields.at(1)->setChecked(true);
        m_dialog->activateWindow();
        fields.at(2)->setFocus(Qt::TabFocusReason);
        fields.at(3)->setEnabled(false);
        const bool written = save(m_dialog, name + QLatin1String("-states"));
        fields.at(0)->setDown(false);
        fields.at(1)->setChecked(false);
        fields.at(3)->setEnabled(true);
        return written;
    }

    bool save(QWidget* widget, const QString& name)
    {
        QCoreApplication::processEvents();
        const QString path = m_folder + QLatin1Char('/') + name +
                             QLatin1String(m_light ? "-light" : "-dark") + QLatin1String(".png");
        return widget->grab().save(path);
    }

    QString m_folder;
    QTemporaryDir m_waveforms;
    bool m_light;
    QWidget m_bar;
    EditorPopup m_popup;
    QPushButton m_anchor;
    QDialog* m_dialog = nullptr;
    RemoteModEditorHost* m_host = nullptr;
};

} // namespace

int main(int argc, char* argv[])
{
    applyScale(argc, argv);
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Renders the editors of modulation items to pictures."));
    parser.addHelpOption();
    const QCommandLineOption folder(QStringLiteral("out"), QStringLiteral("Where the pictures go."),
                                    QStringLiteral("folder"), QStringLiteral("gallery"));
    const QCommandLineOption theme(QStringLiteral("theme"), QStringLiteral("light or dark."),
                                   QStringLiteral("theme"), QStringLiteral("light"));
    const QCommandLineOption scale(QStringLiteral("scale"), QStringLiteral("Pixels for one of the layout."),
                                   QStringLiteral("factor"), QStringLiteral("1"));
    const QCommandLineOption longTexts(QStringLiteral("long"), QStringLiteral("Every text twice as long."));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("This kind of editor alone."),
                                  QStringLiteral("kind"));
    parser.addOptions({folder, theme, scale, longTexts, only});
    parser.process(application);

    const bool light = parser.value(theme) != QLatin1String("dark");
    TestSupport::DoublingTranslator doubling;
    if (parser.isSet(longTexts))
        QCoreApplication::installTranslator(&doubling);
    Controls::ThemeManager::instance().setTheme(light ? Controls::ThemeManager::Light
                                                      : Controls::ThemeManager::Dark);
    qApp->setStyleSheet(styleSheetOf(light));
    QDir().mkpath(parser.value(folder));

    Gallery gallery(parser.value(folder), light);
    int failed = 0;
    int number = 0;
    for (const GalleryItem& item : galleryItems()) {
        ++number;
        if (parser.isSet(only) && parser.value(only) != QLatin1String(item.kind))
            continue;
        const QString name =
            QStringLiteral("%1-%2").arg(number, 2, 10, QLatin1Char('0')).arg(QLatin1String(item.kind));
        if (!gallery.render(item, name))
            ++failed;
    }
    QTextStream(stdout) << QDir(parser.value(folder)).absolutePath() << Qt::endl;
    return failed;
}
