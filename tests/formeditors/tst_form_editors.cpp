#include "formeditors/FormFixture.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    int failed = 0;
    for (const auto make : {makeFormShapeSuite, makeFormFieldsSuite, makeFormStateSuite, makeFormEditsSuite,
                            makePanelRulesSuite, makeFormLookSuite, makeArbPanelSuite,
                            makeStreamingPanelSuite, makeFileChoiceSuite}) {
        failed += QTest::qExec(make().get(), argc, argv);
    }
    return failed;
}
