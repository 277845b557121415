#include "minibar/BarPopupsTest.h"

#include "controls/LabelButton.h"
#include "minibar/BarParts.h"

#include <QAction>
#include <QJsonDocument>
#include <QTest>

using Mode = RemoteMiniBarWindow::MiniBarMode;

QJsonObject BarPopupsTest::snapshot(const char* mod, const char* sweepAvailable)
{
    const QByteArray json = QByteArray(R"({"sweep":{"available":)")
                                .append(sweepAvailable)
                                .append(R"(,"revision":3,
        "enabled":true,"selectedPlanId":"fscan","frequencyPlan":{"startHz":1e9,"stopHz":2e9,"stepHz":1e7},
        "levelPlan":{"startDbm":-20,"stopDbm":-10,"stepDb":1},"dwellSeconds":0.0025,
        "supportedPlanIds":["fscan","lscan"]},"mod":)")
                                .append(mod)
                                .append("}");
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON");
    return object;
}

void BarPopupsTest::init()
{
    m_window = std::make_unique<RemoteMiniBarWindow>();
    m_sweepRequests =
        std::make_unique<QSignalSpy>(m_window.get(), &RemoteMiniBarWindow::sweepChangeRequested);
    m_window->applySnapshot(snapshot());
    m_window->setAnchorTopRight(QPoint(900, 40));
    m_window->showMiniBar();
    BarParts::click(BarParts::pushButton(BarParts::collapsed(*m_window), "v"));
    QCOMPARE(m_window->mode(), Mode::Expanded);
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void BarPopupsTest::cleanup()
{
    m_sweepRequests.reset();
    m_window.reset();
}

LabelButton* BarPopupsTest::button(const char* info) const
{
    const auto buttons = window().findChildren<LabelButton*>(QStringLiteral("miniBarInfoButton"));
    for (LabelButton* candidate : buttons) {
        if (candidate->isVisible() &&
            (candidate->text() == QLatin1String(info) || candidate->labelText() == QLatin1String(info)))
            return candidate;
    }
    return nullptr;
}

void BarPopupsTest::openSweep()
{
    QTest::mouseClick(button("Sweep"), Qt::LeftButton);
    QVERIFY(isShown(sweepName));
}

void BarPopupsTest::openMod(int action)
{
    QTest::mouseClick(button("MOD"), Qt::LeftButton);
    QVERIFY(menu()->isVisible());
    menu()->actions().at(action)->trigger();
    QVERIFY(isShown(modName));
}
