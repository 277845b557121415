#pragma once

#include "controls/EnumList.h"
#include "controls/EnumTextButton.h"
#include "controls/PopupWidget.h"

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <memory>

// A dialog with a drop-down button and, below it, a button that must not be hit by accident.
namespace OpenedList {

struct Panel
{
    explicit Panel(const QStringList& items = {QStringLiteral("Sine"), QStringLiteral("Square"),
                                               QStringLiteral("Triangle"), QStringLiteral("Ramp")})
    {
        dialog->setWindowFlag(Qt::FramelessWindowHint);
        button = new EnumTextButton(dialog.get());
        button->setText(QStringLiteral("Shape"));
        button->setEnums(items);
        button->setCurrentEnum(1);
        button->setGeometry(20, 20, 200, 60);
        beneath = new QPushButton(dialog.get());
        beneath->setGeometry(0, 82, 300, 218);
        dialog->resize(300, 300);
        edits = std::make_unique<QSignalSpy>(button, &EnumTextButton::currentItemEdited);
        pushes = std::make_unique<QSignalSpy>(beneath, &QPushButton::pressed);
    }
    // True once the dialog is in front of the user.
    [[nodiscard]] bool show()
    {
        dialog->move(200, 100);
        dialog->show();
        dialog->activateWindow();
        return QTest::qWaitForWindowActive(dialog.get()) &&
               QTest::qWaitFor([this] { return dialog->mapToGlobal(QPoint(0, 0)) == dialog->pos(); });
    }
    // A click through the dialog's window, wherever the popups send it.
    void click(const QPoint& inDialog) const
    {
        QTest::mouseClick(dialog->windowHandle(), Qt::LeftButton, {}, inDialog);
    }
    void clickButton() const { click(button->geometry().center()); }
    void key(Qt::Key key) const { QTest::keyClick(dialog->windowHandle(), key); }

    [[nodiscard]] PopupWidget* popup() const
    {
        for (auto* candidate : dialog->findChildren<PopupWidget*>(QStringLiteral("enumPopup"))) {
            if (candidate->isVisible()) {
                return candidate;
            }
        }
        return nullptr;
    }
    [[nodiscard]] Controls::EnumList* list() const
    {
        return popup() ? popup()->findChild<Controls::EnumList*>() : nullptr;
    }
    [[nodiscard]] bool isOpen() const { return popup() != nullptr; }
    [[nodiscard]] bool openByClick() const
    {
        clickButton();
        return isOpen() && QTest::qWaitForWindowExposed(popup());
    }
    // The middle of an item in the open list, in the dialog's coordinates.
    [[nodiscard]] QPoint itemPosition(int row) const
    {
        const QPoint inList = list()->visualRect(list()->model()->index(row, 0)).center();
        return dialog->mapFromGlobal(list()->viewport()->mapToGlobal(inList));
    }
    void clickItem(int row) const { click(itemPosition(row)); }
    // A press on one item and a release on another, or anywhere else in the dialog.
    void drag(const QPoint& from, const QPoint& to) const
    {
        QWindow* const window = dialog->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        QTest::mouseMove(window, to);
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    }
    [[nodiscard]] QVector<int> edited() const
    {
        QVector<int> indices;
        for (const auto& arguments : *edits) {
            indices.append(arguments.first().toInt());
        }
        return indices;
    }

    std::unique_ptr<QDialog> dialog = std::make_unique<QDialog>();
    EnumTextButton* button;
    QPushButton* beneath;
    std::unique_ptr<QSignalSpy> edits;
    std::unique_ptr<QSignalSpy> pushes;
};

} // namespace OpenedList
