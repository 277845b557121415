#include "modeditors/QuickSuites.h"

#include <QApplication>
#include <QTest>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto make :
         {makeQuickFormSuite, makeQuickStateSuite, makeQuickFieldsSuite, makeQuickFolderSuite,
          makeQuickRootSuite, makeQuickLoadSuite, makeQuickLocateSuite, makeQuickFollowSuite}) {
        failed += QTest::qExec(make().get(), argc, argv);
    }
    return failed;
}
