#include "TestDatabase.h"
#include "platform/ado/DecimalDigits.h"

#include <QMetaType>

#include <gtest/gtest.h>
#include <random>

namespace zephrin::ado::providers::sqlite::test {
namespace {

/// A row of plain values, one of extremes, one of Nulls, in columns of all types.
constexpr const char* TypesScript = R"sql(
CREATE TABLE V (Id int, I int, S smallint, T tinyint, G bigint, B bit, D decimal(9,2), W decimal(30,8), M money, F float,
 R real, X varchar(20), U nvarchar(20), C char(6), K datetime, Y date, N varchar(20), P varbinary(8), Q);
INSERT INTO V VALUES (1,7,3,2,5000000000,1,2.50,'123456789012345678.12345678',12.3456,1.5,2.5,'abc','Zoë','12    ',
 '2003-01-31 12:00:00','2003-01-31','42',x'0102',5),
 (2,2147483647,-32768,255,9223372036854775807,0,-9999999.99,'-1.5',99999999.9999,1e300,-0.25,'','','',
 '9999-12-31 23:59:59','0001-01-01','-1.5',x'','a'),
 (3,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
)sql";

/// Expressions by chance, out of what a dialect has words for.
class Expressions {
 public:
    Expressions(bool isFile, unsigned seed) : file(isFile), random(seed) {}

    QString Statement() {
        static const QStringList aggregates{u"SUM"_qs, u"AVG"_qs,   u"MIN"_qs,
                                            u"MAX"_qs, u"COUNT"_qs, u"STDEV"_qs};
        const int kind = Below(10);
        if (kind == 0) return QStringLiteral("SELECT %1(%2) FROM V").arg(OneOf(aggregates), Value(2));
        if (kind == 1)
            return QStringLiteral("SELECT %1 FROM V UNION SELECT %2 FROM V").arg(Value(2), Value(2));
        if (kind == 2) return QStringLiteral("SELECT I FROM V WHERE %1").arg(Condition(3));
        if (kind == 3)
            return QStringLiteral("SELECT q.A FROM (SELECT %1 AS A FROM V) q ORDER BY 1").arg(Value(3));
        return QStringLiteral("SELECT %1 FROM V").arg(Value(3));
    }

 private:
    int Below(int limit) { return int(random() % unsigned(limit)); }
    const QString& OneOf(const QStringList& words) { return words[Below(int(words.size()))]; }

    QString Leaf() {
        static const QStringList columns{u"I"_qs, u"S"_qs, u"T"_qs, u"G"_qs, u"B"_qs, u"D"_qs,
                                         u"W"_qs, u"M"_qs, u"F"_qs, u"R"_qs, u"X"_qs, u"U"_qs,
                                         u"C"_qs, u"K"_qs, u"Y"_qs, u"N"_qs, u"P"_qs, u"Q"_qs};
        static const QStringList literals{u"0"_qs,     u"3"_qs,          u"-7"_qs,           u"2.5"_qs,
                                          u"0.125"_qs, u"'5'"_qs,        u"'x'"_qs,          u"''"_qs,
                                          u"NULL"_qs,  u"2147483648"_qs, u"'2003-01-31'"_qs, u"1e3"_qs};
        if (file && Below(12) == 0) return QStringLiteral("#1/31/2003#");
        return Below(3) == 0 ? OneOf(literals) : OneOf(columns);
    }

    QString Value(int depth) {
        if (depth <= 0) return Leaf();
        static const QStringList server{u"+"_qs, u"-"_qs, u"*"_qs, u"/"_qs,
                                        u"%"_qs, u"&"_qs, u"|"_qs, u"^"_qs};
        static const QStringList files{u"+"_qs,  u"-"_qs,   u"*"_qs, u"/"_qs,
                                       u"\\"_qs, u"MOD"_qs, u"&"_qs, u"^"_qs};
        switch (Below(8)) {
            case 0:
                return Leaf();
            case 1:
                return QStringLiteral("-(%1)").arg(Value(depth - 1));
            case 2:
            case 3:
                return Call(depth);
            case 4:
                return file ? QStringLiteral("IIF(%1, %2, %3)")
                                  .arg(Condition(depth - 1), Value(depth - 1), Value(depth - 1))
                            : QStringLiteral("CASE WHEN %1 THEN %2 ELSE %3 END")
                                  .arg(Condition(depth - 1), Value(depth - 1), Value(depth - 1));
            default:
                return QStringLiteral("(%1 %2 %3)")
                    .arg(Value(depth - 1), OneOf(file ? files : server), Value(depth - 1));
        }
    }

