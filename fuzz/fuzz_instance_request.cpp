// The running launcher's socket: one line from a client of the same user,
// read as a request and turned into what the launcher would do. Nothing is
// carried out; the checks are that the line is taken or refused by the
// stated rules and that only a forwarded verb, with exactly the arguments
// the client sent, can come out as a command.
#include "FuzzSupport.h"
#include "app/InstanceRequest.h"
#include "cli/InstanceCommands.h"
#include "cli/Verbs.h"

#include <QJsonArray>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::silenceLogs();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray line(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto parsed = InstanceRequest::parse(line);
    if (const auto *refusal = std::get_if<InstanceRequest::Refusal>(&parsed)) {
        FUZZ_CHECK((*refusal == InstanceRequest::Refusal::TooLong) == (line.size() > InstanceRequest::kMaxBytes));
        FUZZ_CHECK(*refusal == InstanceRequest::Refusal::TooLong || !line.endsWith('\n'));
        return 0;
    }
    const InstanceRequest::Request &request = std::get<InstanceRequest::Request>(parsed);
    FUZZ_CHECK(line.endsWith('\n') && line.size() <= InstanceRequest::kMaxBytes);
    const QString command = request.object.value(QLatin1String("command")).toString();
    FUZZ_CHECK(request.hello == (command == QLatin1String("hello")));
    if (request.hello)
        return 0;

    using Kind = InstanceCommands::Invocation::Kind;
    const InstanceCommands::Invocation invocation = InstanceCommands::interpret(request.object);
    switch (invocation.kind) {
    case Kind::Refused:
        FUZZ_CHECK(invocation.args.isEmpty());
        FUZZ_CHECK(invocation.reply.contains(QLatin1String("error"))
                   || invocation.reply.value(QLatin1String("exitCode")).toInt() == 2);
        return 0;
    case Kind::Activate:
        FUZZ_CHECK(command == QLatin1String("activate") && invocation.args.isEmpty());
        return 0;
    case Kind::Overlay:
    case Kind::Layout:
    case Kind::Spaces: break;
    }
    FUZZ_CHECK(command == QLatin1String("cli"));
    // The arguments are the client's strings, one for one: nothing dropped,
    // nothing made up in place of a value that was not a string.
    const QJsonArray sent = request.object.value(QLatin1String("args")).toArray();
    FUZZ_CHECK(sent.size() == invocation.args.size());
    for (qsizetype i = 0; i < sent.size(); ++i)
        FUZZ_CHECK(sent.at(i).isString() && sent.at(i).toString() == invocation.args.at(i));
    const Verbs::Verb *verb = Verbs::find(invocation.args);
    FUZZ_CHECK(verb && verb->forwarded && !verb->local);
    FUZZ_CHECK(verb->overlay == invocation.overlay);
    if (invocation.kind == Kind::Overlay)
        FUZZ_CHECK(invocation.overlay != Verbs::OverlayAction::None && invocation.args.size() == 1);
    else if (invocation.kind == Kind::Spaces)
        FUZZ_CHECK(invocation.overlay == Verbs::OverlayAction::None && verb->spaces);
    else
        FUZZ_CHECK(invocation.overlay == Verbs::OverlayAction::None && (verb->layout || verb->withContext));
    return 0;
}
