#pragma once

#include "link/ModSnapshot.h"
#include "minibar/OpeningClick.h"
#include "minibar/TurnMark.h"

#include <QObject>
#include <QRect>

class QMenu;
class QWidget;

// The menu of modulation items, opened below the bar's MOD button.
class ModMenu final : public QObject
{
    Q_OBJECT

public:
    // `bar` is the window that the menu belongs to; it must outlive this object.
    explicit ModMenu(QWidget* bar);
    ~ModMenu() override;

    // One action for each business, in the list's order.
    void rebuild(const QVector<ModBusinessEntry>& businesses);
    // Checks the action of this business, and no other; none for an empty id.
    void check(const QString& enabledBusinessId);

    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] bool isVisible() const;
    // It has closed within this turn of the event loop.
    [[nodiscard]] bool hasJustHidden() const { return m_justHidden.isSet(); }
    [[nodiscard]] bool owns(const QObject* object) const;

    // Shows the menu below `button`, its right edge on that of the bar, whose frame is `bar`.
    void open(const QWidget* button, const QRect& bar);
    void hide();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void businessChosen(const QString& businessId);

private:
    void create();
    void place();

    QWidget* m_bar;
    QMenu* m_menu = nullptr;
    TurnMark m_justHidden;
    QPoint m_anchor; // its top, and the bar whose right edge it has
    QRect m_barFrame;
    OpeningClick m_openingClick;
};
