#include "sweep/SweepSuites.h"

#include <QApplication>
#include <QTest>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto make :
         {makeSweepFormSuite, makeSweepStateSuite, makeSweepWalkSuite, makeSweepEditsSuite}) {
        failed += QTest::qExec(make().get(), argc, argv);
    }
    return failed;
}
