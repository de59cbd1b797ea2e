#pragma once

#include <zephrin/Export.h>
#include <zephrin/ado/Types.h>

#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

namespace zephrin::ado {

class Connection;
class RecordsetPrivate;

/// What a recordset says of one of its columns.
struct Field {
    QString Name;                       ///< as the statement or the table calls it
    DataType Type = DataType::VarChar;  ///< what its values are
    /// Characters (UTF-16 units) for texts, bytes for binary; 0 where the type has no size of its own.
    int DefinedSize = 0;
    /// A sum of FieldAttribute bits.
    int Attributes = FieldAttributesUnspecified;
    /// Digits in all, for exact decimals; 0 elsewhere.
    int Precision = 0;
    /// Digits behind the decimal point, for exact decimals; 0 elsewhere.
    int NumericScale = 0;

    /// True for columns of the same name and kind.
    bool operator==(const Field&) const = default;
};

/// Rows with a cursor, held in memory: the rows of a query, or a small table that is filled by hand.
///
/// A recordset made by hand gets its columns by Append, is opened without a source, and is then filled with AddNew,
/// SetValue and Update. A recordset of a query is opened on a statement and a connection. Rows and fields count from 0
/// here; AbsolutePosition counts from 1, as in ADO.
///
/// A Null is an invalid QVariant; a text that is empty is not Null. A column that a new row never wrote is Null.
///
/// Names of columns are compared without regard to case; where two columns share a name, the first one is meant.
class ZEPHRIN_EXPORT Recordset : public QObject {
    Q_OBJECT
 public:
    /// A closed recordset without columns.
    explicit Recordset(QObject* parent = nullptr);
    ~Recordset() override;

    // --- Columns -----------------------------------------------------------------------------------------------

    /// Adds a column. Only while closed (3705 otherwise); a name that stands already is refused with 3001, and nothing
    /// is added.
    void Append(const QString& name, DataType type, int definedSize = 0, int attributes = FieldAttributesUnspecified);
    /// The same for a column as another recordset tells it, see FieldAt().
    void Append(const Field& field);
    /// Number of columns; they stay when the recordset is closed.
    int FieldCount() const;
    /// The column at `index`; throws 3265 when there is none.
    const Field& FieldAt(int index) const;
    /// Index of the first column of that name, or -1.
    int FieldIndex(QStringView name) const;

    // --- Opening and closing -----------------------------------------------------------------------------------

    /// Row limit for the next Open on a statement; 0 means none.
    void SetMaxRecords(qint64 limit);
    /// The limit that was set.
    qint64 MaxRecords() const;
    /// True when the last Open stopped at MaxRecords although the statement had more rows.
    bool Truncated() const;
    /// Kept for the caller; rows are always held on the client.
    void SetCursorLocation(CursorLocation location);

    /// Opens the columns that were appended, with no rows. 3705 when open.
    void Open();
    /// Runs `source` on `connection` and fetches every row. 3705 when open, 3709 when the connection is closed, the
    /// provider's error when the statement fails; the recordset then stays closed. A statement without rows of its
    /// own opens a recordset of no columns.
    void Open(const QString& source, Connection& connection, CursorType cursorType = CursorType::Static,
              LockType lockType = LockType::ReadOnly, int options = -1);
    /// Drops rows and keeps the columns, so that Open() can follow. 3704 when closed.
    void Close();
    /// Open or closed.
    ObjectState State() const;
    /// True while open.
    bool IsOpen() const { return State() == ObjectState::Open; }
    /// True while values may be written: recordsets made by hand, and clones of them.
    bool IsUpdatable() const;

    /// A recordset of the same rows with a cursor of its own. What either does afterwards never reaches the other:
    /// rows are shared until one side changes them. The clone of a recordset that is closed is a closed recordset of
    /// the same columns. A clone outlives what it was made of, and the connection too.
    std::shared_ptr<Recordset> Clone() const;

    // --- Files -------------------------------------------------------------------------------------------------

    /// Who may read a file that is saved.
    enum class FileAccess { Usual, OwnerOnly };

    /// Writes columns and rows, in their present order, to a file in ADO's XML form. The file is replaced as a whole: on
    /// a failure, which throws ErrorNumber::WriteFile, what was there stays. 3704 when closed.
    void Save(const QString& path, FileAccess access = FileAccess::Usual) const;
    /// Opens with the columns and rows of a saved file, to be changed like a table made by hand. 3705 when open. A file
    /// that is missing, damaged or of another form throws 3709 and leaves the recordset as it was; the description names
    /// file and line.
    void OpenFile(const QString& path);
    /// The same form in memory, for who handles files himself; `name` stands for the file in descriptions.
    QByteArray ToXml() const;
    /// Opens with the columns and rows of `xml`, with the rules of OpenFile.
    void OpenXml(const QByteArray& xml, const QString& name);

