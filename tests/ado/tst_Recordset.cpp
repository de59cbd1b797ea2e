#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

Recordset& Fill(Recordset& rs, const QStringList& names) {
    rs.Append(u"Name"_qs, DataType::VarChar, 10);
    rs.Append(u"Seen"_qs, DataType::Boolean);
    rs.Open();
    for (const QString& name : names) {
        rs.AddNew();
        rs.SetValue(u"name", name);
        rs.Update();
    }
    return rs;
}

QString Names(Recordset& rs) {
    QStringList names;
    for (qint64 row = 0; row < rs.RecordCount(); ++row) names << rs.TextAt(row, 0);
    return names.join(u' ');
}

TEST(Recordset, DeleteThenMoveNextPassesNoRow) {
    Recordset rs;
    Fill(rs, {u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs});
    rs.MoveFirst();
    int seen = 0;
    while (!rs.Eof()) {
        ++seen;
        if (rs.Text(0) != u"c") rs.Delete();
        rs.MoveNext();
    }
    EXPECT_EQ(seen, 4);
    EXPECT_EQ(Names(rs), u"c"_qs);
}

}  // namespace
}  // namespace zephrin::ado