    QString Condition(int depth) {
        static const QStringList symbols{u"="_qs, u"<>"_qs, u"<"_qs, u">="_qs};
        switch (Below(5)) {
            case 0:
                return QStringLiteral("%1 IS NULL").arg(Value(depth - 1));
            case 1:
                return QStringLiteral("%1 BETWEEN %2 AND %3").arg(Value(0), Value(depth - 1), Value(0));
            case 2:
                return QStringLiteral("%1 IN (%2, %3)").arg(Value(0), Value(0), Value(0));
            default:
                return QStringLiteral("%1 %2 %3").arg(Value(depth - 1), OneOf(symbols), Value(depth - 1));
        }
    }

    QString Call(int depth) {
        static const QStringList types{
            u"int"_qs,   u"tinyint"_qs, u"bigint"_qs, u"decimal(9,2)"_qs, u"decimal(38,10)"_qs,
            u"money"_qs, u"float"_qs,   u"bit"_qs,    u"varchar(30)"_qs,  u"datetime"_qs,
            u"date"_qs};
        static const QStringList server{
            u"ABS(%1)"_qs,      u"SIGN(%1)"_qs,       u"FLOOR(%1)"_qs,          u"ROUND(%1, 1)"_qs,
            u"LEN(%1)"_qs,      u"LEFT(%1, 2)"_qs,    u"YEAR(%1)"_qs,           u"COS(%1)"_qs,
            u"LOG(%1)"_qs,      u"ISNULL(%1, %2)"_qs, u"COALESCE(%1, %2)"_qs,   u"NULLIF(%1, %2)"_qs,
            u"POWER(%1, 2)"_qs, u"UPPER(%1)"_qs,      u"DATEADD(day, 1, %1)"_qs};
        static const QStringList files{u"ABS(%1)"_qs,
                                       u"SGN(%1)"_qs,
                                       u"INT(%1)"_qs,
                                       u"FIX(%1)"_qs,
                                       u"ROUND(%1, 1)"_qs,
                                       u"LEN(%1)"_qs,
                                       u"LEFT(%1, 2)"_qs,
                                       u"YEAR(%1)"_qs,
                                       u"COS(%1)"_qs,
                                       u"LOG(%1)"_qs,
                                       u"NZ(%1, %2)"_qs,
                                       u"NZ(%1)"_qs,
                                       u"CSTR(%1)"_qs,
                                       u"CINT(%1)"_qs,
                                       u"CDBL(%1)"_qs,
                                       u"ISNULL(%1)"_qs,
                                       u"DATEADD('d', 1, %1)"_qs};
        if (Below(3) == 0) return QStringLiteral("CAST(%1 AS %2)").arg(Value(depth - 1), OneOf(types));
        QString call = OneOf(file ? files : server);
        const QString first = Value(depth - 1);
        return call.contains(u"%2") ? call.arg(first, Value(0)) : call.arg(first);
    }

