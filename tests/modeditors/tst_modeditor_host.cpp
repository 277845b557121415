#include "modeditors/HostSuites.h"

#include <QApplication>
#include <QTest>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto make : {makeHostSuite, makeHostRequestsSuite, makeHostLayoutSuite, makeHostModelSuite}) {
        failed += QTest::qExec(make().get(), argc, argv);
    }
    return failed;
}
