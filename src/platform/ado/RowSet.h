#pragma once

#include "platform/ado/RowOrder.h"

#include <zephrin/ado/Types.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace zephrin::ado {

/// The rows of one recordset in their present order, both rows and columns counted from 0 and inside the
/// bounds.
class RowSet {
 public:
    virtual ~RowSet() = default;

    /// The same rows for another recordset. Nothing is copied until one of the two changes.
    virtual std::unique_ptr<RowSet> Share() const = 0;
    virtual qint64 Count() const = 0;
    virtual bool IsNull(qint64 row, int column) const = 0;
    virtual QVariant Value(qint64 row, int column, DataType type) const = 0;
    virtual QString Text(qint64 row, int column, DataType type, qsizetype maxChars) const = 0;

    /// Orders the rows; equal ones keep the order in which they are.
    virtual void Order(const std::vector<SortKey>& keys) = 0;
    /// Back to the order in which the rows came.
    virtual void RestoreOrder() = 0;

    virtual qint64 MemoryUsage() const = 0;
};

}  // namespace zephrin::ado
