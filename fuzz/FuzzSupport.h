#pragma once

#include <QtGlobal>
#include <cstdio>
#include <cstdlib>

// A broken property stops the run with a message; libFuzzer keeps the input
// as a crash and the replay test fails on it.
#define FUZZ_CHECK(condition)                                                                          \
    do {                                                                                               \
        if (!(condition)) {                                                                            \
            std::fprintf(stderr, "%s:%d: property broken: %s\n", __FILE__, __LINE__, #condition);      \
            std::abort();                                                                              \
        }                                                                                              \
    } while (false)

namespace FuzzSupport {

// The decoders log every bad key or record; millions of such lines would
// cost more than the decoding.
inline void silenceLogs()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

}
