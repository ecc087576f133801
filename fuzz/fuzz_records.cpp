// The grid's stored records: folders, widgets and workflows, each a JSON list
// in the settings. The first byte picks the record type, the rest is the
// list. Every record that decodes must encode and decode to itself, and the
// all-or-nothing decoder must agree with the record-by-record one.
#include "FuzzSupport.h"
#include "foundation/GridRecords.h"
#include "foundation/RecordList.h"
#include "foundation/WidgetItem.h"
#include "organise/WorkflowItem.h"

#include <cstddef>
#include <cstdint>

namespace {

template <typename Record>
void roundTrip(const QByteArray &bytes)
{
    const RecordList::Decoded<Record> first = RecordList::decodeEach<Record>(bytes);
    FUZZ_CHECK(first.errors.size() == first.rejected.size() + (first.unreadable ? 1 : 0));

    QString error;
    const auto whole = RecordList::decode<Record>(bytes, &error);
    if (first.unreadable || !first.rejected.isEmpty()) {
        FUZZ_CHECK(!whole && !error.isEmpty());
        if (first.unreadable)
            FUZZ_CHECK(first.records.isEmpty() && first.rejected.isEmpty());
    } else {
        FUZZ_CHECK(whole && *whole == first.records);
    }

    const QByteArray encoded = RecordList::encode(first.records);
    const RecordList::Decoded<Record> second = RecordList::decodeEach<Record>(encoded);
    FUZZ_CHECK(!second.unreadable && second.rejected.isEmpty());
    FUZZ_CHECK(second.records == first.records);
    FUZZ_CHECK(RecordList::encode(second.records) == encoded);
}

}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    FuzzSupport::silenceLogs();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, qsizetype(size - 1));
    // '0' folders, '1' widgets, '2' workflows (any byte works, modulo 3).
    switch (data[0] % 3) {
    case 0: roundTrip<FolderItem>(bytes); break;
    case 1: roundTrip<WidgetItem>(bytes); break;
    case 2: roundTrip<WorkflowItem>(bytes); break;
    }
    return 0;
}
