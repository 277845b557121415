// Shows a visitor around: starts the simulator on a desktop of its own, uses the mini bar as a user would,
// checks every step and leaves a picture of each.
//
//   tarvinel_tour --out <folder> [--theme light|dark]

#include "support/HelperProcess.h"
#include "system/tour/Tour.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>
#include <memory>

namespace {

// Returns how many steps came out wrong. A step after a failed one would only repeat the complaint.
int walk(Tour& tour, QTextStream& out)
{
    for (const TourStep& step : tourSteps()) {
        tour.markTraffic();
        const bool done = step.perform(tour);
        const bool pictured = tour.picture(QLatin1String(step.name));
        out << (done && pictured ? "ok      " : "FAILED  ") << step.name << "  " << step.summary << Qt::endl;
        if (!done || !pictured)
            return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows the simulator and the mini bar on a desktop of their own."));
    parser.addHelpOption();
    const QCommandLineOption folder(QStringLiteral("out"), QStringLiteral("Where the pictures go."),
                                    QStringLiteral("folder"), QStringLiteral("tour"));
    const QCommandLineOption theme(QStringLiteral("theme"), QStringLiteral("light or dark."),
                                   QStringLiteral("theme"), QStringLiteral("light"));
    parser.addOptions({folder, theme});
    parser.process(application);
    QTextStream out(stdout);

    QString stage = TestSupport::stagePath();
    std::unique_ptr<TestSupport::StageCopy> copy;
    if (parser.value(theme) == QLatin1String("dark")) {
        copy = std::make_unique<TestSupport::StageCopy>();
        if (!copy->isValid() ||
            !copy->write(QStringLiteral("configuration/Settings.ini"), "[APP]\nTheme=Dark\n")) {
            out << "The programs cannot be copied." << Qt::endl;
            return 2;
        }
        stage = copy->path();
    } else if (parser.value(theme) != QLatin1String("light")) {
        out << "The theme is light or dark." << Qt::endl;
        return 2;
    }

    const QDir pictures(parser.value(folder));
    Tour tour(stage, pictures);
    if (!tour.begin()) {
        out << tour.errorString() << Qt::endl;
        return 2;
    }
    const int failed = walk(tour, out);
    tour.markTraffic();
    out << "\nThe conversation (milliseconds, speaker, line):\n" << tour.traffic();
    if (failed > 0)
        out << tour.simulator().readAllStandardError();
    out << "\nPictures: " << pictures.absolutePath() << Qt::endl;
    return failed;
}
