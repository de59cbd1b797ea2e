#include "sqlgen/CriteriaRows.h"

#include <numeric>
#include <unordered_set>

namespace zephrin {

namespace {

struct RowHash {
    std::size_t operator()(const CriteriaRow* row) const {
        std::size_t hash = 0;
        for (const Criterion& cell : *row) hash = qHashMulti(hash, cell.Field, cell.Text);
        return hash;
    }
};

struct RowEqual {
    bool operator()(const CriteriaRow* left, const CriteriaRow* right) const { return *left == *right; }
};

}  // namespace

CriteriaRow ReadCriteriaRow(const ado::Recordset& sheet, qint64 row, const std::vector<int>& fields) {
    CriteriaRow cells;
    for (const int field : fields) {
        if (sheet.IsNullAt(row, field)) continue;
        QString text = sheet.TextAt(row, field);
        if (!text.isEmpty()) cells.push_back({field, std::move(text)});
    }
    return cells;
}

std::vector<int> AllFields(const ado::Recordset& sheet) {
    std::vector<int> fields(static_cast<std::size_t>(sheet.FieldCount()));
    std::iota(fields.begin(), fields.end(), 0);
    return fields;
}

std::vector<std::size_t> RepeatedRows(const std::vector<CriteriaRow>& rows) {
    std::unordered_set<const CriteriaRow*, RowHash, RowEqual> seen;
    std::vector<std::size_t> repeated;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!seen.insert(&rows[i]).second) repeated.push_back(i);
    return repeated;
}

}  // namespace zephrin
