// Renders every screen of the product in every theme, language and scale to pictures and contact sheets.

#include "app/HelperApplication.h"
#include "gallery/ContactSheet.h"
#include "gallery/Installation.h"
#include "gallery/Screens.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QProcess>
#include <QScreen>
#include <QTextStream>
#include <QWidget>

namespace {

constexpr double sheetZoom = 0.5;
constexpr int sheetWidth = 2000;

const QStringList themes = {QStringLiteral("light"), QStringLiteral("dark")};
const QStringList scales = {QStringLiteral("1"), QStringLiteral("1.5"), QStringLiteral("2")};
// What the overview shows of each theme, language and scale.
const QStringList overviewScreens = {QStringLiteral("bar-expanded-on"), QStringLiteral("sweep-frequency"),
                                     QStringLiteral("editor-digital"), QStringLiteral("keyboard-frequency"),
                                     QStringLiteral("menu")};

struct Wishes
{
    QString folder;
    QStringList themes;
    QStringList languages;
    QStringList scales;
    QString only; // screens whose name begins so
    bool corners = false;
};

struct Variant
{
    QString theme;
    QString language;
    QString scale;

    [[nodiscard]] QString name() const
    {
        return QStringLiteral("%1-%2-%3")
            .arg(language.toLower().replace(QLatin1Char(' '), QLatin1Char('-')), theme, scale);
    }
};

QVector<Variant> variants(const Wishes& wishes)
{
    QVector<Variant> all;
    for (const QString& scale : wishes.scales) {
        for (const QString& language : wishes.languages) {
            for (const QString& theme : wishes.themes)
                all.append({theme, language, scale});
        }
    }
    return all;
}

Wishes parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Renders every screen in every theme, language and scale, with contact sheets."));
    parser.addHelpOption();
    const QCommandLineOption folder(QStringLiteral("out"), QStringLiteral("Where the pictures go."),
                                    QStringLiteral("folder"), QStringLiteral("gallery"));
    const QCommandLineOption theme(QStringLiteral("theme"), QStringLiteral("This theme: light or dark."),
                                   QStringLiteral("theme"));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("This language, as the settings name it; Doubled for "
                                                     "English with every text twice as long."),
                                      QStringLiteral("language"));
    const QCommandLineOption scale(QStringLiteral("scale"), QStringLiteral("This scale: 1, 1.5, 2."),
                                   QStringLiteral("factor"));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Screens whose name begins so."),
                                  QStringLiteral("prefix"));
    const QCommandLineOption corners(
        QStringLiteral("corners"), QStringLiteral("The whole screen, with the bar in each corner, instead."));
    parser.addOptions({folder, theme, language, scale, only, corners});
    parser.process(arguments);
    const auto wished = [&parser](const QCommandLineOption& option, const QStringList& all) {
        return parser.isSet(option) ? parser.values(option) : all;
    };
    return {parser.value(folder),  wished(theme, themes), wished(language, Installation::languages()),
            wished(scale, scales), parser.value(only),    parser.isSet(corners)};
}

// One variant's pictures and its sheet; false if one could not be written.
bool render(const Variant& variant, const Wishes& wishes)
{
    const QString folder = wishes.folder + QLatin1Char('/') + variant.name();
    if (!QDir().mkpath(folder) || !Installation::setTheme(variant.theme == QLatin1String("light")))
        return false;
    const Installation::Language language(variant.language);
    ContactSheet sheet(sheetZoom);
    bool written = true;
    Screens screens([&](const QString& name, QWidget* shown) {
        if (!name.startsWith(wishes.only))
            return;
        const QPixmap seen = wishes.corners ? shown->screen()->grabWindow(0) : shown->grab();
        const QImage picture = seen.toImage();
        written = picture.save(folder + QLatin1Char('/') + name + QStringLiteral(".png")) && written;
        sheet.add(name, picture);
    });
    wishes.corners ? screens.visitCorners() : screens.visit();
    return saveSmall(sheet.paint(sheetWidth), folder + QStringLiteral(".png")) && written;
}

bool writeOverview(const Wishes& wishes)
{
    ContactSheet sheet(sheetZoom);
    const QVector<Variant> all = variants(wishes);
    for (const Variant& variant : all) {
        for (const QString& screen : overviewScreens) {
            QImage picture(wishes.folder + QLatin1Char('/') + variant.name() + QLatin1Char('/') + screen +
                           QStringLiteral(".png"));
            picture.setDevicePixelRatio(variant.scale.toDouble());
            if (!picture.isNull())
                sheet.add(variant.name(), picture);
        }
        sheet.endRow();
    }
    return sheet.isEmpty() ||
           saveSmall(sheet.paint(sheetWidth), wishes.folder + QStringLiteral("/overview.png"));
}

// The scale of everything counts from the application's start: one process for each.
int renderScales(const Wishes& wishes, const QStringList& arguments)
{
    int failed = 0;
    for (const QString& scale : wishes.scales) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      QStringList{QStringLiteral("--scale"), scale} + arguments.mid(1));
        const bool finished = process.waitForFinished(-1);
        failed += finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 1;
    }
    return failed;
}

} // namespace

int main(int argc, char* argv[])
{
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
        const QGuiApplication application(argc, argv); // writes names on the overview
        const QStringList arguments = QCoreApplication::arguments();
        const Wishes wishes = parse(arguments);
        int failed = renderScales(wishes, arguments);
        failed += writeOverview(wishes) ? 0 : 1;
        QTextStream(stdout) << QDir(wishes.folder).absolutePath() << Qt::endl;
        return failed;
    }
    HelperApplication::prepareDrawing();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Wishes wishes = parse(QCoreApplication::arguments());
    wishes.scales = wishes.scales.mid(0, 1); // this process's own
    if (!Installation::prepare())
        return 1;
    int failed = 0;
    const QVector<Variant> all = variants(wishes);
    for (const Variant& variant : all)
        failed += render(variant, wishes) ? 0 : 1;
    return failed;
}
