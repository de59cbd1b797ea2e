#include "Failing.h"
#include "FakeProvider.h"

#include <zephrin/ado/Recordset.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

using test::NumberOf;

void Fill(Recordset& rs, const QString& names) {
    rs.Append(u"Name"_qs, DataType::VarChar, 10);
    rs.Append(u"Seen"_qs, DataType::Boolean);
    rs.Open();
    for (const QString& name : names.split(u' ', Qt::SkipEmptyParts)) {
        rs.AddNew();
        rs.SetValue(u"name", name);
        rs.Update();
    }
}

/// The first column, the current row marked.
QString Picture(const Recordset& rs) {
    QStringList names;
    for (qint64 row = 0; row < rs.RecordCount(); ++row)
        names << (rs.AbsolutePosition() == row + 1 ? u"*"_qs : u""_qs) + rs.TextAt(row, 0);
    if (rs.AbsolutePosition() == -2) names.prepend(u"BOF"_qs);
    if (rs.AbsolutePosition() == -3) names.append(u"EOF"_qs);
    return names.join(u' ');
}

TEST(Recordset, CursorStopsBehindItsEnds) {
    Recordset rs;
    EXPECT_EQ(rs.AbsolutePosition(), -1);
    rs.MoveNext();
    Fill(rs, {});
    EXPECT_TRUE(rs.Bof() && rs.Eof());
    rs.MoveLast();
    EXPECT_EQ(rs.AbsolutePosition(), -1);

    rs.Close();
    Recordset three;
    Fill(three, u"a b c"_qs);
    struct Step {
        std::function<void()> Do;
        const char16_t* Picture;
    };
    const Step steps[] = {
        {[] {}, u"a b *c"},
        {[&] { three.MoveNext(); }, u"a b c EOF"},
        {[&] { three.MoveNext(); }, u"a b c EOF"},
        {[&] { three.MovePrevious(); }, u"a b *c"},
        {[&] { three.MoveFirst(); }, u"*a b c"},
        {[&] { three.MovePrevious(); }, u"BOF a b c"},
        {[&] { three.MovePrevious(); }, u"BOF a b c"},
        {[&] { three.MoveNext(); }, u"*a b c"},
        {[&] { three.SetAbsolutePosition(2); }, u"a *b c"},
        {[&] { three.SetAbsolutePosition(9); }, u"a b c EOF"},
        {[&] { three.SetAbsolutePosition(0); }, u"BOF a b c"},
        {[&] { three.SetAbsolutePosition(-3); }, u"a b c EOF"},
        {[&] { three.SetAbsolutePosition(-2); }, u"BOF a b c"},
    };
    for (const Step& step : steps) {
        step.Do();
        EXPECT_EQ(Picture(three), QString::fromUtf16(step.Picture));
    }
}

TEST(Recordset, WalkThatDeletesMissesNoRow) {
    const struct {
        const char* Loop;
        std::function<void(Recordset&)> Do;
    } loops[] = {
        {"delete, then move",
         [](Recordset& rs) {
             for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext())
                 if (rs.Text(0) != u"c") rs.Delete();
         }},
        {"delete or move",
         [](Recordset& rs) {
             for (rs.MoveFirst(); !rs.Eof();)
                 if (rs.Text(0) != u"c")
                     rs.Delete();
                 else
                     rs.MoveNext();
         }},
        {"by count",
         [](Recordset& rs) {
             rs.MoveFirst();
             for (qint64 left = rs.RecordCount(); left > 0; --left) {
                 if (rs.Text(0) != u"c") rs.Delete();
                 rs.MoveNext();
             }
         }},
        {"backwards",
         [](Recordset& rs) {
             for (rs.MoveLast(); !rs.Bof(); rs.MovePrevious())
                 if (rs.Text(0) != u"c") rs.Delete();
         }},
    };
    for (const auto& loop : loops) {
        Recordset rs;
        Fill(rs, u"a b c d e"_qs);
        loop.Do(rs);
        EXPECT_EQ(Picture(rs).remove(u'*').remove(u" EOF"_qs).remove(u"BOF "_qs), u"c"_qs) << loop.Loop;
    }
}

TEST(Recordset, DeleteLeavesTheNextRowCurrent) {
    Recordset rs;
    Fill(rs, u"a b c d"_qs);
    rs.SetAbsolutePosition(2);
    rs.Delete();
    EXPECT_EQ(Picture(rs), u"a *c d"_qs);
    rs.MoveNext();
    EXPECT_EQ(Picture(rs), u"a *c d"_qs) << "arrives at the row behind the deleted one";
    rs.MoveNext();
    EXPECT_EQ(Picture(rs), u"a c *d"_qs);
    rs.Delete();
    EXPECT_EQ(Picture(rs), u"a c EOF"_qs);
    EXPECT_EQ(NumberOf([&] { rs.Delete(); }), ErrorNumber::NoCurrentRecord);
    rs.MoveFirst();
    rs.Delete();
    rs.MoveFirst();
    rs.MoveNext();
    EXPECT_EQ(Picture(rs), u"c EOF"_qs) << "only the move that follows directly arrives";
    rs.DeleteAll();
    EXPECT_TRUE(rs.Bof() && rs.Eof());
    rs.DeleteAll();
}

