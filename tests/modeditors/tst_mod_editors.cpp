#include "modeditors/EditorSuites.h"

#include <QApplication>
#include <QtTest>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto make :
         {makeEditorFormSuite, makeNumericFieldsSuite, makeEditorTextsSuite, makeDigitalStateSuite,
          makeDigitalEditsSuite, makeMultitoneStateSuite, makeMultitoneEditsSuite}) {
        failed += QTest::qExec(make().get(), argc, argv);
    }
    return failed;
}
