#include "Failing.h"
#include "FakeProvider.h"
#include "support/DiskFaults.h"

#include <zephrin/ado/Recordset.h>

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringConverter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace zephrin::ado {
namespace {

using test::DescriptionOf;
using test::NumberOf;

/// Columns and rows of a recordset, each value with its type, for comparing.
QString Dump(const Recordset& rs) {
    QStringList lines;
    for (int index = 0; index < rs.FieldCount(); ++index) {
        const Field& field = rs.FieldAt(index);
        lines << u"%1 %2 %3 %4 %5 %6"_qs.arg(field.Name)
                     .arg(int(field.Type))
                     .arg(field.DefinedSize)
                     .arg(field.Attributes)
                     .arg(field.Precision)
                     .arg(field.NumericScale);
    }
    for (qint64 row = 0; row < rs.RecordCount(); ++row)
        for (int index = 0; index < rs.FieldCount(); ++index) {
            const QVariant value = rs.ValueAt(row, index);
            lines << u"%1 %2"_qs.arg(value.typeId()).arg(rs.TextAt(row, index));
        }
    return lines.join(u'\n');
}

void AddColumn(Recordset& rs, const QString& name, DataType type, int size = 0, int attributes = -1,
               int precision = 0, int scale = 0) {
    rs.Append(Field{name, type, size, attributes, precision, scale});
}

/// A row of every type, one of Nulls, and texts of every sort.
void FillEverything(Recordset& rs) {
    const struct {
        Field Column;
        QVariant Value;
    } columns[] = {
        {{u"Small"_qs, DataType::SmallInt}, -32768},
        {{u"Int"_qs, DataType::Integer, 4, FieldIsNullable}, 2147483647},
        {{u"Single"_qs, DataType::Single}, 0.1},
        {{u"Double"_qs, DataType::Double}, -1.7976931348623157e308},
        {{u"Money"_qs, DataType::Currency}, u"-922337203685477.5808"_qs},
        {{u"Date"_qs, DataType::Date}, QDateTime(QDate(1899, 12, 30), QTime(23, 59, 59, 999), Qt::UTC)},
        {{u"Flag"_qs, DataType::Boolean, 0, 0}, true},
        {{u"Any"_qs, DataType::Variant}, QByteArray("\x00\x01", 2)},
        {{u"Nothing"_qs, DataType::Empty}, u"7:8_x0041_"_qs},
        {{u"Exact"_qs, DataType::Decimal}, u"12345678901234567890.000000001"_qs},
        {{u"Tiny"_qs, DataType::TinyInt}, -128},
        {{u"Byte"_qs, DataType::UnsignedTinyInt}, 255},
        {{u"Big"_qs, DataType::BigInt}, std::numeric_limits<qint64>::min()},
        {{u"Guid"_qs, DataType::Guid}, u"6ba7b810-9dad-11d1-80b4-00c04fd430c8"_qs},
        {{u"Binary"_qs, DataType::Binary, 3}, QByteArray("\xFF\x00z", 3)},
        {{u"Char"_qs, DataType::Char, 5}, u" a  "_qs},
        {{u"WChar"_qs, DataType::WChar, 5}, u"\u20AC"_qs},
        {{u"Numeric"_qs, DataType::Numeric, 0, -1, 10, 3}, u"-1234567.125"_qs},
        {{u"Day\n"_qs, DataType::DBDate}, QDate(2024, 2, 29)},
        {{u"Time"_qs, DataType::DBTime}, QTime(1, 2, 3)},
        {{u"Stamp"_qs, DataType::DBTimeStamp}, QDateTime(QDate(2024, 3, 31), QTime(2, 30), Qt::UTC)},
        {{u"VarChar"_qs, DataType::VarChar, 8000, FieldMayBeNull | FieldUpdatable}, u"<&>\"' \t\r\n]]>"_qs},
        {{u"LongText"_qs, DataType::LongVarChar}, u"_x0041_ _x004G_ _x"_qs},
        {{u"[Orders].[Order ID]"_qs, DataType::VarWChar, 50}, u"\U0001F600 \u0001\u001F\uFFFE\uFFFF"_qs},
        {{u"c7"_qs, DataType::LongVarWChar}, QString(u"\0 alone \xD83D and \xDE00"_qs)},
        {{u"Output_x0041_Yes/No"_qs, DataType::VarBinary}, QByteArray()},
        {{u"xmlName"_qs, DataType::LongVarBinary}, QByteArray("x")},
        {{QString(), DataType::VarChar}, u""_qs},
    };
    for (const auto& column : columns) rs.Append(column.Column);
    rs.Open();
    rs.AddNew();
    for (int index = 0; index < rs.FieldCount(); ++index) rs.SetValue(index, columns[index].Value);
    rs.AddNew();
    rs.AddNew();
    rs.SetValue(u"Any", 12);
    rs.SetValue(u"VarChar", QString());
    for (const QVariant& any : {QVariant(1.5), QVariant(1LL << 40), QVariant(true),
                                QVariant(QDate(2024, 3, 1)), QVariant(QTime(1, 2)), QVariant(u"3:x"_qs),
                                QVariant(QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC))}) {
        rs.AddNew();
        rs.SetValue(u"Any", any);
    }
}

TEST(PersistXml, EveryTypeAndCharacterComesBack) {
    Recordset rs;
    FillEverything(rs);
    Recordset again;
    again.OpenXml(rs.ToXml(), u"memory"_qs);
    EXPECT_EQ(Dump(again).toStdString(), Dump(rs).toStdString());
    for (int field = 0; field < rs.FieldCount(); ++field)
        for (qint64 row = 0; row < rs.RecordCount(); ++row)
            EXPECT_EQ(again.ValueAt(row, field), rs.ValueAt(row, field));
    EXPECT_TRUE(again.IsUpdatable());
    EXPECT_EQ(again.AbsolutePosition(), 1);
    EXPECT_EQ(again.ToXml(), rs.ToXml());
}

TEST(PersistXml, RandomTablesComeBack) {
    QRandomGenerator random(61);
    for (int round = 0; round < 100; ++round) {
        Recordset rs;
        const int columns = random.bounded(6);
        for (int column = 0; column < columns; ++column) {
            QString name;
            for (int left = random.bounded(6); left > 0; --left) name += QChar(random.bounded(0x10000));
            if (rs.FieldIndex(name) < 0) AddColumn(rs, name, DataType::VarWChar, 20);
        }
        rs.Open();
        for (int row = random.bounded(5); row > 0; --row) {
            rs.AddNew();
            for (int column = 0; column < rs.FieldCount(); ++column) {
                if (random.bounded(3) == 0) continue;
                QString text;
                for (int left = random.bounded(20); left > 0; --left)
                    text += random.bounded(2) ? QChar(random.bounded(0x10000))
                                              : u"_x0D 1\r\n"_qs.at(random.bounded(8));
                rs.SetValue(column, text);
            }
        }
        Recordset again;
        again.OpenXml(rs.ToXml(), u"memory"_qs);
        ASSERT_EQ(Dump(again), Dump(rs)) << round;
    }
}

TEST(PersistXml, PeopleCanReadIt) {
    Recordset rs;
    AddColumn(rs, u"FieldName"_qs, DataType::VarChar, 8000);
    AddColumn(rs, u"OutputYes/No"_qs, DataType::VarChar, 3, FieldMayBeNull | FieldUpdatable);
    AddColumn(rs, u"Percent"_qs, DataType::SmallInt);
    rs.Open();
    rs.AddNew();
    rs.SetValue(0, u"[Orders].[ID]"_qs);
    rs.SetValue(1, u""_qs);
    EXPECT_EQ(
        rs.ToXml().toStdString(),
        R"(<xml xmlns:s="uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882" xmlns:dt="uuid:C2F41010-65B3-11d1-A29F-00AA00C14882" xmlns:rs="urn:schemas-microsoft-com:rowset" xmlns:z="#RowsetSchema">
 <s:Schema id="RowsetSchema">
  <s:ElementType name="row" content="eltOnly" rs:updatable="true">
   <s:AttributeType name="FieldName" rs:number="1">
    <s:datatype dt:type="string" rs:dbtype="str" dt:maxLength="8000"/>
   </s:AttributeType>
   <s:AttributeType name="c1" rs:name="OutputYes/No" rs:number="2" rs:nullable="false" rs:write="true">
    <s:datatype dt:type="string" rs:dbtype="str" dt:maxLength="3" rs:maybenull="true"/>
   </s:AttributeType>
   <s:AttributeType name="Percent" rs:number="3">
    <s:datatype dt:type="i2"/>
   </s:AttributeType>
   <s:extends type="rs:rowbase"/>
  </s:ElementType>
 </s:Schema>
 <rs:data>
  <z:row FieldName="[Orders].[ID]" c1=""/>
 </rs:data>
</xml>
)");
}

// --- What other software writes, and what is refused
// ----------------------------------------------------------------

QByteArray Document(const QByteArray& columns, const QByteArray& rows) {
    return "<xml xmlns:s='uuid:BDC6E3F0-6DA3-11d1-A2A3-00AA00C14882'\n "
           "xmlns:dt='uuid:C2F41010-65B3-11d1-A29F-00AA00C14882'\n"
           " xmlns:rs='urn:schemas-microsoft-com:rowset' xmlns:z='#RowsetSchema'>\n<s:Schema "
           "id='RowsetSchema'>\n"
           "<s:ElementType name='row' content='eltOnly' rs:CommandTimeout='30'>\n" +
           columns + "<s:extends type='rs:rowbase'/>\n</s:ElementType>\n</s:Schema>\n<rs:data>\n" + rows +
           "</rs:data>\n</xml>\n";
}

QByteArray Column(const QByteArray& name, const QByteArray& type) {
    return "<s:AttributeType name='" + name + "'><s:datatype " + type + "/></s:AttributeType>\n";
}

TEST(PersistXml, ReadsWhatOthersWrite) {
    Recordset rs;
    rs.OpenXml(
        "<!-- saved elsewhere -->\n" +
            Document(
                "<s:AttributeType name='ID' rs:number='1' rs:writeunknown='true'><s:datatype dt:type='int'"
                " dt:maxLength='4' rs:precision='10' rs:fixedlength='true' "
                "rs:maybenull='false'/></s:AttributeType>"
                "<s:AttributeType name='c1' rs:name='Ship Name' rs:number='2' rs:nullable='true'><s:datatype"
                " dt:type='string' dt:maxLength='4294967295' rs:long='true'/></s:AttributeType>" +
                    Column("When", "dt:type='dateTime' rs:dbtype='timestamp'") +
                    Column("Ok", "dt:type='boolean'"),
                "<z:row ID='1' c1='a&#xA;&amp;' When='1996-07-04T00:00:00' Ok='True'/>\n"
                "<rs:insert>\n<z:row ID='2' Ok='0'></z:row></rs:insert>"),
        u"x"_qs);
    // The same in two bytes a character, as some programs save it.
    Recordset wide;
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    wide.OpenXml(encoder.encode(QString::fromUtf8(rs.ToXml())), u"x"_qs);
    EXPECT_EQ(Dump(wide), Dump(rs));
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.FieldAt(0).Attributes, 0);
    EXPECT_EQ(rs.FieldAt(1).Type, DataType::LongVarWChar);
    EXPECT_EQ(rs.FieldAt(1).Attributes, FieldIsNullable);
    EXPECT_EQ(rs.Text(u"ship name"), u"a\n&"_qs);
    EXPECT_EQ(rs.Value(u"when").toDateTime().date(), QDate(1996, 7, 4));
    EXPECT_EQ(rs.TextAt(1, 3), u"False"_qs);
    EXPECT_TRUE(rs.IsNullAt(1, 1));
}

