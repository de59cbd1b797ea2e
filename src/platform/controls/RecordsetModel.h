#pragma once

#include <zephrin/ado/Recordset.h>

#include <QAbstractTableModel>

namespace zephrin::controls {

/// The rows of a recordset as Qt's views want them, and behind them, if asked for, one empty row in which a
/// new row is begun. It copies nothing: a cell is read when a view paints it.
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    enum Role {
        /// True for a Null of a query's result, where it has to be told from an empty text.
        NullRole = Qt::UserRole + 1,
    };
    /// No more of a long cell is read for the screen; copying reads all of it.
    static constexpr qsizetype ShownChars = 1024;
    static constexpr qsizetype EditedChars = 32767;

    using QAbstractTableModel::QAbstractTableModel;

    void SetRecordset(const ado::RecordsetPtr& source);
    const ado::RecordsetPtr& Source() const { return recordset; }
    void SetAllowUpdate(bool allow);
    void SetAllowAddNew(bool allow);
    /// The column whose head is emphasised; -1 for none.
    void SetMarkedColumn(int column);
    int MarkedColumn() const { return marked; }
    /// What stands below the name in the tool tip of a head.
    void SetHeadHint(const QString& text) { headHint = text; }

    /// True while the views are told of a change that the program made to the recordset.
    bool IsTelling() const { return telling; }
    /// Rows of the recordset, without the one for adding.
    int RecordRows() const { return rows; }
    bool IsAddNewRow(int row) const { return row == rows && HasAddNewRow(); }
    bool MayEdit(int row) const;
    /// Writes a cell; in the add-new row this begins a row, which is taken back if the value is refused.
    /// Returns what was wrong, or a null string.
    QString Write(int row, int column, const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
    bool HasAddNewRow() const;
    QVariant ColumnHead(int column, int role) const;
    qint64 RowInRecordset(int row) const;
    void Reread();
    void Insert(qint64 first, qint64 count);
    void Remove(qint64 first, qint64 count);
    void ReportCells(qint64 row, int firstField, int lastField);

    ado::RecordsetPtr recordset;
    /// Counts as the views know them. The recordset speaks of a change after it was made, a model has to
    /// before.
    int rows = 0;
    int columns = 0;
    /// Rows that came (or, negative, went) at `changeAt`, while the views are still being told.
    int changeAt = 0;
    int changeBy = 0;
    bool telling = false;
    int marked = -1;
    QString headHint;
    bool allowUpdate = false;
    bool allowAddNew = false;
};

}  // namespace zephrin::controls
