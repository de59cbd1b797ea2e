#include "platform/ado/PersistTypes.h"

#include <algorithm>
#include <array>

namespace zephrin::ado {

namespace {

struct Entry {
    DataType Type;
    PersistedType Written;
};

// Of several entries of one type the first is written, all are read.
constexpr std::array Entries = {
    Entry{DataType::SmallInt, {u"i2", {}}},
    Entry{DataType::Integer, {u"int", {}}},
    Entry{DataType::Integer, {u"i4", {}}},
    Entry{DataType::Single, {u"r4", {}}},
    Entry{DataType::Double, {u"float", {}}},
    Entry{DataType::Double, {u"r8", {}}},
    Entry{DataType::Currency, {u"number", u"currency"}},
    Entry{DataType::Date, {u"dateTime", u"variantdate"}},
    Entry{DataType::Boolean, {u"boolean", {}}},
    Entry{DataType::Variant, {u"string", u"variant"}},
    Entry{DataType::Empty, {u"string", u"empty"}},
    Entry{DataType::Decimal, {u"number", u"decimal"}},
    Entry{DataType::TinyInt, {u"i1", {}}},
    Entry{DataType::UnsignedTinyInt, {u"ui1", {}}},
    Entry{DataType::BigInt, {u"i8", {}}},
    Entry{DataType::Guid, {u"uuid", {}}},
    Entry{DataType::Numeric, {u"number", u"numeric"}},
    Entry{DataType::Numeric, {u"number", {}}},
    Entry{DataType::DBDate, {u"date", {}}},
    Entry{DataType::DBTime, {u"time", {}}},
    Entry{DataType::DBTimeStamp, {u"dateTime", u"timestamp"}},
    Entry{DataType::DBTimeStamp, {u"dateTime", {}}},
    Entry{DataType::Char, {u"string", u"str", true, false}},
    Entry{DataType::VarChar, {u"string", u"str", false, false}},
    Entry{DataType::LongVarChar, {u"string", u"str", false, true}},
    Entry{DataType::WChar, {u"string", {}, true, false}},
    Entry{DataType::VarWChar, {u"string", {}, false, false}},
    Entry{DataType::LongVarWChar, {u"string", {}, false, true}},
    Entry{DataType::Binary, {u"bin.hex", {}, true, false}},
    Entry{DataType::VarBinary, {u"bin.hex", {}, false, false}},
    Entry{DataType::LongVarBinary, {u"bin.hex", {}, false, true}},
};

/// Only texts and bytes come in several lengths; elsewhere the marks say nothing.
bool HasLengths(const Entry& entry) {
    return entry.Written.Type == u"bin.hex" ||
           (entry.Written.Type == u"string" &&
            (entry.Written.DbType.isEmpty() || entry.Written.DbType == u"str"));
}

bool Matches(const Entry& entry, const PersistedType& persisted) {
    if (entry.Written.Type != persisted.Type || entry.Written.DbType != persisted.DbType) return false;
    if (!HasLengths(entry)) return true;
    // A long value has no fixed length, whatever else is said of it.
    const bool fixed = persisted.FixedLength && !persisted.Long;
    return entry.Written.Long == persisted.Long && entry.Written.FixedLength == fixed;
}

}  // namespace

PersistedType PersistedTypeOf(DataType type) {
    const auto entry =
        std::find_if(Entries.begin(), Entries.end(), [type](const Entry& e) { return e.Type == type; });
    return entry == Entries.end() ? PersistedType{u"string", u"variant"} : entry->Written;
}

std::optional<DataType> TypeOfPersisted(const PersistedType& persisted) {
    const auto entry =
        std::find_if(Entries.begin(), Entries.end(), [&](const Entry& e) { return Matches(e, persisted); });
    if (entry == Entries.end()) return {};
    return entry->Type;
}

}  // namespace zephrin::ado
