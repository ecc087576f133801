#pragma once

#include <QString>

// The program's fixed identity. It names the main settings domain, the
// application-support folder on macOS, the log categories and the
// single-instance channel, so it is chosen once and used everywhere.
namespace BundleIdentity {
inline constexpr const char *kIdentifier = "com.tillmora.Tillmora";
inline constexpr const char *kProgramName = "Tillmora";
inline constexpr const char *kSpaceSuitePrefix = "com.tillmora.space";

inline QString identifier() { return QString::fromLatin1(kIdentifier); }
}
