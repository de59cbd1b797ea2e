#pragma once

#include "platform/ado/Provider.h"

#include <QVariant>

#include <vector>

namespace zephrin::ado {

/// Rows that are in memory already, as a provider puts them together for a schema. An invalid cell is Null.
class MemoryCursor final : public Cursor {
 public:
    using Row = std::vector<QVariant>;

    MemoryCursor(QList<Field> itsFields, std::vector<Row> itsRows)
        : fields(std::move(itsFields)), rows(std::move(itsRows)) {}

    const QList<Field>& Fields() const override { return fields; }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override;

 private:
    const QList<Field> fields;
    const std::vector<Row> rows;
    size_t next = 0;
};

}  // namespace zephrin::ado