TEST(Recordset, NewRowCountsAtOnceAndCanBeTakenBack) {
    Recordset rs;
    Fill(rs, u"a b"_qs);
    rs.MoveFirst();
    rs.AddNew();
    EXPECT_EQ(Picture(rs), u"a b *"_qs);
    rs.CancelUpdate();
    EXPECT_EQ(Picture(rs), u"*a b"_qs);
    rs.CancelUpdate();
    rs.AddNew();
    rs.MoveFirst();
    rs.CancelUpdate();
    EXPECT_EQ(Picture(rs), u"*a b "_qs) << "a move commits";
    rs.AddNew();
    rs.Update();
    rs.CancelUpdate();
    EXPECT_EQ(rs.RecordCount(), 4);
}

TEST(Recordset, NullNeverWrittenAndEmptyAreTold) {
    Recordset rs;
    Fill(rs, u"a"_qs);
    EXPECT_TRUE(rs.IsNullAt(0, 1));
    EXPECT_FALSE(rs.Value(u"Seen").isValid());
    EXPECT_EQ(rs.Text(u"Seen"), QString());
    rs.SetValue(0, QString());
    EXPECT_FALSE(rs.IsNullAt(0, 0));
    EXPECT_TRUE(rs.Value(0).isValid());
    EXPECT_EQ(rs.Text(0), QString());
    rs.SetValue(0, QVariant());
    EXPECT_TRUE(rs.IsNullAt(0, 0));
    EXPECT_TRUE(rs.IsNullAt(7, 0) && rs.IsNullAt(0, 7) && rs.IsNullAt(-1, 0));
    EXPECT_FALSE(rs.ValueAt(7, 0).isValid());
}

TEST(Recordset, RefusedValueLeavesItsCell) {
    Recordset rs;
    Fill(rs, u"a"_qs);
    EXPECT_EQ(NumberOf([&] { rs.SetValue(0, u"12345678901"_qs); }), ErrorNumber::ValueRefused);
    EXPECT_EQ(NumberOf([&] { rs.SetValueAt(0, 1, u"maybe"_qs); }), ErrorNumber::ValueRefused);
    EXPECT_EQ(rs.Text(0), u"a"_qs);
    EXPECT_TRUE(rs.IsNullAt(0, 1));
    // Ten units, of which two make one character.
    rs.SetValue(0, u"12345678\U0001F600"_qs);
    EXPECT_EQ(rs.Text(0).size(), 10);
}

TEST(Recordset, FailuresHaveTheirNumbers) {
    Recordset closed;
    Recordset rs;
    Fill(rs, u"a"_qs);
    rs.MoveNext();
    const struct {
        const char* What;
        int Number;
        std::function<void()> Do;
    } cases[] = {
        {"append while open", 3705, [&] { rs.Append(u"x"_qs, DataType::Integer); }},
        {"open while open", 3705, [&] { rs.Open(); }},
        {"close twice", 3704, [&] { closed.Close(); }},
        {"read while closed", 3704, [&] { (void)closed.Value(0); }},
        {"read by name while closed", 3704, [&] { (void)closed.Text(u"x"); }},
        {"write while closed", 3704, [&] { closed.SetValue(0, 1); }},
        {"add while closed", 3704, [&] { closed.AddNew(); }},
        {"delete while closed", 3704, [&] { closed.Delete(); }},
        {"sort while closed", 3704, [&] { closed.SetSort(u"x"_qs); }},
        {"field out of range", 3265, [&] { (void)rs.FieldAt(2); }},
        {"field of no name", 3265, [&] { (void)rs.Value(u"nobody"); }},
        {"write to no field", 3265, [&] { rs.SetValue(-1, 1); }},
        {"read behind the end", 3021, [&] { (void)rs.Value(0); }},
        {"write behind the end", 3021, [&] { rs.SetValue(0, u"x"_qs); }},
        {"write to no row", 3021, [&] { rs.SetValueAt(1, 0, u"x"_qs); }},
    };
    for (const auto& row : cases) EXPECT_EQ(NumberOf(row.Do), row.Number) << row.What;

    closed.Append(u"Name"_qs, DataType::Integer);
    EXPECT_EQ(NumberOf([&] { closed.Append(u"NAME"_qs, DataType::Integer); }), ErrorNumber::InvalidArgument);
    EXPECT_EQ(closed.FieldCount(), 1);
    EXPECT_EQ(closed.FieldIndex(u"nAmE"), 0);
}

TEST(Recordset, CloseKeepsColumns) {
    Recordset rs;
    Fill(rs, u"a b"_qs);
    rs.Close();
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(rs.FieldCount(), 2);
    rs.Append(u"More"_qs, DataType::Integer);
    rs.Open();
    EXPECT_EQ(rs.RecordCount(), 0);
    rs.AddNew();
    rs.SetValue(u"More", 5);
    EXPECT_EQ(rs.Value(2), QVariant(5));
}

