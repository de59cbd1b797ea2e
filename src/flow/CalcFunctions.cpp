#include "flow/CalcFunctions.h"

#include "runstate/Dialect.h"

namespace zephrin {

namespace {

QStringList ServerFunctions(CalcFunctionType type) {
    switch (type) {
        case CalcFunctionType::Text:
            return {QStringLiteral("LEFT(<<string,n>>)"), QStringLiteral("RIGHT(<<string,n>>)"),
                    QStringLiteral("LTRIM(<<string>>)"), QStringLiteral("RTRIM(<<string>>)"),
                    QStringLiteral("LEN(<<string>>)")};
        case CalcFunctionType::Date:
            // The blank behind CAST belongs to it: what is inserted next must not touch it.
            return {QStringLiteral("DAY(<<number>>)"),
                    QStringLiteral("MONTH(<<number>>)"),
                    QStringLiteral("YEAR(<<number>>)"),
                    QStringLiteral("GETDATE()"),
                    QStringLiteral("CAST(expression AS data_type) "),
                    QStringLiteral("CONVERT(data_type, expression, style)")};
        case CalcFunctionType::Math:
            return {QStringLiteral("ABS(<<number>>)"), QStringLiteral("COS(<<number>>)"),
                    QStringLiteral("EXP(<<number>>)"), QStringLiteral("LOG(<<number>>)"),
                    QStringLiteral("SIN(<<angle>>)"),  QStringLiteral("TAN(<<number>>)")};
        case CalcFunctionType::Logical:
            return {QStringLiteral("CASE"), QStringLiteral("WHEN"), QStringLiteral("THEN"),
                    QStringLiteral("ELSE"), QStringLiteral("END"),  QStringLiteral("AND"),
                    QStringLiteral("OR"),   QStringLiteral("NOT"),  QStringLiteral("IS"),
                    QStringLiteral("AS"),   QStringLiteral("NULL"), QStringLiteral("CHAR(<<number>>)")};
        case CalcFunctionType::Aggregate:
            return {QStringLiteral("GROUP BY"), QStringLiteral("SUM"), QStringLiteral("AVG"),
                    QStringLiteral("MIN"),      QStringLiteral("MAX"), QStringLiteral("COUNT"),
                    QStringLiteral("STDEV"),    QStringLiteral("VAR")};
    }
    return {};
}

QStringList FileFunctions(CalcFunctionType type) {
    switch (type) {
        case CalcFunctionType::Text:
            return {QStringLiteral("LEFT(<<string,n>>)"),
                    QStringLiteral("RIGHT(<<string,n>>)"),
                    QStringLiteral("MID(<<string,start n,length n>>)"),
                    QStringLiteral("TRIM(<<string>>)"),
                    QStringLiteral("LTRIM(<<string>>)"),
                    QStringLiteral("RTRIM(<<string>>)"),
                    QStringLiteral("LEN(<<string>>)"),
                    QStringLiteral("UCASE(<<string>>)"),
                    QStringLiteral("LCASE(<<string>>)")};
        case CalcFunctionType::Date:
            return {QStringLiteral("MINUTE(<<number>>)"),
                    QStringLiteral("HOUR(<<number>>)"),
                    QStringLiteral("DAY(<<number>>)"),
                    QStringLiteral("MONTH(<<number>>)"),
                    QStringLiteral("YEAR(<<number>>)"),
                    QStringLiteral("TIME()"),
                    QStringLiteral("NOW()"),
                    QStringLiteral("WEEKDAY()")};
        case CalcFunctionType::Math:
            return {QStringLiteral("ABS(<<number>>)"), QStringLiteral("ATN(<<number>>)"),
                    QStringLiteral("COS(<<number>>)"), QStringLiteral("EXP(<<number>>)"),
                    QStringLiteral("FIX(<<number>>)"), QStringLiteral("INT(<<number>>)"),
                    QStringLiteral("LOG(<<number>>)"), QStringLiteral("RND(<<number>>)"),
                    QStringLiteral("SGN(<<number>>)"), QStringLiteral("SIN(<<angle>>)"),
                    QStringLiteral("SQR(<<number>>)"), QStringLiteral("TAN(<<number>>)")};
        case CalcFunctionType::Logical:
            return {QStringLiteral("IIF(<<expr,true part,false part>>)"), QStringLiteral("AND"),
                    QStringLiteral("OR"), QStringLiteral("NOT")};
        case CalcFunctionType::Aggregate:
            return ServerFunctions(type) << QStringLiteral("FIRST") << QStringLiteral("LAST");
    }
    return {};
}

}  // namespace

QStringList CalcFunctions(const QString& databaseType, CalcFunctionType type) {
    if (IsFileDialect(databaseType)) return FileFunctions(type);
    if (IsServerDialect(databaseType)) return ServerFunctions(type);
    return {};
}

QStringList CalcOperators() {
    return {QStringLiteral(","), QStringLiteral("+"), QStringLiteral("-"), QStringLiteral("/"),
            QStringLiteral("*"), QStringLiteral("&"), QStringLiteral("="), QStringLiteral(">"),
            QStringLiteral("<"), QStringLiteral("("), QStringLiteral(")")};
}

}  // namespace zephrin
