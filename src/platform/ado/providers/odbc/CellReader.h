#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/ado/providers/odbc/RowBatch.h"

#include <string>

namespace zephrin::ado::odbc {

/// Takes cells out of a batch and stores them: texts as UTF-8, numbers exactly, dates as counts.
///
/// A text that doesn't read as what its column says is stored as the text it is.
class CellReader {
 public:
    /// Appends rows [first, first + count) of the batch.
    void Append(const RowBatch& batch, qint64 first, qint64 count, ColumnStore& into);

 private:
    void AppendCell(CellKind kind, const char* data, SQLLEN length, ColumnStore& into, int column);
    void AppendWide(const char* data, SQLLEN bytes, ColumnStore& into, int column);

    std::string utf8;
};

}  // namespace zephrin::ado::odbc