/// A row of more values than the reader could take in.
QByteArray Row(int values) {
    QByteArray row = "<z:row";
    for (int value = 0; value < values; ++value) row += " n" + QByteArray::number(value) + "='1'";
    return row + "/>";
}

TEST(PersistXml, RefusesWhatIsNotOfTheForm) {
    const QByteArray good = Column("A", "dt:type='i2'") + Column("B", "dt:type='string' dt:maxLength='3'");
    QByteArray bomb = "<!DOCTYPE xml [<!ENTITY a 'aaaaaaaaaa'>";
    for (char entity = 'b'; entity < 'k'; ++entity) {
        bomb += QByteArray("<!ENTITY ") + entity + " '";
        for (int copy = 0; copy < 10; ++copy) bomb += QByteArray("&") + char(entity - 1) + ";";
        bomb += "'>";
    }
    QByteArray many;
    for (int column = 0; column < 33'000; ++column)
        many += Column("n" + QByteArray::number(column), "dt:type='i2'");
    QByteArray wide;
    for (int column = 0; column < 30'000; ++column)
        wide += Column("n" + QByteArray::number(column), "dt:type='i2'");
    const struct {
        const char* What;
        QByteArray Xml;
        int Line;
    } cases[] = {
        {"nothing", "", 1},
        {"no XML", "Provider=SQLite", 1},
        {"foreign XML", "<html><body/></html>", 1},
        {"foreign root of that name", "<xml><other/></xml>", 1},
        {"bytes", QByteArray("\x01\x0F\0\xFF", 4), 1},
        {"unknown type", Document(Column("A", "dt:type='complex'"), {}), 6},
        {"no type", Document("<s:AttributeType name='A'/>", {}), 6},
        {"size that is none", Document(Column("A", "dt:type='i2' dt:maxLength='-1'"), {}), 6},
        {"flag that is none", Document(Column("A", "dt:type='i2' rs:maybenull='perhaps'"), {}), 6},
        {"column twice", Document(good + Column("A", "dt:type='i2'"), {}), 8},
        {"column without name", Document("<s:AttributeType rs:name='x'/>", {}), 6},
        {"column out of place", Document("<s:AttributeType name='A' rs:number='2'/>", {}), 6},
        {"value of no column", Document(good, "<z:row C='1'/>"), 12},
        {"value of a wrong type", Document(good, "<z:row A='1'/>\n<z:row A='one'/>"), 13},
        {"value too long", Document(good, "<z:row B='four'/>"), 12},
        {"odd bytes", Document(Column("A", "dt:type='bin.hex'"), "<z:row A='0'/>"), 11},
        {"kind unknown", Document(Column("A", "dt:type='string' rs:dbtype='variant'"), "<z:row A='999:1'/>"),
         11},
        {"text among rows", Document(good, "stray"), 12},
        {"row inside a row", Document(good, "<z:row><z:row/></z:row>"), 12},
        {"changes to be undone", Document(good, "<rs:delete><z:row/></rs:delete>"), 12},
        {"row of another namespace", Document(good, "<row A='1'/>"), 12},
        {"something behind the root", Document(good, {}) + "<xml/>", 14},
        {"entity bomb", bomb + "]>\n" + Document(good, "<z:row B='&j;'/>"), 1},
        {"external entity",
         "<!DOCTYPE xml [<!ENTITY e SYSTEM 'file:///etc/hostname'>]>\n" + Document(good, "<z:row B='&e;'/>"),
         1},
        {"undeclared entity", Document(good, "<z:row B='&e;'/>"), 12},
        {"columns without end", Document(many, {}), 32'774},
        {"rows that take all memory", Document(wide, QByteArray("<z:row n29999='1'/>").repeated(400)), -1},
        {"elements without end", QByteArray("<xml>").repeated(100'000), 1},
        {"a row of very many values", Document(wide, Row(80'000)), 30'010},
        {"a row without end", Document(good, "<z:row A='" + QByteArray(17 << 20, 'x') + "'/>"), 12},
        {"namespaces without end", "<xml" + QByteArray(" xmlns:a='b'").repeated(100) + "/>", 1},
        {"a comment in front of it", "<!-- <xml a='1' -->" + Document(good, Row(80'000)), 12},
        {"another encoding than it says", "<?xml version='1.0' encoding=\"UTF-16\"?>" + Document(good, {}),
         1},
    };
    for (const auto& row : cases) {
        Recordset rs;
        rs.Append(u"Mine"_qs, DataType::Integer);
        QString description;
        const int number = NumberOf([&] {
            try {
                rs.OpenXml(row.Xml, u"/q/Sales.zpb"_qs);
            } catch (const Error& error) {
                description = error.Description();
                throw;
            }
        });
        EXPECT_EQ(number, ErrorNumber::InvalidConnection) << row.What;
        EXPECT_FALSE(rs.IsOpen());
        EXPECT_EQ(rs.FieldIndex(u"Mine"), 0);
        if (row.Line < 0) continue;
        const QString begin = u"/q/Sales.zpb, line %1: "_qs.arg(row.Line);
        EXPECT_EQ(description.left(begin.size()).toStdString(), begin.toStdString()) << row.What;
    }
}

TEST(PersistXml, DamagedFilesNeverCrash) {
    Recordset rs;
    FillEverything(rs);
    const QByteArray xml = rs.ToXml();
    const qsizetype end = xml.lastIndexOf('>');
    for (qsizetype size = 0; size <= end; size += 1 + size / 97) {
        Recordset cut;
        EXPECT_EQ(NumberOf([&] { cut.OpenXml(xml.left(size), u"cut"_qs); }), ErrorNumber::InvalidConnection)
            << size;
    }
    QRandomGenerator random(1961);
    int refused = 0;
    constexpr int rounds = 1500;
    for (int round = 0; round < rounds; ++round) {
        QByteArray damaged = xml;
        for (int flips = random.bounded(1, 4); flips > 0; --flips) {
            char& byte = damaged[random.bounded(damaged.size())];
            byte = static_cast<char>(round % 2 ? byte ^ (1 << random.bounded(8)) : random.bounded(256));
        }
        Recordset flipped;
        const int number = NumberOf([&] { flipped.OpenXml(damaged, u"flipped"_qs); });
        EXPECT_TRUE(number == 0 || number == ErrorNumber::InvalidConnection) << number;
        EXPECT_EQ(flipped.IsOpen(), number == 0);
        refused += number != 0;
    }
    EXPECT_GT(refused, rounds / 4);
}

// --- Files
// -----------------------------------------------------------------------------------------------------------

TEST(PersistXml, FilesAreReplacedAsAWhole) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Sales rsWhere.dat"_qs);
    Recordset rs;
    FillEverything(rs);
    rs.Save(path, Recordset::FileAccess::OwnerOnly);
    EXPECT_EQ(QFileInfo(path).permissions() & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
    Recordset again;
    again.OpenFile(path);
    EXPECT_EQ(Dump(again), Dump(rs));
    EXPECT_EQ(NumberOf([&] { again.OpenFile(path); }), ErrorNumber::ObjectOpen);

    rs.DeleteAll();
    rs.Save(path);
    again.Close();
    again.OpenFile(path);
    EXPECT_EQ(again.RecordCount(), 0);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{u"Sales rsWhere.dat"_qs});
}

TEST(PersistXml, AFaultOfTheDiskLosesNothing) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"rows.dat"_qs);
    Recordset rs;
    FillEverything(rs);
    rs.Save(path);
    rs.DeleteAll();
    zephrin::test::TryFaultsOfTheDisk<Error>(path, [&] { rs.Save(path); });
}

TEST(PersistXml, FileFailures) {
    const QTemporaryDir folder;
    Recordset rs;
    rs.Append(u"x"_qs, DataType::Integer);
    const QString missing = folder.filePath(u"no/where.dat"_qs);
    EXPECT_EQ(NumberOf([&] { rs.Save(missing); }), ErrorNumber::ObjectClosed);
    EXPECT_EQ(NumberOf([&] { rs.OpenFile(missing); }), ErrorNumber::InvalidConnection);
    EXPECT_EQ(NumberOf([&] { rs.OpenFile(folder.path()); }), ErrorNumber::InvalidConnection);
    EXPECT_TRUE(DescriptionOf([&] { rs.OpenFile(missing); }).startsWith(missing));
    rs.Open();
    EXPECT_EQ(NumberOf([&] { rs.Save(missing); }), ErrorNumber::WriteFile);
    EXPECT_EQ(NumberOf([&] { rs.Save(folder.path()); }), ErrorNumber::WriteFile);
}

TEST(PersistXml, ValueThatItsColumnCannotHoldIsNotSaved) {
    test::FakeServer server;
    server.Rows.Fields = {Field{u"Amount"_qs, DataType::Integer}};
    server.Rows.Count = 2;
    server.Rows.Cell = [](qint64 row, int) { return row ? QVariant(u"a lot"_qs) : QVariant(1); };
    Connection connection(test::FakeProviders(server));
    connection.Open(u"Provider=Fake"_qs);
    const RecordsetPtr rs = connection.Execute(u"x"_qs);
    EXPECT_EQ(NumberOf([&] { rs->ToXml(); }), ErrorNumber::ValueRefused);
}

}  // namespace
}  // namespace zephrin::ado