    // --- Moving ------------------------------------------------------------------------------------------------

    /// Rows in all, 0 when closed.
    qint64 RecordCount() const;
    /// True before the first row, and where there is none.
    bool Bof() const;
    /// True behind the last row, and where there is none.
    bool Eof() const;
    /// Position of the current row from 1; -2 at BOF, -3 at EOF, -1 when closed or empty.
    qint64 AbsolutePosition() const;
    /// Takes what AbsolutePosition tells, ends included; a position beyond an end stands behind it.
    void SetAbsolutePosition(qint64 position);
    /// Moving past an end stops behind it and never throws; on an empty or closed recordset nothing moves.
    /// A row begun with AddNew is committed by a move, as Update does.
    /// @{
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// @}

    // --- The current row ---------------------------------------------------------------------------------------

    /// Value of the current row. 3021 when there is none, 3265 for a column that is not there, 3704 when closed.
    QVariant Value(int field) const;
    /// The same for the first column of that name.
    QVariant Value(QStringView name) const;
    /// The same as text: Null, never written and empty all give "".
    QString Text(int field) const;
    /// The same for the first column of that name.
    QString Text(QStringView name) const;
    /// Writes a cell of the current (or the new) row. A text longer than the column's defined size, or a value that
    /// does not convert to the column's type, is refused with ErrorNumber::ValueRefused and the cell stays as it was.
    void SetValue(int field, const QVariant& value);
    /// The same for the first column of that name.
    void SetValue(QStringView name, const QVariant& value);

    /// Begins a new row behind the last and makes it the current one. It counts at once.
    void AddNew();
    /// Commits the current row's changes; harmless where there are none.
    void Update();
    /// Takes back a row that was begun with AddNew.
    void CancelUpdate();
    /// Removes the current row; the next row becomes the current one, or EOF behind the last. 3021 without a row.
    ///
    /// The MoveNext that follows directly arrives at that row instead of passing it, so that a walk which deletes the
    /// current row and then moves on misses none; every other move counts from that row. A walk that moves on only where
    /// it did not delete meets the row twice, which does no harm to a test.
    void Delete();
    /// Removes all rows; does nothing without rows or while closed.
    void DeleteAll();

    // --- Any row, for views ------------------------------------------------------------------------------------

    /// Value at a row of the present order, from 0. Null outside.
    QVariant ValueAt(qint64 row, int field) const;
    /// True for a Null, a cell that was never written, and outside.
    bool IsNullAt(qint64 row, int field) const;
    /// Display text at a row of the present order: numbers with a point, dates in ISO form, at most `maxChars`
    /// characters (no more than these are decoded from a long cell); "" for Null.
    QString TextAt(qint64 row, int field, qsizetype maxChars = 32767) const;
    /// Writes a cell of any row, with the rules of SetValue, without moving the cursor.
    void SetValueAt(qint64 row, int field, const QVariant& value);

    // --- Order -------------------------------------------------------------------------------------------------

    /// Orders the rows by `NAME`, `NAME ASC` or `NAME DESC`, several separated by ", ". Nulls come first (last with
    /// DESC), equal rows keep their order, nothing is queried anew. A name in brackets may hold anything; without
    /// them a name ends at its first blank. Empty restores the fetched order. Throws 3265 or 3001 and leaves the
    /// order as it was for what it can't read. The cursor goes to the first row.
    void SetSort(const QString& criterion);
    /// The order that was set last, empty for the fetched one.
    QString Sort() const;

    /// Bytes that rows and order occupy, shared rows counted whole.
    qint64 MemoryUsage() const;

 Q_SIGNALS:
    /// Columns, order or the whole content changed.
    void Reset();
    /// `count` rows stand where `first` is now; rows count from 0.
    void RowsInserted(qint64 first, qint64 count);
    /// `count` rows are gone from where `first` was.
    void RowsRemoved(qint64 first, qint64 count);
    /// Values of a row changed, in the columns from `firstField` to `lastField`.
    void CellsChanged(qint64 row, int firstField, int lastField);
    /// The cursor stands elsewhere; `row` counts from 0 and is -1 without a current row.
    void CursorMoved(qint64 row);

 private:
    friend class RecordsetPrivate;
    std::unique_ptr<RecordsetPrivate> d;
};

using RecordsetPtr = std::shared_ptr<Recordset>;

}  // namespace zephrin::ado

Q_DECLARE_METATYPE(zephrin::ado::RecordsetPtr)
