#include "app/InstanceRequest.h"

#include <QJsonDocument>

namespace InstanceRequest {

std::variant<Request, Refusal> parse(const QByteArray &line)
{
    if (line.size() > kMaxBytes)
        return Refusal::TooLong;
    if (!line.endsWith('\n'))
        return Refusal::Unterminated;
    Request request;
    request.object = QJsonDocument::fromJson(line).object();
    request.hello = request.object.value(QLatin1String("command")).toString() == QLatin1String("hello");
    return request;
}

}
