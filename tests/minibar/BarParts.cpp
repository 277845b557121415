#include "minibar/BarParts.h"

#include "controls/LabelButton.h"
#include "controls/TouchNumKeyboard.h"

#include <QJsonDocument>
#include <QLayout>
#include <QTest>

QJsonObject BarParts::json(const QByteArray& text)
{
    return QJsonDocument::fromJson(text).object();
}

QWidget* BarParts::collapsed(const QWidget& window)
{
    return window.findChild<QWidget*>(QStringLiteral("miniBarCollapsedPage"));
}

QWidget* BarParts::expanded(const QWidget& window)
{
    return window.findChild<QWidget*>(QStringLiteral("miniBarExpandedPage"));
}

QVector<LabelButton*> BarParts::infoButtons(const QWidget* page)
{
    QVector<LabelButton*> buttons;
    for (int i = 0; i < page->layout()->count(); ++i) {
        if (auto* button = qobject_cast<LabelButton*>(page->layout()->itemAt(i)->widget()))
            buttons.append(button);
    }
    return buttons;
}

QPushButton* BarParts::pushButton(const QWidget* page, const char* text)
{
    const auto buttons = page->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == QLatin1String(text))
            return button;
    }
    return nullptr;
}

Controls::TouchNumKeyboard* BarParts::keyboard(const QWidget& window)
{
    const auto keyboards = window.findChildren<Controls::TouchNumKeyboard*>();
    for (Controls::TouchNumKeyboard* candidate : keyboards) {
        if (candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

void BarParts::click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}
