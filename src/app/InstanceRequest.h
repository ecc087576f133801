#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QtGlobal>
#include <variant>

// One request as the running instance receives it on its socket: a line
// holding a JSON object. Kept apart from the socket so any bytes a client
// may send can be checked without one.
namespace InstanceRequest {

// A request is one short JSON line; anything longer is not ours.
inline constexpr qint64 kMaxBytes = 1024 * 1024;

// Why a line is not taken; the client is dropped without an answer.
enum class Refusal {
    TooLong,      // more than kMaxBytes, newline included
    Unterminated, // the line does not end with a newline
};

struct Request {
    // Empty when the line is not a JSON object (answered as an unknown request).
    QJsonObject object;
    // {"command": "hello"}: a probe the channel answers itself.
    bool hello = false;
};

// line: the bytes as read, up to and including the newline.
std::variant<Request, Refusal> parse(const QByteArray &line);

}
