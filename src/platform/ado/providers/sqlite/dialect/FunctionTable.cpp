#include "platform/ado/providers/sqlite/dialect/FunctionTable.h"

#include <algorithm>
#include <array>

namespace zephrin::ado::providers::sqlite {

namespace {

// Columns: name, on servers, on files, fewest and most arguments, what it gives, what it takes, what runs it.
constexpr std::array functions{
    FunctionInfo{"LEFT", true, true, 2, 2, Gives::Text, "ti", "zx_left"},
    FunctionInfo{"RIGHT", true, true, 2, 2, Gives::Text, "ti", "zx_right"},
    FunctionInfo{"LTRIM", true, true, 1, 1, Gives::Text, "t", "zx_ltrim"},
    FunctionInfo{"RTRIM", true, true, 1, 1, Gives::Text, "t", "zx_rtrim"},
    FunctionInfo{"TRIM", true, true, 1, 1, Gives::Text, "t", "zx_trim"},
    FunctionInfo{"LEN", true, true, 1, 1, Gives::Integer, "t", "zx_len"},
    FunctionInfo{"REPLACE", true, true, 3, 3, Gives::Text, "t", "zx_replace"},
    FunctionInfo{"SPACE", true, true, 1, 1, Gives::Text, "i", "zx_space"},
    FunctionInfo{"UPPER", true, false, 1, 1, Gives::Text, "t", "zx_upper"},
    FunctionInfo{"LOWER", true, false, 1, 1, Gives::Text, "t", "zx_lower"},
    FunctionInfo{"UCASE", false, true, 1, 1, Gives::Text, "t", "zx_upper"},
    FunctionInfo{"LCASE", false, true, 1, 1, Gives::Text, "t", "zx_lower"},
    FunctionInfo{"SUBSTRING", true, false, 3, 3, Gives::Text, "tii", "zx_mid"},
    FunctionInfo{"MID", false, true, 2, 3, Gives::Text, "tii", "zx_mid"},
    FunctionInfo{"CHARINDEX", true, false, 2, 3, Gives::Integer, "tti", "zx_charindex"},
    FunctionInfo{"INSTR", false, true, 2, 4, Gives::Integer, "t", "zx_instr"},
    FunctionInfo{"REPLICATE", true, false, 2, 2, Gives::Text, "ti", "zx_replicate"},
    FunctionInfo{"REVERSE", true, false, 1, 1, Gives::Text, "t", "zx_reverse"},
    FunctionInfo{"STRREVERSE", false, true, 1, 1, Gives::Text, "t", "zx_reverse"},
    FunctionInfo{"CHAR", true, true, 1, 1, Gives::Text, "i", "zx_char"},
    FunctionInfo{"NCHAR", true, false, 1, 1, Gives::Text, "i", "zx_char"},
    FunctionInfo{"CHR", false, true, 1, 1, Gives::Text, "i", "zx_char"},
    FunctionInfo{"ASCII", true, false, 1, 1, Gives::Integer, "t", "zx_asc"},
    FunctionInfo{"UNICODE", true, false, 1, 1, Gives::Integer, "t", "zx_asc"},
    FunctionInfo{"ASC", false, true, 1, 1, Gives::Integer, "t", "zx_asc"},
    FunctionInfo{"FORMAT", true, false, 2, 3, Gives::Text, "ft", "zx_format"},
    FunctionInfo{"FORMAT", false, true, 1, 2, Gives::Text, "ft", "zx_format"},
    FunctionInfo{"CONCAT", true, false, 2, 254, Gives::Text, "t", "zx_concat"},

    FunctionInfo{"DAY", true, true, 1, 1, Gives::Integer, "d", "zx_day"},
    FunctionInfo{"MONTH", true, true, 1, 1, Gives::Integer, "d", "zx_month"},
    FunctionInfo{"YEAR", true, true, 1, 1, Gives::Integer, "d", "zx_year"},
    FunctionInfo{"HOUR", false, true, 1, 1, Gives::Integer, "d", "zx_hour"},
    FunctionInfo{"MINUTE", false, true, 1, 1, Gives::Integer, "d", "zx_minute"},
    FunctionInfo{"SECOND", false, true, 1, 1, Gives::Integer, "d", "zx_second"},
    FunctionInfo{"WEEKDAY", false, true, 1, 2, Gives::Integer, "di", "zx_weekday"},
    FunctionInfo{"GETDATE", true, false, 0, 0, Gives::Date, "v", "zx_now"},
    FunctionInfo{"NOW", false, true, 0, 0, Gives::Date, "v", "zx_now"},
    FunctionInfo{"DATE", false, true, 0, 0, Gives::Date, "v", "zx_today"},
    FunctionInfo{"TIME", false, true, 0, 0, Gives::Date, "v", "zx_time"},
    FunctionInfo{"DATEPART", true, true, 2, 2, Gives::Integer, "kd", "zx_datepart"},
    FunctionInfo{"DATENAME", true, false, 2, 2, Gives::Text, "kd", "zx_datename"},
    FunctionInfo{"DATEADD", true, true, 3, 3, Gives::AsDate, "knd", "zx_dateadd"},
    FunctionInfo{"DATEDIFF", true, true, 3, 3, Gives::Integer, "kdd", "zx_datediff"},
    FunctionInfo{"DATESERIAL", false, true, 3, 3, Gives::Date, "i", "zx_dateserial"},
    FunctionInfo{"DATEVALUE", false, true, 1, 1, Gives::Date, "d", "zx_datevalue"},
    FunctionInfo{"CDATE", false, true, 1, 1, Gives::Date, "d", "zx_date"},
    FunctionInfo{"ISDATE", true, false, 1, 1, Gives::Integer, "v", "zx_isdate"},
    FunctionInfo{"ISDATE", false, true, 1, 1, Gives::Truth, "v", "zx_isdate"},

    FunctionInfo{"ABS", true, true, 1, 1, Gives::AsNumber, "x", "zx_abs"},
    FunctionInfo{"COS", true, true, 1, 1, Gives::Double, "n", "zx_cos"},
    FunctionInfo{"SIN", true, true, 1, 1, Gives::Double, "n", "zx_sin"},
    FunctionInfo{"TAN", true, true, 1, 1, Gives::Double, "n", "zx_tan"},
    FunctionInfo{"EXP", true, true, 1, 1, Gives::Double, "n", "zx_exp"},
    FunctionInfo{"LOG", true, true, 1, 2, Gives::Double, "n", "zx_log"},
    FunctionInfo{"LOG10", true, false, 1, 1, Gives::Double, "n", "zx_log10"},
    FunctionInfo{"ATAN", true, false, 1, 1, Gives::Double, "n", "zx_atn"},
    FunctionInfo{"ATN", false, true, 1, 1, Gives::Double, "n", "zx_atn"},
    FunctionInfo{"SQRT", true, false, 1, 1, Gives::Double, "n", "zx_sqr"},
    FunctionInfo{"SQR", false, true, 1, 1, Gives::Double, "n", "zx_sqr"},
    FunctionInfo{"SIGN", true, false, 1, 1, Gives::AsNumber, "x", "zx_sgn"},
    FunctionInfo{"SGN", false, true, 1, 1, Gives::Integer, "x", "zx_sgn"},
    FunctionInfo{"FIX", false, true, 1, 1, Gives::AsWhole, "x", "zx_fix"},
    FunctionInfo{"INT", false, true, 1, 1, Gives::AsWhole, "x", "zx_floor"},
    FunctionInfo{"FLOOR", true, false, 1, 1, Gives::AsWhole, "x", "zx_floor"},
    FunctionInfo{"CEILING", true, false, 1, 1, Gives::AsWhole, "x", "zx_ceiling"},
    FunctionInfo{"ROUND", true, false, 2, 3, Gives::AsNumber, "xii", "zx_round"},
    FunctionInfo{"ROUND", false, true, 1, 2, Gives::AsNumber, "xi", "zx_round"},
    FunctionInfo{"POWER", true, false, 2, 2, Gives::AsPower, "xn", "zx_power"},
    FunctionInfo{"RND", false, true, 0, 1, Gives::Double, "n", "zx_rnd"},
    FunctionInfo{"RAND", true, false, 0, 1, Gives::Double, "n", "zx_rnd"},

    FunctionInfo{"IIF", true, true, 3, 3, Gives::AsBranches, "cv", "iif"},
    FunctionInfo{"ISNULL", true, false, 2, 2, Gives::AsFirst, "v", "ifnull"},
    FunctionInfo{"ISNULL", false, true, 1, 1, Gives::Truth, "v", "zx_isnull"},
    FunctionInfo{"NZ", false, true, 1, 2, Gives::AsAll, "v", "coalesce"},
    FunctionInfo{"COALESCE", true, true, 2, 127, Gives::AsAll, "v", "coalesce"},
    FunctionInfo{"NULLIF", true, false, 2, 2, Gives::AsAll, "v", "nullif"},
    FunctionInfo{"ISNUMERIC", true, false, 1, 1, Gives::Integer, "t", "zx_isnumeric"},
    FunctionInfo{"ISNUMERIC", false, true, 1, 1, Gives::Truth, "t", "zx_isnumeric"},
    FunctionInfo{"CSTR", false, true, 1, 1, Gives::Text, "t", "zx_cstr"},
    FunctionInfo{"VAL", false, true, 1, 1, Gives::Double, "t", "zx_val"},
    FunctionInfo{"CINT", false, true, 1, 1, Gives::Integer, "n", "zx_clng"},
    FunctionInfo{"CLNG", false, true, 1, 1, Gives::Integer, "n", "zx_clng"},
    FunctionInfo{"CDBL", false, true, 1, 1, Gives::Double, "n", "zx_cdbl"},
};

constexpr std::array aggregates{
    QLatin1StringView("SUM"),    QLatin1StringView("COUNT"), QLatin1StringView("AVG"),
    QLatin1StringView("MIN"),    QLatin1StringView("MAX"),   QLatin1StringView("STDEV"),
    QLatin1StringView("STDEVP"), QLatin1StringView("VAR"),   QLatin1StringView("VARP"),
};

}  // namespace

const FunctionInfo* FindFunction(const QString& name, Dialect dialect) {
    const auto found = std::find_if(functions.begin(), functions.end(), [&](const FunctionInfo& info) {
        return (IsFileDialect(dialect) ? info.OnFile : info.OnServer) && name == QLatin1StringView(info.Name);
    });
    return found == functions.end() ? nullptr : &*found;
}

bool IsAggregateName(const QString& name, Dialect dialect) {
    if (std::find(aggregates.begin(), aggregates.end(), name) != aggregates.end()) return true;
    if (IsFileDialect(dialect))
        return name == QLatin1StringView("FIRST") || name == QLatin1StringView("LAST");
    return name == QLatin1StringView("COUNT_BIG");
}

}  // namespace zephrin::ado::providers::sqlite
