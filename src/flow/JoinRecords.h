#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

namespace zephrin {

// The rows that joins are kept in. rsJoins holds one row for each pair of fields; the other recordsets
// remember what is used already.

/// Adds the row of the fields that are selected on the join tab. Throws what the recordset throws.
void AddJoinRow(ZPGGlobalDeclarations& state);

/// Remembers that the tables and fields of the join tab are used now. Throws what the recordset throws.
void RecordJoinUse(ZPGGlobalDeclarations& state);

/// Puts a table on offer.
void OfferJoinTable(ado::Recordset& joinTable, const QString& table);

/// The tables that take part in no join yet.
QStringList FreeJoinTables(const ZPGGlobalDeclarations& state);

/// No table is used any more.
void FreeAllJoinTables(ZPGGlobalDeclarations& state);

}  // namespace zephrin
