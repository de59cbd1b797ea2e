#pragma once

#include "platform/ado/Provider.h"
#include "platform/ado/providers/odbc/CellReader.h"
#include "platform/ado/providers/odbc/Channel.h"

namespace zephrin::ado::odbc {

/// The rows of one statement, fetched in batches.
class OdbcCursor final : public Cursor {
 public:
    explicit OdbcCursor(std::shared_ptr<Channel> channel);
    ~OdbcCursor() override;

    /// Runs the statement, once; throws ado::Error.
    void Execute(const QString& statement, const ExecuteOptions& options);

    const QList<Field>& Fields() const override { return fields; }
    qint64 Fetch(ColumnStore& into, qint64 maxRows) override;

 private:
    /// What the driver's thread works on; it outlives the cursor where that thread hangs.
    struct Running;
    qint64 RowsLeft() const;

    std::shared_ptr<Channel> channel;
    std::shared_ptr<Running> running;
    QList<Field> fields;
    CellReader reader;
    Allowance time;
    qint64 taken = 0;  ///< rows of the batch that were handed out
};

}  // namespace zephrin::ado::odbc
