#include "link/MessageType.h"

#include "link/LatinWord.h"

#include <array>
#include <cstring>

namespace {

using MinibarHelperProtocol::latinWord;

// Indexed by the value of the type.
constexpr std::array<QLatin1String, 12> words = {
    QLatin1String(),           latinWord("AUTH"),    latinWord("READY"),
    latinWord("SHOW_MINIBAR"), latinWord("VISIBLE"), latinWord("RESTORE_REQUEST"),
    latinWord("HIDE_MINIBAR"), latinWord("HIDDEN"),  latinWord("SHUTDOWN"),
    latinWord("EVT"),          latinWord("REQ"),     latinWord("RSP"),
};

bool isAscii(const QByteArray& bytes)
{
    quint64 all = 0;
    int position = 0;
    for (quint64 word = 0; position + int(sizeof word) <= bytes.size(); position += int(sizeof word)) {
        std::memcpy(&word, bytes.constData() + position, sizeof word);
        all |= word;
    }
    for (; position < bytes.size(); ++position)
        all |= static_cast<quint8>(bytes.at(position));
    return (all & 0x8080808080808080U) == 0;
}

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

std::optional<QByteArray> plainPayload(const QByteArray& line, MinibarMessageType type)
{
    const QLatin1String word = words[static_cast<std::size_t>(type)];
    if (!line.startsWith(word.data()) || line.size() <= word.size() || line.at(word.size()) != ' ' ||
        !isAscii(line))
        return std::nullopt;
    const int start = word.size() + 1;
    return QByteArray::fromRawData(line.constData() + start, line.size() - start).trimmed();
}

} // namespace MinibarHelperProtocol
