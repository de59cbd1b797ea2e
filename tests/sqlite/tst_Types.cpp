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
 R real, X varchar(20), U nvarchar(20), C char(6), K datetime, Y date, N varchar(20), P varbinary(8));
INSERT INTO V VALUES (1,7,3,2,5000000000,1,2.50,'123456789012345678.12345678',12.3456,1.5,2.5,'abc','Zoë','12    ',
 '2003-01-31 12:00:00','2003-01-31','42',x'0102'),
 (2,2147483647,-32768,255,9223372036854775807,0,-9999999.99,'-1.5',99999999.9999,1e300,-0.25,'','','',
 '9999-12-31 23:59:59','0001-01-01','-1.5',x''),
 (3,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL);
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
                                         u"C"_qs, u"K"_qs, u"Y"_qs, u"N"_qs, u"P"_qs};
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
                for (qint64 row = 0; row < rows->RecordCount(); ++row)
                    EXPECT_TRUE(rows->IsNullAt(row, 0) ||
                                IsOfType(rows->ValueAt(row, 0), rows->FieldAt(0).Type))
                        << int(rows->FieldAt(0).Type) << " has " << rows->TextAt(row, 0).toStdString();
            } catch (const Error& error) {
                EXPECT_GE(error.Position(), 0) << error.Description().toStdString();
                EXPECT_LE(error.Position(), statement.size());
            }
        }
        EXPECT_GT(answered, int(rounds) / 5);
    }
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
