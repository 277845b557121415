#pragma once

#include <QObject>
#include <QTest>

#include <initializer_list>
#include <memory>

using MakeSuite = std::unique_ptr<QObject> (*)();

// Runs the suites one after another. A suite's name as the first argument runs that one alone, with the
// arguments that follow: `tst_link_protocol LineDecoderSuite theLongestLineIsAccepted`.
inline int runSuites(std::initializer_list<MakeSuite> makers, QStringList arguments)
{
    int failed = 0;
    bool named = false;
    for (const MakeSuite make : makers) {
        const std::unique_ptr<QObject> suite = make();
        if (arguments.value(1) != QLatin1String(suite->metaObject()->className()))
            continue;
        named = true;
        arguments.removeAt(1);
        failed += QTest::qExec(suite.get(), arguments);
    }
    if (named)
        return failed;
    for (const MakeSuite make : makers)
        failed += QTest::qExec(make().get(), arguments);
    return failed;
}
