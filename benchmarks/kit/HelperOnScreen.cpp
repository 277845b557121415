#include "kit/HelperOnScreen.h"

#include "kit/Rounds.h"

#include "support/Waiting.h"

using namespace TestSupport;

namespace {

// Xvfb's root window.
const QColor screenColour = Qt::black;

} // namespace

TimedDisplay::TimedDisplay()
    : m_display(QStringLiteral("none"))
{
    require(m_display.start(), qPrintable(m_display.errorString()));
    m_hand = std::make_unique<QuickHand>(m_display.name());
    m_hand->moveTo(BarPlaces::farAway);
}

QProcessEnvironment TimedDisplay::environment(bool openGl) const
{
    QProcessEnvironment environment = m_display.environment();
    if (!openGl)
        environment.insert(QStringLiteral("QT_XCB_GL_INTEGRATION"), QStringLiteral("none"));
    return environment;
}

bool TimedDisplay::waitForScreen(const QPoint& position)
{
    return m_hand->waitForColour(position, [](const QColor& colour) { return colour == screenColour; });
}

bool TimedDisplay::waitForWindow(const QPoint& position)
{
    return m_hand->waitForColour(
        position, [](const QColor& colour) { return colour.isValid() && colour != screenColour; });
}

TimedProgram::TimedProgram(const QProcessEnvironment& environment, const QString& program)
    : m_process(environment, program)
{}

void TimedProgram::start(const QStringList& moreArguments)
{
    require(m_process.start(m_main.helperArguments() + moreArguments), "the program does not start");
}

void TimedProgram::waitForWord(const QByteArray& word, int before)
{
    require(waitUntil([&] { return m_main.count(word) > before; }), "the program does not answer");
}

QString floorPath()
{
    return QStringLiteral(FLOOR_WINDOW);
}
