#pragma once

#include <QString>

// What a command produced: its exit status and its two output streams. The
// same result travels back over the instance channel when the running
// launcher carried the command out.
struct CommandResult {
    int exitCode = 0;
    QString out;
    QString err;

    // Exit status 2: the command line itself was wrong; nothing was changed.
    static CommandResult usage(const QString &message) { return {2, {}, QStringLiteral("tillmora: ") + message + u'\n'}; }
    // Exit status 1: the operation failed.
    static CommandResult failure(const QString &message) { return {1, {}, QStringLiteral("tillmora: ") + message + u'\n'}; }
    static CommandResult ok(const QString &out = {}) { return {0, out, {}}; }

    // A command's changes count only once they are on disk: a result is
    // reported as it is only when the save succeeds, else as a failure that
    // says why (and without the output, which may name what was not kept).
    static CommandResult saved(const CommandResult &result, bool savedOk, const QString &saveError)
    {
        if (savedOk || result.exitCode != 0)
            return result;
        return failure(QStringLiteral("the settings could not be saved: %1").arg(saveError));
    }
};
