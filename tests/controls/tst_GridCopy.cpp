#include "controls/GridFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelection>

namespace zephrin::controls {

class GridCopyTest : public GridFixture {
 protected:
    /// What Ctrl+C copies with these cells selected, each "row,column" or a block "row,column-row,column".
    QString Copied(const QString& cells) {
        QItemSelection selection;
        const QAbstractItemModel& model = *Pane().model();
        const auto index = [&](const QString& cell) {
            return model.index(cell.section(u',', 0, 0).toInt(), cell.section(u',', 1, 1).toInt());
        };
        for (const QString& block : cells.split(u' '))
            selection.select(index(block.section(u'-', 0, 0)), index(block.section(u'-', -1)));
        Pane().selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(&Pane(), Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    }
};

TEST_F(GridCopyTest, BlocksAsTabsAndLines) {
    Bind(3);
    Grid.SetAllowAddNew(true);
    Sheet->SetValueAt(0, 1, QStringLiteral("x\ty"));
    Sheet->SetValueAt(1, 1, QStringLiteral("say \"1\""));
    Sheet->SetValueAt(2, 1, QString());
    const struct {
        const char16_t* Cells;
        QStringView Expected;
    } rows[] = {
        {u"0,0", u"a0"},
        {u"0,1", u"x\ty"},
        {u"1,1", u"say \"1\""},
        {u"0,0-0,1", u"a0\t\"x\ty\""},
        {u"0,0-2,2", u"a0\t\"x\ty\"\t0\r\na1\t\"say \"\"1\"\"\"\t1\r\na2\t\t2"},
        // Cells apart keep their places; rows without any are left out.
        {u"0,0 2,2", u"a0\t\r\n\t2"},
        // The row for adding has nothing to copy.
        {u"2,0-3,0", u"a2"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Copied(QString::fromUtf16(row.Cells)), row.Expected.toString())
            << qPrintable(QString::fromUtf16(row.Cells));
}

TEST_F(GridCopyTest, ALongCellIsCopiedWhole) {
    auto texts = std::make_shared<ado::Recordset>();
    texts->Append(QStringLiteral("Text"), ado::DataType::LongVarWChar);
    texts->Open();
    texts->AddNew();
    texts->SetValue(0, QString(1'000'000, u'x'));
    texts->Update();
    Grid.SetDataSource(texts);
    EXPECT_LT(Pane().model()->index(0, 0).data().toString().size(), 2000);
    EXPECT_EQ(Copied(QStringLiteral("0,0")).size(), 1'000'000);
}

}  // namespace zephrin::controls
