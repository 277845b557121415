#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// The words of the line protocol between the main process and the mini bar.
enum class MinibarMessageType {
    Invalid = 0,
    Auth = 1,
    Ready = 2,
    ShowMinibar = 3,
    Visible = 4,
    RestoreRequest = 5,
    HideMinibar = 6,
    Hidden = 7,
    Shutdown = 8,
    Evt = 9,
    Req = 10,
    Rsp = 11
};

// One decoded line.
struct MinibarMessage
{
    MinibarMessageType type = MinibarMessageType::Invalid;
    QString payload; // trimmed
};

namespace MinibarHelperProtocol {

// The word on the wire; empty for Invalid.
[[nodiscard]] QString messageWord(MinibarMessageType type);
// The type of a word, compared exactly; Invalid for any other word.
[[nodiscard]] MinibarMessageType messageType(const QString& word);

// A whole line in UTF-8 with its line feed; empty for Invalid. The payload must not hold a line feed.
[[nodiscard]] QByteArray encodeLine(MinibarMessageType type, const QString& payload = QString());
// A line given without its line feed.
[[nodiscard]] MinibarMessage decodeLine(const QByteArray& line);
// The payload as decodeLine() gives it, without the way through a text, when the line has this type and is
// plain ASCII; else nothing. It lives no longer than the line.
[[nodiscard]] std::optional<QByteArray> plainPayload(const QByteArray& line, MinibarMessageType type);

} // namespace MinibarHelperProtocol