    bool file;
    std::mt19937 random;
};

/// A letter for each kind of type; "-" for a refusal.
QChar Letter(const QString& types) {
    switch (types.startsWith(u'!') ? 0 : types.toInt()) {
        case 0:
            return u'-';
        case 3:
            return u'i';
        case 131:
            return u'n';
        case 6:
            return u'm';
        case 5:
            return u'f';
        case 11:
            return u'b';
        case 7:
        case 135:
            return u'd';
        case 133:
            return u'y';
        case 204:
            return u'v';
        default:
            return u't';
    }
}

/// What each pair of types makes, the left one going down and the right one across: whole number, decimal,
/// money, float, truth, text, date and time, day, bytes. The same table stands in docs/databases.md.
TEST(Types, TheMatrix) {
    const TestDatabase database(
        "CREATE TABLE V (I int, D decimal(9,2), M money, F float, B bit, X varchar(20), K datetime, Y date, "
        "P "
        "varbinary(8)); INSERT INTO V DEFAULT VALUES;");
    const QStringList columns{u"I"_qs, u"D"_qs, u"M"_qs, u"F"_qs, u"B"_qs,
                              u"X"_qs, u"K"_qs, u"Y"_qs, u"P"_qs};
    const QStringList types{u"int"_qs,        u"decimal(9,2)"_qs, u"money"_qs, u"float"_qs,       u"bit"_qs,
                            u"varchar(9)"_qs, u"datetime"_qs,     u"date"_qs,  u"varbinary(8)"_qs};
    const struct {
        const char* Dialect;
        const char* Form;
        const char* Makes;
    } rows[] = {
        {"SQL Server", "%1 + %2",
         "inmfiid-- nnnfnnd-- mnmfmmd-- ffffffd-- inmf--d-- inmf-td-- ddddddd-- --------- ---------"},
        {"SQL Server", "%1 - %2",
         "inmfiid-- nnnfnnd-- mnmfmmd-- ffffffd-- inmf--d-- inmf--d-- ddddddd-- --------- ---------"},
        {"SQL Server", "%1 * %2",
         "inmfii--- nnnfnn--- mnmfmm--- ffffff--- inmf----- inmf----- --------- --------- ---------"},
        {"SQL Server", "%1 / %2",
         "inmfii--- nnnfnn--- mnmfmm--- ffffff--- inmf----- inmf----- --------- --------- ---------"},
        {"SQL Server", "%1 % %2",
         "inm-ii--- nnn-nn--- mnm-mm--- --------- inm------ inm------ --------- --------- ---------"},
        {"SQL Server", "%1 & %2",
         "i---i---- --------- --------- --------- i---b---- --------- --------- --------- ---------"},
        {"SQL Server", "%1 | %2",
         "i---i---- --------- --------- --------- i---b---- --------- --------- --------- ---------"},
        {"SQL Server", "%1 ^ %2",
         "i---i---- --------- --------- --------- i---b---- --------- --------- --------- ---------"},
        {"SQL Server", "CASE WHEN 1 = 1 THEN %1 ELSE %2 END",
         "inmfiid-- nnnfnnd-- mnmfmmd-- ffffffd-- inmfbbd-- inmfbtdy- dddddddd- -----ydy- --------v"},
        {"SQL Server", "CASE WHEN %1 = %2 THEN 1 END",
         "iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiiii- iiiiiiii- -----iii- --------i"},
        {"SQL Server", "CASE WHEN %1 > %2 THEN 1 END",
         "iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiiii- iiiiiiii- -----iii- --------i"},
        {"SQL Server", "CASE WHEN %1 IN (%2) THEN 1 END",
         "iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiii-- iiiiiiii- iiiiiiii- -----iii- --------i"},
        {"SQL Server", "CAST(%1 AS %2)",
         "inmfbtd-- inmfbtd-- inmfbtd-- inmfbtd-- inmfbtd-- inmfbtdy- inmfbtdy- -----tdy- --------v"},
        {"SQL Server", "SUM(%1)", "inmf-----"},
        {"SQL Server", "AVG(%1)", "inmf-----"},
        {"SQL Server", "STDEV(%1)", "ffff-----"},
        {"SQL Server", "MIN(%1)", "inmf-tdyv"},
        {"SQL Server", "COUNT(%1)", "iiiiiiiii"},
        {"SQL Server", "-%1", "inmf-----"},
        {"SQL Server", "ABS(%1)", "inmfff---"},
        {"SQL Server", "FLOOR(%1)", "inmfff---"},
        {"SQL Server", "COS(%1)", "ffffff---"},
        {"SQL Server", "LEN(%1)", "iiiiiiii-"},
        {"SQL Server", "YEAR(%1)", "iiiiiiii-"},
        {"MS Access", "%1 + %2",
         "inmfifdd- nnnfnfdd- mnmmmmdd- ffmfffdd- inmfifdd- ffmfftdd- dddddddd- dddddddd- ---------"},
        {"MS Access", "%1 - %2",
         "inmfifdd- nnnfnfdd- mnmmmmdd- ffmfffdd- inmfifdd- ffmfffdd- ddddddff- ddddddff- ---------"},
        {"MS Access", "%1 * %2",
         "inmfifff- nnnfnfff- mnmfmfff- ffffffff- inmfifff- ffffffff- ffffffff- ffffffff- ---------"},
        {"MS Access", "%1 / %2",
         "fnffffff- nnnfnfff- fnffffff- ffffffff- fnffffff- ffffffff- ffffffff- ffffffff- ---------"},
        {"MS Access", "%1 \\ %2",
         "iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- ---------"},
        {"MS Access", "%1 MOD %2",
         "iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- iiiiiiii- ---------"},
        {"MS Access", "%1 ^ %2",
         "ffffffff- ffffffff- ffffffff- ffffffff- ffffffff- ffffffff- ffffffff- ffffffff- ---------"},
        {"MS Access", "%1 & %2",
         "tttttttt- tttttttt- tttttttt- tttttttt- tttttttt- tttttttt- tttttttt- tttttttt- ---------"},
        {"MS Access", "IIF(1 = 1, %1, %2)",
         "inmfitdd- nnnfntdd- mnmfmtdd- ffffftdd- inmfbtdd- tttttttt- dddddtdd- dddddtdd- --------v"},
        {"MS Access", "%1 = %2",
         "bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- --------b"},
        {"MS Access", "%1 > %2",
         "bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- bbbbbbbb- --------b"},
        {"MS Access", "CAST(%1 AS %2)",
         "inmfbtdd- inmfbtdd- inmfbtdd- inmfbtdd- inmfbtdd- inmfbtdd- inmfbtdd- inmfbtdd- --------v"},
        {"MS Access", "SUM(%1)", "fnmff-ff-"},
        {"MS Access", "AVG(%1)", "fnmff-ff-"},
        {"MS Access", "STDEV(%1)", "fffff-ff-"},
        {"MS Access", "MIN(%1)", "inmfbtddv"},
        {"MS Access", "COUNT(%1)", "iiiiiiiii"},
        {"MS Access", "-%1", "inmfifff-"},
        {"MS Access", "ABS(%1)", "inmfffff-"},
        {"MS Access", "INT(%1)", "inmfffdd-"},
        {"MS Access", "COS(%1)", "ffffffff-"},
        {"MS Access", "LEN(%1)", "iiiiiiii-"},
        {"MS Access", "YEAR(%1)", "iiiiiiii-"},
    };
    for (const auto& row : rows) {
        const auto connection = Connect(database, QLatin1StringView(row.Dialect));
        const QString form = QStringLiteral("SELECT %1 FROM V").arg(QLatin1StringView(row.Form));
        const QStringList& others = form.contains(u"CAST") ? types : columns;
        QString makes;
        for (const QString& left : form.contains(u"%2") ? columns : QStringList(QString())) {
            for (const QString& right : others)
                makes += Letter(
                    test::Types(*connection, left.isEmpty() ? form.arg(right) : form.arg(left, right)));
            makes += u' ';
        }
        EXPECT_EQ(makes.trimmed(), QLatin1StringView(row.Makes)) << row.Dialect << ": " << row.Form;
    }
}

/// What the help pages of the file dialects tell: numbers and dates in one another's place, and how they
/// round.
TEST(Types, FilesReckonAsDocumented) {
    const TestDatabase database(
        "CREATE TABLE V (K datetime, M currency, B yesno); INSERT INTO V VALUES ('2000-01-01 18:00:00', 2.5, "
        "-1), "
        "(NULL, NULL, 0);");
    const auto connection = Connect(database, QStringLiteral("MS Access"));
    const struct {
        const char* Expression;
        const char* Value;
    } rows[] = {
        {"Int(99.8), Int(-99.8), Int(-99.2), Fix(99.2), Fix(-99.8)", "99|-100|-100|99|-99"},
        {"Int(K), Fix(K + 0.5), Int(-8.4), Fix(-8.4)", "2000-01-01|2000-01-02|-9|-8"},
        {"CDbl(K), Abs(K), Sgn(K), Sqr(#1/8/1900#), CDbl(#12/30/1899#)", "36526.75|36526.75|1|3|0"},
        {"-K, K * 2, K / 2, K \\ 2, K MOD 7", "-36526.75|73053.5|18263.375|18263|1"},
        {"K + 1, K - 0.75, 1 + K, K - #12/31/1999#, K + '1'",
         "2000-01-02 18:00:00|2000-01-01|2000-01-02 18:00:00|1.75|2000-01-02 18:00:00"},
        {"SUM(K), AVG(K), MIN(K), SUM(B), SUM(M), AVG(M)",
         "36526.75|36526.75|2000-01-01 18:00:00|-1|2.50|2.50"},
        {"'34' + 6, '34' + '6', '7' * '2', 5 & 3, -'5', 2 ^ '3'", "40|346|14|53|-5|8"},
        {"19 MOD 6.7, 12 MOD 4.3, 12.6 MOD 5, 47.9 MOD 9.35", "5|0|3|3"},
        {"11 \\ 4, 9 \\ 3, 100 \\ 3, 67 \\ -3", "2|3|33|-22"},
        {"3 ^ 3 ^ 3, (-5) ^ 3, 10 / 4, 1 / 3", "19683|-125|2.5|0.333333333333333"},
        {"CInt(2345.5678), CInt(0.5), CInt(1.5), CLng(-2.5), Round(2.5), Round(0.125, 2)",
         "2346|0|2|-2|2|0.12"},
        {"Val('2457'), Val(' 2 45 7'), Val('24 and 57')", "2457|2457|24"},
        {"Weekday(#2/12/1969#), Year(#2/12/1969#), Hour(#4:35:17 PM#), Second(#4:35:17 PM#)", "4|1969|16|17"},
        {"DateAdd('m', 1, '31-Jan-95'), DateSerial(1969, 2, 12), DateValue('February 12, 1969')",
         "1995-02-28|1969-02-12|1969-02-12"},
        {"True + 1, B + 1, 'x' & B, 'x' & K, 'x' & M", "0|0|x-1|x1/1/2000 6:00:00 PM|x2.5"},
        {"M * 2, M + 0.5, M * 0.5, M / 2, M * M", "5.00|3.00|1.25|1.25|6.25"},
        {"IIf(B, K, 0), IIf(1 = 1, 5, 'x'), Nz(Null, 0)", "2000-01-01 18:00:00|5|0"},
        {"2147483647 + 1", "! Overflow.@7"},
        {"K * 'x'", "! Data type mismatch in criteria expression: 'x' is not a number.@11"},
        {"SUM('a' & K)", "! Data type mismatch in expression 'SUM('a' & K)'.@7"},
    };
    for (const auto& row : rows) {
        const QString expression = QString::fromUtf8(row.Expression);
        const bool all = expression.contains(u"SUM(") || expression.contains(u"AVG(");
        EXPECT_EQ(Answer(*connection, QStringLiteral("SELECT %1 FROM V%2")
                                          .arg(expression, all ? QString() : QStringLiteral(" WHERE B"))),
                  QString::fromUtf8(row.Value))
            << row.Expression;
    }
}

/// Whether a value is what a host expects of a column of the type.
bool IsOfType(const QVariant& value, DataType type) {
    const int id = value.typeId();
    switch (type) {
        case DataType::Boolean:
            return id == QMetaType::Bool;
        case DataType::SmallInt:
        case DataType::Integer:
        case DataType::UnsignedTinyInt:
        case DataType::BigInt:
            return id == QMetaType::Int || id == QMetaType::LongLong;
        case DataType::Single:
        case DataType::Double:
            return id == QMetaType::Double;
        case DataType::Currency:
        case DataType::Numeric:
            return id == QMetaType::QString && DecimalDigits::IsNumber(value.toString().toStdString());
        case DataType::Date:
        case DataType::DBTimeStamp:
            return id == QMetaType::QDateTime;
        case DataType::DBDate:
            return id == QMetaType::QDate;
        case DataType::VarBinary:
            return id == QMetaType::QByteArray;
        default:
            return id == QMetaType::QString;
    }
}

TEST(Types, AnAnswerIsOfItsTypeOrRefusedWhereItStands) {
    const TestDatabase database(TypesScript);
    for (const bool file : {false, true}) {
        const auto connection =
            Connect(database, file ? QStringLiteral("MS Access") : QStringLiteral("SQL Server"));
        const unsigned rounds = qEnvironmentVariableIntValue("ZEPHRIN_ROUNDS") > 0
                                    ? unsigned(qEnvironmentVariableIntValue("ZEPHRIN_ROUNDS"))
                                    : 1500U;
        int answered = 0;
        for (unsigned seed = 1; seed <= rounds; ++seed) {
            const QString statement = Expressions(file, seed).Statement();
            SCOPED_TRACE(QStringLiteral("%1 %2: %3")
                             .arg(file ? u"file"_qs : u"server"_qs)
                             .arg(seed)
                             .arg(statement)
                             .toStdString());
            try {
                const RecordsetPtr rows = connection->Execute(statement);
                ++answered;
                // A column without a declared type has whatever its rows have.
                if (statement.contains(u'Q')) continue;
                for (qint64 row = 0; row < rows->RecordCount(); ++row)
                    EXPECT_TRUE(rows->IsNullAt(row, 0) ||
                                IsOfType(rows->ValueAt(row, 0), rows->FieldAt(0).Type))
                        << int(rows->FieldAt(0).Type) << " has " << rows->TextAt(row, 0).toStdString();
            } catch (const Error& error) {
                EXPECT_TRUE(error.Position() >= 0 || statement.contains(u'Q'))
                    << error.Description().toStdString();
                EXPECT_LE(error.Position(), statement.size());
            }
        }
        EXPECT_GT(answered, int(rounds) / 5);
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
