// Info.plist files of application bundles, XML or binary, read by libplist.
// Besides not crashing: a dictionary that reads must read the same after
// libplist writes it in either form, since bundles ship both.
#include "FuzzSupport.h"
#include "catalogue/BundleInfo.h"

#include <plist/plist.h>

#include <cstddef>
#include <cstdint>

namespace {

bool sameInfo(const std::optional<BundleInfo> &a, const std::optional<BundleInfo> &b)
{
    if (!a || !b)
        return !a && !b;
    return a->identifier == b->identifier && a->name == b->name && a->displayName == b->displayName
        && a->iconFile == b->iconFile;
}

enum class Form { Xml, Binary };

QByteArray rewritten(const QByteArray &bytes, Form form)
{
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    FUZZ_CHECK(root);
    char *out = nullptr;
    uint32_t length = 0;
    if (form == Form::Xml)
        plist_to_xml(root, &out, &length);
    else
        plist_to_bin(root, &out, &length);
    plist_free(root);
    const QByteArray result(out, qsizetype(length));
    if (form == Form::Xml)
        plist_to_xml_free(out);
    else
        plist_to_bin_free(out);
    return result;
}

}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::silenceLogs();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<BundleInfo> info = BundleInfo::parse(bytes);
    if (!info)
        return 0;
    FUZZ_CHECK(sameInfo(BundleInfo::parse(rewritten(bytes, Form::Binary)), info));
    FUZZ_CHECK(sameInfo(BundleInfo::parse(rewritten(bytes, Form::Xml)), info));
    return 0;
}
