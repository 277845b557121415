#pragma once

#include "controls/LabelButton.h"

#include <QPointer>
#include <QSharedPointer>
#include <QStringList>

class PopupWidget;

namespace Controls {
class EnumModel;
}

// A LabelButton whose value is one of a list. A click, Space or Enter opens the list beside the button, in a
// PopupWidget; meanwhile the button is checked. The list closes when the button goes away, is disabled or is
// given other items.
class EnumTextButton : public LabelButton
{
    Q_OBJECT
    Q_PROPERTY(QString titleText READ titleText WRITE setTitleText)
    Q_PROPERTY(int viewMode READ viewMode WRITE setViewMode)

public:
    enum ViewMode { List = 0, Grid = 1 }; // Grid: three columns

    explicit EnumTextButton(QWidget* parent = nullptr);
    ~EnumTextButton() override;

    // The items, all enabled; the current item is none afterwards and the shown text stays.
    void setEnums(const QStringList& items);
    [[nodiscard]] QStringList enums() const;

    // Shows item `index` as the current one without emitting; an index outside the list changes nothing.
    void setCurrentEnum(int index);
    // -1 when the button shows a text that was set instead.
    [[nodiscard]] int currentEnum() const;

    // Nothing happens for an index outside the list, and no item outside the list is enabled.
    void setItemEnabled(int index, bool enabled);
    [[nodiscard]] bool isItemEnabled(int index) const;

    // Shows a text that is no item: the current item is none afterwards.
    void setLabelText(const QString& text) override;

    // Title of the open list; empty for none.
    [[nodiscard]] QString titleText() const { return m_titleText; }
    void setTitleText(const QString& title) { m_titleText = title; }
    // One of ViewMode; any other number leaves it as it is.
    [[nodiscard]] int viewMode() const { return m_viewMode; }
    void setViewMode(int mode);

    [[nodiscard]] bool isListOpen() const;

signals:
    // The user has chosen an item, also the current one again. Never emitted for a change by code. The button
    // has already taken the item as its current one; the list closes in the next turn of the event loop.
    void currentItemEdited(int index);

protected:
    void arrange(const QRect& area) override;
    [[nodiscard]] QSize contentSize() const override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void nextCheckState() override;

private:
    void toggleList();
    void openList();
    void closeList();
    void tellOpen();
    void takeChoice(int index);
    void showText(const QString& text);

    QSharedPointer<Controls::EnumModel> m_items;
    QString m_titleText;
    int m_viewMode = List;
    QPointer<PopupWidget> m_popup; // while the list is open
    QRect m_chevron;
};
