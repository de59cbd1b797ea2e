#pragma once

#include "platform/ado/ColumnStore.h"
#include "platform/excel/Application.h"

#include <QByteArray>
#include <QList>

#include <memory>

namespace zephrin::excel {

/// The XML of one data sheet, made row by row out of a running statement: a head row with the columns' names,
/// then the rows. Only one block of rows is held at a time.
class SheetRows {
 public:
    /// Throws ado::Error when the statement fails or has more columns than a sheet.
    SheetRows(RowSource& source, const QString& sql);
    ~SheetRows();

    /// The next piece of the part, or an empty array at its end. Throws ado::Error when the statement fails
    /// on its way, has more rows than a sheet, or the user stopped the export.
    QByteArray NextPiece();

    const QStringList& Heads() const { return heads; }
    /// Rows written so far, without the head.
    qint64 RowCount() const { return rows; }
    /// Texts that were longer than a cell holds and lost their end.
    qint64 CutTexts() const { return cut; }

 private:
    enum class Stage { Opening, Rows, Done };

    QByteArray Opening() const;
    QByteArray Block();
    void AppendRow(QByteArray& out, const ado::ColumnStore& block, qint64 row);
    void AppendCell(QByteArray& out, const ado::ColumnStore& block, qint64 row, int column);
    void AppendLongCell(QByteArray& out, const ado::ColumnStore& block, qint64 row, int column);

    RowSource& source;
    std::unique_ptr<ado::Cursor> cursor;
    QList<ado::Field> fields;
    QStringList heads;
    Stage stage = Stage::Opening;
    qint64 rows = 0;
    qint64 cut = 0;
};

/// The names of `fields` as a table's heads: none empty, none twice (a second "Price" is "Price2").
QStringList UniqueHeads(const QList<ado::Field>& fields);

}  // namespace zephrin::excel
