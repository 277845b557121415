#include "minibar/BarParts.h"

#include "controls/LabelButton.h"

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

void BarParts::click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}
