#include "simulator/TwoWaySwitch.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVariant>

namespace Simulator {

namespace {

constexpr int halfWidth = 96;

} // namespace

TwoWaySwitch::TwoWaySwitch(const QString& offText, const QString& onText, const QString& subject,
                           QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_off = addHalf(offText, subject, false);
    m_on = addHalf(onText, subject, true);
    setShownState(false);
}

QPushButton* TwoWaySwitch::addHalf(const QString& text, const QString& subject, bool on)
{
    auto* half = new QPushButton(text, this);
    half->setCheckable(true);
    half->setMinimumWidth(halfWidth);
    half->setProperty("half", QString(on ? QStringLiteral("on") : QStringLiteral("off")));
    half->setAccessibleName(subject + QLatin1Char(' ') + text);
    connect(half, &QPushButton::clicked, this, [this, on] {
        setShownState(m_shown); // the press itself changes nothing
        if (on != m_shown)
            emit wanted(on);
    });
    layout()->addWidget(half);
    return half;
}

void TwoWaySwitch::setShownState(bool on)
{
    m_shown = on;
    m_off->setChecked(!on);
    m_on->setChecked(on);
}

} // namespace Simulator
