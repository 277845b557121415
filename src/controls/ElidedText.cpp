#include "controls/ElidedText.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QTextLayout>

namespace Controls {

QStringList elidedLines(const QString& text, const QFont& font, int width, int lines)
{
    const QFontMetrics metrics(font);
    if (lines == 1 || metrics.horizontalAdvance(text) <= width) {
        return {metrics.elidedText(text, Qt::ElideRight, width)};
    }
    QStringList shown;
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (shown.size() == lines - 1) {
            shown.append(metrics.elidedText(text.mid(line.textStart()), Qt::ElideRight, width));
            break;
        }
        shown.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return shown;
}

QFont fittingFont(const QFont& font, const QString& text, int width, int smallest)
{
    QFont fitting = font;
    int size = QFontInfo(font).pixelSize();
    while (size > smallest && QFontMetrics(fitting).horizontalAdvance(text) > width) {
        fitting.setPixelSize(--size);
    }
    return fitting;
}

bool isCut(const QStringList& shownLines, const QString& text)
{
    const auto withoutBlanks = [](QString whole) { return whole.remove(QLatin1Char(' ')); };
    return withoutBlanks(shownLines.join(QString())) != withoutBlanks(text);
}

} // namespace Controls
