// Info.plist files of application bundles, XML or binary, read by libplist
// through BundleInfo::parse: any bytes a bundle may ship must read or be
// refused without a crash, a leak or a sanitizer report. (A rewrite through
// libplist's own writers is not compared: they drop invalid UTF-8 from keys,
// cut strings at NUL and can write binary lists they cannot read back, and
// the catalogue never writes a plist.)
#include "catalogue/BundleInfo.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    BundleInfo::parse(QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
