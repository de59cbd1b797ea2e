#include "platform/ado/providers/sqlite/dialect/Keywords.h"

#include <QSet>

namespace zephrin::ado::providers::sqlite {

bool IsReserved(const QString& word) {
    static const QSet<QString> reserved{
        u"ALL"_qs,     u"ALTER"_qs,  u"AND"_qs,    u"ANY"_qs,      u"AS"_qs,        u"ASC"_qs,
        u"BETWEEN"_qs, u"BY"_qs,     u"CASE"_qs,   u"CAST"_qs,     u"CONVERT"_qs,   u"CREATE"_qs,
        u"CROSS"_qs,   u"DELETE"_qs, u"DESC"_qs,   u"DISTINCT"_qs, u"DROP"_qs,      u"ELSE"_qs,
        u"END"_qs,     u"EXCEPT"_qs, u"EXISTS"_qs, u"FROM"_qs,     u"FULL"_qs,      u"GROUP"_qs,
        u"HAVING"_qs,  u"IN"_qs,     u"INNER"_qs,  u"INSERT"_qs,   u"INTERSECT"_qs, u"INTO"_qs,
        u"IS"_qs,      u"JOIN"_qs,   u"LEFT"_qs,   u"LIKE"_qs,     u"NOT"_qs,       u"NULL"_qs,
        u"ON"_qs,      u"OR"_qs,     u"ORDER"_qs,  u"OUTER"_qs,    u"RIGHT"_qs,     u"SELECT"_qs,
        u"SET"_qs,     u"SOME"_qs,   u"THEN"_qs,   u"TOP"_qs,      u"UNION"_qs,     u"UPDATE"_qs,
        u"VALUES"_qs,  u"WHEN"_qs,   u"WHERE"_qs,  u"WITH"_qs,
    };
    return reserved.contains(word.toUpper());
}

}  // namespace zephrin::ado::providers::sqlite
