#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/excel/Application.h"

#include <zephrin/ado/Error.h>

#include <functional>
#include <optional>

namespace zephrin::test {

/// A statement whose rows a function writes.
class FakeRows : public excel::RowSource {
 public:
    using WriteRow = std::function<void(ado::ColumnStore& into, qint64 row)>;
    FakeRows(QList<ado::Field> columns, qint64 count, WriteRow write)
        : fields(std::move(columns)), rows(count), writeRow(std::move(write)) {}

    std::unique_ptr<ado::Cursor> Run(const QString& sql) override {
        Ran << sql;
        return std::make_unique<Rows>(*this);
    }
    bool Proceed(qint64 rowsSoFar) override { return !StopAt || rowsSoFar < *StopAt; }

    QStringList Ran;
    std::optional<qint64> StopAt;
    std::optional<qint64> FailAt;

 private:
    class Rows : public ado::Cursor {
     public:
        explicit Rows(FakeRows& rowSource) : source(rowSource) {}
        const QList<ado::Field>& Fields() const override { return source.fields; }
        qint64 Fetch(ado::ColumnStore& into, qint64 maxRows) override {
            const qint64 from = at;
            for (; at < source.rows && at - from < maxRows; ++at) {
                if (source.FailAt == at) throw ado::Error(11, QStringLiteral("the connection broke"));
                source.writeRow(into, at);
                into.EndRows();
            }
            return at - from;
        }

     private:
        FakeRows& source;
        qint64 at = 0;
    };

    QList<ado::Field> fields;
    qint64 rows;
    WriteRow writeRow;
};

}  // namespace zephrin::test
