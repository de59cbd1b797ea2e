#include "platform/ado/providers/sqlite/dialect/Wording.h"
#include "platform/ado/providers/sqlite/dialect/Writer.h"

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

/// Counts rows are whole and a share may be broken on a server; a file takes whole numbers only.
void Writer::WriteLimit(const SelectCore& core) {
    if (!core.Top) return;
    const TopClause& top = *core.Top;
    bool whole = false;
    const qint64 rows = top.Digits.toLongLong(&whole);
    const bool brokenShare = top.Percent && !IsFileDialect(speaks) && top.Digits.toDouble() >= 0;
    if ((!whole && !brokenShare) || (whole && rows < 0) || (top.Percent && top.Digits.toDouble() > 100))
        throw BadTop(speaks, top.Digits, top.Percent, top.At.From);
    out.Mark(top.At.From);
    if (!top.Percent) {
        out << " LIMIT " << QByteArray::number(rows);
        return;
    }
    const Share share = ReadShare(top.Digits);
    const QByteArray whole100 = QByteArray::number(share.Denominator * 100);
    out << " LIMIT (SELECT (COUNT(*) * " << QByteArray::number(share.Numerator) << " + " << whole100
        << " - 1) / " << whole100 << " FROM (";
    WriteCore(core, core.Distinct);
    out << "))";
}

}  // namespace zephrin::ado::providers::sqlite
