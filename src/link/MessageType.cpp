#include "link/MessageType.h"

#include "link/LatinWord.h"

#include <array>

namespace {

using MinibarHelperProtocol::latinWord;

// Indexed by the value of the type.
constexpr std::array<QLatin1String, 12> words = {
    QLatin1String(),           latinWord("AUTH"),    latinWord("READY"),
    latinWord("SHOW_MINIBAR"), latinWord("VISIBLE"), latinWord("RESTORE_REQUEST"),
    latinWord("HIDE_MINIBAR"), latinWord("HIDDEN"),  latinWord("SHUTDOWN"),
    latinWord("EVT"),          latinWord("REQ"),     latinWord("RSP"),
};

} // namespace

namespace MinibarHelperProtocol {

QString messageWord(MinibarMessageType type)
{
    const auto index = static_cast<std::size_t>(type);
    return index < words.size() ? QString(words[index]) : QString();
}

MinibarMessageType messageType(const QString& word)
{
    for (std::size_t index = 1; index < words.size(); ++index) {
        if (word == words[index])
            return static_cast<MinibarMessageType>(index);
    }
    return MinibarMessageType::Invalid;
}

QByteArray encodeLine(MinibarMessageType type, const QString& payload)
{
    QByteArray line = messageWord(type).toUtf8();
    if (line.isEmpty())
        return line;
    if (!payload.isEmpty()) {
        line += ' ';
        line += payload.toUtf8();
    }
    line += '\n';
    return line;
}

MinibarMessage decodeLine(const QByteArray& line)
{
    // The two-argument form: the other one stops at a zero byte.
    QString text = QString::fromUtf8(line.constData(), line.size()).trimmed();
    const int space = text.indexOf(QLatin1Char(' '));
    if (space < 0)
        return {messageType(text), QString()};
    const QString word = text.left(space).trimmed();
    text.remove(0, space + 1);
    return {messageType(word), std::move(text).trimmed()};
}

} // namespace MinibarHelperProtocol
