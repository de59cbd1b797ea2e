#include "platform/ado/providers/files/RowBinder.h"

#include "platform/ado/providers/sqlite/values/Exact.h"

#include <QUtf8StringView>

namespace zephrin::ado::files {

using namespace providers::sqlite;

namespace {

/// A number as the engine keeps exact ones: as a double where that reads as it, else in the engine's own
/// form.
void BindExact(sqlite3_stmt* into, int parameter, const Exact& value) {
    if (FitsDigits(value, NarrowDigits)) {
        sqlite3_bind_double(into, parameter, ToDouble(value));
        return;
    }
    const QByteArray wide = ToWide(value);
    sqlite3_bind_blob(into, parameter, wide.constData(), int(wide.size()), SQLITE_TRANSIENT);
}

void BindMoney(sqlite3_stmt* into, int parameter, qint64 tenThousandths) {
    constexpr qint64 unit = 10'000;
    // Up to here each count has a double of its own.
    constexpr qint64 most = qint64(1) << 53;
    if (tenThousandths > -most && tenThousandths < most)
        sqlite3_bind_double(into, parameter, double(tenThousandths) / double(unit));
    else
        BindExact(into, parameter, {tenThousandths, MoneyScale});
}

bool IsText(QByteArrayView bytes) {
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

}  // namespace

RowBinder::RowBinder(sqlite3* into, const QByteArray& insertion, qsizetype columns)
    : database(into), count(int(columns)) {
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v3(database, insertion.constData(), int(insertion.size()), SQLITE_PREPARE_PERSISTENT,
                       &raw, nullptr);
    statement.reset(raw);
}

int RowBinder::Insert(RecordReader rows) {
    if (!statement) return sqlite3_errcode(database);
    for (quint32 left = rows.TakeNumber(); left > 0; --left) {
        for (int parameter = 1; parameter <= count; ++parameter)
            if (!Bind(parameter, rows)) return NotRows;
        if (const int code = sqlite3_step(statement.get()); code != SQLITE_DONE) return code;
        sqlite3_reset(statement.get());
    }
    return rows.IsFinished() ? SQLITE_OK : NotRows;
}

bool RowBinder::Bind(int parameter, RecordReader& row) const {
    sqlite3_stmt* const into = statement.get();
    // Texts and bytes stay in the record until the row is in.
    switch (ValueTag(row.TakeByte())) {
        case ValueTag::Null:
            sqlite3_bind_null(into, parameter);
            break;
        case ValueTag::Int:
            sqlite3_bind_int64(into, parameter, row.TakeLong());
            break;
        case ValueTag::Double:
            sqlite3_bind_double(into, parameter, row.TakeDouble());
            break;
        case ValueTag::Money:
            BindMoney(into, parameter, row.TakeLong());
            break;
        case ValueTag::Text: {
            const QByteArrayView text = row.TakeBytes();
            if (!IsText(text)) return false;
            sqlite3_bind_text(into, parameter, text.isNull() ? "" : text.data(), int(text.size()),
                              SQLITE_STATIC);
            break;
        }
        case ValueTag::Bytes: {
            const QByteArrayView bytes = row.TakeBytes();
            if (bytes.isEmpty())
                sqlite3_bind_zeroblob(into, parameter, 0);
            else
                sqlite3_bind_blob(into, parameter, bytes.data(), int(bytes.size()), SQLITE_STATIC);
            break;
        }
        case ValueTag::Decimal: {
            const QByteArrayView digits = row.TakeBytes();
            const std::optional<Exact> value = ExactOfText(QString::fromLatin1(digits));
            if (!value) return false;
            BindExact(into, parameter, *value);
            break;
        }
        default:
            return false;
    }
    return row.IsSound();
}

}  // namespace zephrin::ado::files
