#include "link/LinkSuites.h"
#include "link/RunSuites.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    const QCoreApplication app(argc, argv);
    return runSuites({makeLineWordsSuite, makeLineDecoderSuite, makeFieldReadersSuite, makeSweepSnapshotSuite,
                      makeRecordsSuite, makeEnvelopesSuite},
                     QCoreApplication::arguments());
}
