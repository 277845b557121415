#pragma once

#include <QObject>

// Every screen in every language, at one scale: nothing is cut silently, nothing overlaps, nothing lies
// outside. The themes differ in colours alone, which is tested too, so one of them stands for both.
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
    void themesDifferInColoursAlone_data();
    void themesDifferInColoursAlone();

private:
    const char* m_scale;
};

// Runs the test at a scale. To be called from main().
[[nodiscard]] int runLayoutTest(int argc, char* argv[], const char* scale);
