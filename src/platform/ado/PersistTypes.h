#pragma once

#include <zephrin/ado/Recordset.h>

#include <QStringView>

#include <optional>

namespace zephrin::ado {

// Names and namespaces of the persisted form, as ADO publishes them.

inline constexpr QStringView SchemaNamespace = u"uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882";
inline constexpr QStringView TypeNamespace = u"uuid:C2F41010-65B3-11d1-A29F-00AA00C14882";
inline constexpr QStringView RowsetNamespace = u"urn:schemas-microsoft-com:rowset";
inline constexpr QStringView RowNamespace = u"#RowsetSchema";

/// How a field's type is written: the data type of the schema, and what tells apart those that share one.
struct PersistedType {
    QStringView Type;
    QStringView DbType;  ///< empty where none is written
    bool FixedLength = false;
    bool Long = false;
};

PersistedType PersistedTypeOf(DataType type);
/// Nothing for a type that no recordset has here.
std::optional<DataType> TypeOfPersisted(const PersistedType& persisted);

}  // namespace zephrin::ado
