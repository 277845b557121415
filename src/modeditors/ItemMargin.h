#pragma once

#include <QStyle>
#include <QStyleOptionViewItem>
#include <QWidget>

// What a style keeps free on either side of an item's icon and text, in pixels, besides all that a style
// sheet says. It does not do so in the sections of a header.
[[nodiscard]] inline int itemMargin(const QStyleOptionViewItem& item, const QWidget* view)
{
    return view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, view) + 1;
}
