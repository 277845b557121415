#pragma once

#include <QObject>

class Screens;

// Every screen in every language and both themes, at one scale: nothing is cut silently, nothing overlaps,
// nothing lies outside. The themes differ in colours alone, so that nothing jumps when one is changed.
class LayoutTest final : public QObject
{
    Q_OBJECT

public:
    // `scale`: as it is reported; the process's own, set before the application began.
    explicit LayoutTest(const char* scale);
    ~LayoutTest() override;

private slots:
    void initTestCase();
    void everyEditorIsAmongTheScreens();
    void screens_data();
    void screens();
    void corners_data();
    void corners();
    void themesDifferInColoursAlone_data();
    void themesDifferInColoursAlone();

private:
    // Fails with every fault of the screens that `visit` shows.
    void check(const QString& language, bool light, void (Screens::*visit)());

    const char* m_scale;
};

// Runs the test at a scale. To be called from main().
[[nodiscard]] int runLayoutTest(int argc, char* argv[], const char* scale);
