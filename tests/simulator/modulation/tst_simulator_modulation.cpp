#include "link/RunSuites.h"
#include "simulator/modulation/ModulationSuites.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    const QCoreApplication app(argc, argv);
    return runSuites({makeItemsSuite, makeBoundsSuite, makeProfilesSuite, makeWaveformFileSuite,
                      makeSampleWaveformsSuite, makeWaveformsSuite, makeOverTheLinkSuite},
                     QCoreApplication::arguments());
}
