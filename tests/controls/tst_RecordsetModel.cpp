#include "platform/controls/RecordsetModel.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

namespace zephrin::controls {

namespace {

ado::RecordsetPtr Names() {
    auto names = std::make_shared<ado::Recordset>();
    names->Append(QStringLiteral("Name"), ado::DataType::VarChar, 10);
    names->Append(QStringLiteral("Number"), ado::DataType::Integer);
    names->Open();
    for (const char16_t* name : {u"a", u"b", u"c"}) {
        names->AddNew();
        names->SetValue(0, QString::fromUtf16(name));
        names->SetValue(1, names->RecordCount());
        names->Update();
    }
    return names;
}

/// The rows of a model as one text: cells parted by a blank, rows by "/".
QString Picture(const QAbstractItemModel& model) {
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells{model.headerData(row, Qt::Vertical).toString()};
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        rows << cells.join(u' ');
    }
    return rows.join(u'/');
}

}  // namespace

TEST(RecordsetModel, FollowsEveryChangeAsQtWantsItTold) {
    RecordsetModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.SetAllowUpdate(true);
    model.SetAllowAddNew(true);
    const ado::RecordsetPtr names = Names();
    model.SetRecordset(names);
    EXPECT_EQ(Picture(model), QStringLiteral("1 a 1/2 b 2/3 c 3/*  "));

    names->SetAbsolutePosition(2);
    names->Delete();
    EXPECT_EQ(Picture(model), QStringLiteral("1 a 1/2 c 3/*  "));
    names->AddNew();
    names->SetValue(0, QStringLiteral("d"));
    EXPECT_EQ(Picture(model), QStringLiteral("1 a 1/2 c 3/3 d /*  "));
    names->CancelUpdate();
    EXPECT_EQ(Picture(model), QStringLiteral("1 a 1/2 c 3/*  "));
    names->SetSort(QStringLiteral("Name DESC"));
    EXPECT_EQ(Picture(model), QStringLiteral("1 c 3/2 a 1/*  "));
    names->SetValueAt(0, 0, QStringLiteral("z"));
    EXPECT_EQ(Picture(model), QStringLiteral("1 z 3/2 a 1/*  "));
    names->DeleteAll();
    EXPECT_EQ(Picture(model), QStringLiteral("*  "));
    names->Close();
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
    model.SetRecordset(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(RecordsetModel, WritesCellsAndTakesBackWhatIsRefused) {
    RecordsetModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Warning);
    model.SetRecordset(Names());
    EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("x")));
    model.SetAllowUpdate(true);
    model.SetAllowAddNew(true);
    EXPECT_TRUE(model.setData(model.index(0, 0), QStringLiteral("x")));
    EXPECT_FALSE(model.setData(model.index(0, 0), QStringLiteral("longer than ten")));
    EXPECT_FALSE(model.setData(model.index(1, 1), QStringLiteral("no number")));
    EXPECT_FALSE(model.setData(model.index(3, 0), QStringLiteral("longer than ten")));
    EXPECT_EQ(Picture(model), QStringLiteral("1 x 1/2 b 2/3 c 3/*  "));
    EXPECT_TRUE(model.setData(model.index(3, 0), QStringLiteral("new")));
    EXPECT_EQ(Picture(model), QStringLiteral("1 x 1/2 b 2/3 c 3/4 new /*  "));
}

TEST(RecordsetModel, OnlyTheBeginningOfALongCellIsShown) {
    auto texts = std::make_shared<ado::Recordset>();
    texts->Append(QStringLiteral("Text"), ado::DataType::LongVarWChar);
    texts->Open();
    texts->AddNew();
    texts->SetValue(0, QString(10'000'000, u'x'));
    texts->Update();
    RecordsetModel model;
    model.SetRecordset(texts);
    EXPECT_EQ(model.index(0, 0).data().toString().size(), RecordsetModel::ShownChars);
}

TEST(RecordsetModel, HeadsShowNamesAsTheyAre) {
    auto odd = std::make_shared<ado::Recordset>();
    odd->Append(QStringLiteral("<b>A&B</b>"), ado::DataType::VarChar);
    odd->Append(QStringLiteral("Sum"), ado::DataType::Currency);
    odd->Open();
    RecordsetModel model;
    model.SetRecordset(odd);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("<b>A&B</b>"));
    EXPECT_TRUE(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole)
                    .toString()
                    .contains(QStringLiteral("&lt;b&gt;A&amp;B")));
    const auto alignment = [&](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>();
    };
    EXPECT_TRUE(alignment(0).testFlag(Qt::AlignLeft));
    EXPECT_TRUE(alignment(1).testFlag(Qt::AlignRight));
}

}  // namespace zephrin::controls
