// The settings file reader: any bytes a settings file may hold (hand edits,
// a newer version, a torn copy). Whatever decodes must be written back and
// read again as the same keys and values, or the first save would change the
// user's settings behind their back.
#include "FuzzSupport.h"
#include "storage/DomainFile.h"

#include <QDateTime>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

// Equal as the store hands values out: same type and content, nested
// alike. NaN is a value like any other here (a stored "nan" must stay nan).
bool sameValue(const QVariant &a, const QVariant &b)
{
    if (a.typeId() != b.typeId())
        return false;
    switch (a.typeId()) {
    case QMetaType::Double: {
        const double x = a.toDouble(), y = b.toDouble();
        return (std::isnan(x) && std::isnan(y)) || x == y;
    }
    case QMetaType::QDateTime: return a.toDateTime() == b.toDateTime();
    case QMetaType::QVariantList: {
        const QVariantList l = a.toList(), r = b.toList();
        if (l.size() != r.size())
            return false;
        for (qsizetype i = 0; i < l.size(); ++i)
            if (!sameValue(l.at(i), r.at(i)))
                return false;
        return true;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap l = a.toMap(), r = b.toMap();
        if (l.keys() != r.keys())
            return false;
        for (auto it = l.cbegin(); it != l.cend(); ++it)
            if (!sameValue(it.value(), r.value(it.key())))
                return false;
        return true;
    }
    default: return a == b;
    }
}

bool sameValues(const QMap<QString, QVariant> &a, const QMap<QString, QVariant> &b)
{
    return sameValue(QVariantMap(a), QVariantMap(b));
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
    const DomainFile::Content first = DomainFile::parse(bytes, QStringLiteral("fuzz.json"));
    if (first.unparsable) {
        FUZZ_CHECK(first.values.isEmpty() && first.undecodable.isEmpty());
        return 0;
    }
    // Every key lands on one side: decoded or kept as it was.
    for (auto it = first.values.cbegin(); it != first.values.cend(); ++it)
        FUZZ_CHECK(!first.undecodable.contains(it.key()));

    const QByteArray written = DomainFile::serialize(first);
    const DomainFile::Content second = DomainFile::parse(written, QStringLiteral("fuzz.json"));
    FUZZ_CHECK(!second.unparsable);
    FUZZ_CHECK(sameValues(first.values, second.values));
    FUZZ_CHECK(first.undecodable == second.undecodable);
    // A file read and saved unchanged is saved byte for byte the same, so
    // writers that merge without changes never rewrite it.
    FUZZ_CHECK(DomainFile::serialize(second) == written);
    return 0;
}
