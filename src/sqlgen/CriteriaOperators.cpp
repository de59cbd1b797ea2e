#include "sqlgen/CriteriaOperators.h"

#include <algorithm>
#include <iterator>

namespace zephrin {

namespace {

constexpr bool no = false;
constexpr bool yes = true;

QLatin1String operator""_w(const char* text, std::size_t length) {
    return QLatin1String(text, static_cast<int>(length));
}

// clang-format off
const CriteriaOperator operators[] = {
    // listed                  word              wildcard     distributes  OR
    {"="_w,                    "="_w,            no,  no,     no,          yes},
    {"<>"_w,                   "<>"_w,           no,  no,     yes,         no},
    {">"_w,                    ">"_w,            no,  no,     yes,         no},
    {">="_w,                   ">="_w,           no,  no,     yes,         no},
    {"<"_w,                    "<"_w,            no,  no,     yes,         no},
    {"<="_w,                   "<="_w,           no,  no,     yes,         no},
    {"between"_w,              "BETWEEN"_w,      no,  no,     no,          yes},
    // Its neighbours would suggest OR.
    {"like"_w,                 "LIKE"_w,         no,  no,     no,          no},
    {"not like"_w,             "NOT LIKE"_w,     no,  no,     yes,         no},
    {"contains"_w,             "LIKE"_w,         yes, yes,    no,          yes},
    {"does not contain"_w,     "NOT LIKE"_w,     yes, yes,    yes,         no},
    {"begins with"_w,          "LIKE"_w,         no,  yes,    no,          yes},
    {"does not begin with"_w,  "NOT LIKE"_w,     no,  yes,    yes,         no},
    {"ends with"_w,            "LIKE"_w,         yes, no,     no,          yes},
    {"does not end with"_w,    "NOT LIKE"_w,     yes, no,     yes,         no},
    {"is null"_w,              "IS NULL"_w,      no,  no,     no,          yes},
    {"is not null"_w,          "IS NOT NULL"_w,  no,  no,     no,          yes},
};
// clang-format on

}  // namespace

QStringList CriteriaOperatorList() {
    QStringList list;
    for (const CriteriaOperator& entry : operators) list << entry.Listed;
    return list;
}

const CriteriaOperator* FindCriteriaOperator(const QString& listed) {
    const auto found = std::find_if(std::begin(operators), std::end(operators),
                                    [&](const CriteriaOperator& entry) { return entry.Listed == listed; });
    return found == std::end(operators) ? nullptr : found;
}

}  // namespace zephrin
