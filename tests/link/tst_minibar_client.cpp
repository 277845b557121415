#include "link/ClientFixture.h"
#include "link/RunSuites.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    const QCoreApplication app(argc, argv);
    return runSuites(
        {makeClientHandshakeSuite, makeClientRequestsSuite, makeClientReadingSuite, makeClientEndingSuite},
        QCoreApplication::arguments());
}
