#include "cli/CommandLine.h"

#include <cstdio>

namespace CommandLine {

bool startsLauncher(const QStringList &arguments)
{
    for (const QString &a : arguments.mid(1))
        if (a != QLatin1String("--login-item"))
            return false;
    return true;
}

QString helpText()
{
    return QStringLiteral(
        "Usage: tillmora [--login-item]\n"
        "       tillmora COMMAND [ARGUMENTS]\n\n"
        "With no command, starts the launcher (or shows the one already running).\n\n"
        "Options:\n"
        "  --help        Show this help and exit.\n"
        "  --version     Show the version and exit.\n"
        "  --login-item  Start in the background without opening the overlay\n"
        "                (used by the \"start at login\" entry).\n");
}

static void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

int run(const QStringList &arguments)
{
    const QString command = arguments.value(1);
    if (command == QLatin1String("--help") || command == QLatin1String("-h") || command == QLatin1String("help")) {
        print(stdout, helpText());
        return 0;
    }
    if (command == QLatin1String("--version")) {
        print(stdout, QStringLiteral("tillmora %1\n").arg(QLatin1String(TILLMORA_VERSION)));
        return 0;
    }
    print(stderr, QStringLiteral("tillmora: unknown command or option '%1'; see 'tillmora --help'\n").arg(command));
    return 2;
}

}
