#include "utils/workbook/CellText.h"

namespace Workbook {
namespace {

constexpr int escapeLength = 7; // _xHHHH_

// The character that the escape at this position stands for, -1 if there is none.
int escapedCharacter(const QString& text, int position)
{
    if (text.size() - position < escapeLength || text[position + 1] != QLatin1Char('x') ||
        text[position + escapeLength - 1] != QLatin1Char('_'))
        return -1;
    int code = 0;
    for (int i = position + 2; i < position + escapeLength - 1; ++i) {
        const ushort character = text[i].unicode();
        const bool isDigit = character >= '0' && character <= '9';
        const int letter = (character | 0x20) - 'a';
        if (!isDigit && (letter < 0 || letter > 5))
            return -1;
        code = code * 16 + (isDigit ? character - '0' : letter + 10);
    }
    return code;
}

QString withoutEscapes(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (int i = 0; i < text.size();) {
        const int code = text[i] == QLatin1Char('_') ? escapedCharacter(text, i) : -1;
        plain += code < 0 ? text[i] : QChar(code);
        i += code < 0 ? 1 : escapeLength;
    }
    return plain;
}

} // namespace

QString cellText(const QByteArray& utf8)
{
    QString text = QString::fromUtf8(utf8);
    if (utf8.contains("_x"))
        text = withoutEscapes(text);
    if (text.contains(QLatin1Char('\r')))
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    return text;
}

} // namespace Workbook
