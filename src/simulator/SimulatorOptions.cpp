#include "simulator/SimulatorOptions.h"

#include "link/AnchorPoint.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

namespace Simulator {

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("Simulator", text);
}

QString helperBesideProgram()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("TarvinelMiniBar"));
}

QString dataBesideProgram()
{
    return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../data")));
}

} // namespace

OptionsResult parseOptions(const QStringList& arguments, SimulatorOptions& options, QString& text)
{
    const QCommandLineOption helper(
        QStringLiteral("helper"),
        translated("The mini bar's program; the one beside this program if left out."),
        QStringLiteral("path"), helperBesideProgram());
    const QCommandLineOption scenario(QStringLiteral("scenario"), translated("A scenario to play (JSON)."),
                                      QStringLiteral("file"));
    const QCommandLineOption waveforms(
        QStringLiteral("waveforms"),
        translated(
            "The folder of the quick waveforms; ../data beside this program, with some signals to try, "
            "if left out."),
        QStringLiteral("folder"), dataBesideProgram());
    const QCommandLineOption anchor(
        QStringLiteral("anchor"), translated("Where the top right corner of the bar is to stand, in pixels."),
        QStringLiteral("x,y"));
    const QCommandLineOption minimised(QStringLiteral("minimised"),
                                       translated("Begin with the mini bar shown."));
    const QCommandLineOption traffic(
        QStringLiteral("print-traffic"),
        translated("Print the conversation with the mini bar, with milliseconds since "
                   "the start; the token is masked."));
    const QCommandLineOption noWindow(QStringLiteral("no-window"), translated("Show no main window."));
    const QCommandLineOption exitAfterClose(
        QStringLiteral("exit-after-close"),
        translated("End when the mini bar has ended: with code 0, or with 3 if "
                   "it never became ready."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        translated("Plays the main application of a mini bar, with a simulated signal "
                   "generator."));
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOptions({helper, scenario, waveforms, anchor, minimised, traffic, noWindow, exitAfterClose});

    const bool parsed = parser.parse(arguments);
    if (parsed && parser.isSet(help)) {
        text = parser.helpText();
        return OptionsResult::Help;
    }
    text = parser.errorText();
    if (parsed && !parser.positionalArguments().isEmpty())
        text = translated("Unexpected argument '%1'.").arg(parser.positionalArguments().constFirst());
    if (parsed && parser.isSet(anchor)) {
        options.anchor = MinibarHelperProtocol::readAnchorPoint(parser.value(anchor));
        if (options.anchor == MinibarHelperProtocol::noAnchor)
            text = translated("'--anchor' needs two whole numbers: x,y.");
    }
    options.helper = parser.value(helper);
    options.scenario = parser.value(scenario);
    options.waveforms = parser.value(waveforms);
    options.ownWaveforms = !parser.isSet(waveforms);
    options.minimised = parser.isSet(minimised);
    options.printTraffic = parser.isSet(traffic);
    options.window = !parser.isSet(noWindow);
    options.exitAfterClose = parser.isSet(exitAfterClose);
    return text.isEmpty() ? OptionsResult::Run : OptionsResult::Invalid;
}

} // namespace Simulator
