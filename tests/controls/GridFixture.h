#pragma once

#include "platform/ado/Connection.h"
#include "platform/ado/providers/AllProviders.h"
#include "platform/controls/CellEditor.h"
#include "platform/controls/DataGrid.h"
#include "support/ScratchDatabase.h"

#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace zephrin::controls {

/// A shown grid on a sheet of `rows` rows with the columns A, B (ten characters each) and N (a number).
class GridFixture : public testing::Test {
 protected:
    GridFixture() {
        Grid.setObjectName(QStringLiteral("dgr"));
        Grid.resize(500, 300);
        Grid.SetAllowUpdate(true);
        Grid.show();
    }

    void Bind(int rows) {
        Sheet = std::make_shared<ado::Recordset>();
        Sheet->Append(QStringLiteral("A"), ado::DataType::VarChar, 10);
        Sheet->Append(QStringLiteral("B"), ado::DataType::VarChar, 10);
        Sheet->Append(QStringLiteral("N"), ado::DataType::Integer);
        Sheet->Open();
        for (int row = 0; row < rows; ++row) {
            Sheet->AddNew();
            Sheet->SetValue(0, QStringLiteral("a%1").arg(row));
            Sheet->SetValue(1, QStringLiteral("b%1").arg(row));
            Sheet->SetValue(2, row);
            Sheet->Update();
        }
        if (rows > 0) Sheet->MoveFirst();
        Grid.SetDataSource(Sheet);
        QCoreApplication::processEvents();
    }

    /// Binds the rows of a real statement.
    void BindQuery(const QString& statement) {
        static const test::ScratchDatabase database(test::SmallShopScript());
        ado::Connection connection(ado::providers::AllProviders());
        connection.Open(database.ConnectionString());
        Sheet = connection.Execute(statement);
        Grid.SetDataSource(Sheet);
        QCoreApplication::processEvents();
    }

    /// An editor's end and a refusal come one after the other through the event loop.
    static void Settle() {
        for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
    }

    QTableView& Pane(int index = 0) { return *Grid.Pane(index); }

    CellEditor* Editor() {
        for (int pane = 0; pane < Grid.SplitCount(); ++pane)
            for (CellEditor* editor : Pane(pane).findChildren<CellEditor*>())
                if (editor->isVisible()) return editor;
        return nullptr;
    }

    /// Opens the cell and replaces its text, as a person would.
    void Type(int row, int column, const QString& text) {
        Grid.SetCurrentCell(row, column);
        Pane().setFocus();
        QTest::keyClick(&Pane(), Qt::Key_F2);
        ASSERT_NE(Editor(), nullptr);
        Editor()->selectAll();
        QTest::keyClick(Editor(), Qt::Key_Delete);
        QTest::keyClicks(Editor(), text);
    }

    void Press(Qt::Key key) {
        QTest::keyClick(Editor() ? static_cast<QWidget*>(Editor()) : &Pane(), key);
        Settle();
    }

    void ClickCell(int row, int column, int pane = 0) {
        const QRect rect = Pane(pane).visualRect(Pane(pane).model()->index(row, column));
        QTest::mouseClick(Pane(pane).viewport(), Qt::LeftButton, {}, rect.topLeft() + QPoint(4, 4));
        Settle();
    }

    /// Every cell: cells parted by a blank, rows by "/".
    QString Cells() const {
        QStringList rows;
        for (qint64 row = 0; row < Sheet->RecordCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < Sheet->FieldCount(); ++column) cells << Sheet->TextAt(row, column);
            rows << cells.join(u' ');
        }
        return rows.join(u'/');
    }

    QString Current() const {
        return QStringLiteral("%1,%2").arg(Grid.CurrentRow()).arg(Grid.CurrentColumn());
    }

    DataGrid Grid;
    ado::RecordsetPtr Sheet;
};

}  // namespace zephrin::controls
