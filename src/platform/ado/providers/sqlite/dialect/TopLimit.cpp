#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"
#include "platform/ado/providers/sqlite/values/Naming.h"

#include <QByteArrayList>

#include <cmath>

namespace zephrin::ado::providers::sqlite {

namespace {

/// "12.5" as 125 over 10, for a share that must not be off by a row through floating point.
struct Share {
    qint64 Numerator = 0;
    qint64 Denominator = 1;
};

/// Reads digits as a fraction.
Share ReadShare(const QString& digits) {
    const qsizetype exponentAt = digits.indexOf(u'e', 0, Qt::CaseInsensitive);
    int exponent = exponentAt < 0 ? 0 : digits.sliced(exponentAt + 1).toInt();
    QString mantissa = exponentAt < 0 ? digits : digits.first(exponentAt);
    if (const qsizetype point = mantissa.indexOf(u'.'); point >= 0) {
        exponent -= int(mantissa.size() - point - 1);
        mantissa.remove(point, 1);
    }
    bool fits = false;
    Share share;
    share.Numerator = mantissa.toLongLong(&fits);
    if (!fits || mantissa.size() > 9 || exponent < -9 || exponent > 9) {
        // Ten millionths of a percent are below any row; what is above keeps its value to that place.
        return {qint64(std::ceil(digits.toDouble() * 1e7)), 10'000'000};
    }
    for (; exponent > 0; --exponent) share.Numerator *= 10;
    for (; exponent < 0; ++exponent) share.Denominator *= 10;
    return share;
}

}  // namespace

/// Counts of rows are whole and a share may be broken on a server; a file takes whole numbers only.
void Writer::CheckTop(const TopClause& top) const {
    bool whole = false;
    const qint64 rows = top.Digits.toLongLong(&whole);
    const bool brokenShare = top.Percent && !IsFileDialect(speaks) && top.Digits.toDouble() >= 0;
    if ((!whole && !brokenShare) || (whole && rows < 0) || (top.Percent && top.Digits.toDouble() > 100))
        throw BadTop(speaks, top.Digits, top.Percent, top.At.From);
}

void Writer::WriteLimit(const TopClause& top) {
    CheckTop(top);
    out.Mark(top.At.From);
    out << " LIMIT " << QByteArray::number(top.Digits.toLongLong());
}

/// A share needs the number of all rows. They are written once, as a common table with the keys of the order
/// behind their columns, and the engine counts and numbers them there.
void Writer::WriteShare(const SelectCore& core, bool distinct, const std::vector<OrderItem>& order) {
    CheckTop(*core.Top);
    const auto column = [](qsizetype index) { return "zx_" + QByteArray::number(index + 1); };
    const auto key = [&](size_t index) {
        const int place = order[index].Value->Output;
        return place >= 0 ? column(place) : "zx_k" + QByteArray::number(qsizetype(index));
    };
    QByteArrayList names;
    for (qsizetype index = 0; index < core.Output.size(); ++index) names << column(index);
    const QByteArrayList columns = names;
    for (size_t index = 0; index < order.size(); ++index)
        if (order[index].Value->Output < 0) names << key(index);
    out << "WITH zx_all(" << names.join(", ") << ") AS (";
    WriteCore(core, distinct, &order);
    out << ") SELECT ";
    for (qsizetype index = 0; index < columns.size(); ++index) {
        out << (index == 0 ? "" : ", ") << columns[index];
        const QString& name = core.Output[index].Name;
        if (!name.isEmpty()) out << " AS " << QuotedName(name);
    }
    out << " FROM (SELECT *, COUNT(*) OVER () AS zx_count, ROW_NUMBER() OVER (";
    for (size_t index = 0; index < order.size(); ++index) {
        out << (index == 0 ? "ORDER BY " : ", ") << key(index);
        if (IsComparedAsText(order[index].Value->Type.Type)) out << collation;
        if (order[index].Descending) out << " DESC";
    }
    const Share share = ReadShare(core.Top->Digits);
    const QByteArray whole = QByteArray::number(share.Denominator * 100);
    out << ") AS zx_row FROM zx_all) WHERE zx_row <= (zx_count * " << QByteArray::number(share.Numerator)
        << " + " << whole << " - 1) / " << whole << " ORDER BY zx_row";
}

}  // namespace zephrin::ado::providers::sqlite