TEST(Recordset, ClonesNeverMeet) {
    auto rs = std::make_unique<Recordset>();
    Fill(*rs, u"b a"_qs);
    const RecordsetPtr first = rs->Clone();
    const RecordsetPtr second = first->Clone();
    rs->SetValueAt(0, 0, u"changed"_qs);
    first->MoveLast();
    first->Delete();
    second->SetSort(u"Name"_qs);
    second->AddNew();
    EXPECT_EQ(Picture(*rs), u"changed *a"_qs);
    EXPECT_EQ(Picture(*first), u"b EOF"_qs);
    EXPECT_EQ(Picture(*second), u"a b *"_qs);
    rs.reset();
    EXPECT_EQ(first->TextAt(0, 0), u"b"_qs);

    Recordset closed;
    closed.Append(u"x"_qs, DataType::Integer);
    const RecordsetPtr closedClone = closed.Clone();
    EXPECT_FALSE(closedClone->IsOpen());
    EXPECT_EQ(closedClone->FieldCount(), 1);
}

TEST(Recordset, OrderIsTakenBackAndKeepsUpWithEdits) {
    Recordset rs;
    Fill(rs, u"b C a"_qs);
    rs.SetSort(u"Name DESC"_qs);
    EXPECT_EQ(Picture(rs), u"*C b a"_qs);
    rs.Delete();
    rs.AddNew();
    rs.SetValue(0, u"z"_qs);
    EXPECT_EQ(Picture(rs), u"b a *z"_qs) << "rows keep their place until the order is set anew";
    EXPECT_EQ(NumberOf([&] { rs.SetSort(u"Nobody"_qs); }), ErrorNumber::ItemNotFound);
    EXPECT_EQ(rs.Sort(), u"Name DESC"_qs);
    EXPECT_EQ(Picture(rs), u"b a *z"_qs);
    rs.SetSort({});
    EXPECT_EQ(Picture(rs), u"*b a z"_qs);
    EXPECT_EQ(rs.Sort(), QString());
}

TEST(Recordset, TellsItsViews) {
    Recordset rs;
    Fill(rs, u"a b c"_qs);
    QStringList log;
    QObject::connect(&rs, &Recordset::Reset, [&] { log << u"reset"_qs; });
    QObject::connect(&rs, &Recordset::RowsInserted,
                     [&](qint64 at, qint64 n) { log << u"+%1,%2"_qs.arg(at).arg(n); });
    QObject::connect(&rs, &Recordset::RowsRemoved,
                     [&](qint64 at, qint64 n) { log << u"-%1,%2"_qs.arg(at).arg(n); });
    QObject::connect(&rs, &Recordset::CellsChanged, [&](qint64 row, int from, int to) {
        log << u"=%1,%2,%3"_qs.arg(row).arg(from).arg(to);
    });
    QObject::connect(&rs, &Recordset::CursorMoved, [&](qint64 row) { log << u">%1"_qs.arg(row); });
    const auto heard = [&] { return std::exchange(log, {}).join(u' '); };

    rs.MoveFirst();
    rs.MoveFirst();
    EXPECT_EQ(heard(), u">0"_qs);
    rs.Delete();
    rs.MoveNext();
    EXPECT_EQ(heard(), u"-0,1 >0"_qs);
    rs.AddNew();
    rs.SetValue(0, u"d"_qs);
    EXPECT_EQ(heard(), u"+2,1 >2 =2,0,0"_qs);
    rs.CancelUpdate();
    EXPECT_EQ(heard(), u"-2,1 >0"_qs);
    rs.SetSort(u"Name"_qs);
    EXPECT_EQ(heard(), u"reset >0"_qs);
    rs.DeleteAll();
    EXPECT_EQ(heard(), u"-0,2 >-1"_qs);
    rs.Close();
    EXPECT_EQ(heard(), u"reset >-1"_qs);
}

TEST(Recordset, WideGridOfTextsIsCheap) {
    Recordset rs;
    constexpr int columns = 400;
    for (int column = 0; column < columns; ++column)
        rs.Append(u"[Orders].[Field %1]"_qs.arg(column), DataType::VarChar, 550,
                  FieldMayBeNull | FieldUpdatable);
    rs.Open();
    for (int row = 0; row < 100; ++row) {
        rs.AddNew();
        rs.SetValue(u"[orders].[field 7]", u"= 1"_qs);
    }
    EXPECT_LT(rs.MemoryUsage(), 200'000) << "cells that nobody wrote take no room";
    const RecordsetPtr clone = rs.Clone();
    clone->SetValueAt(3, 7, u"= 2"_qs);
    EXPECT_EQ(rs.TextAt(3, 7), u"= 1"_qs);
}

}  // namespace
}  // namespace zephrin::ado
