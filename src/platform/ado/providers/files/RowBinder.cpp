#include "platform/ado/providers/files/RowBinder.h"

#include <QUtf8StringView>

namespace zephrin::ado::files {

namespace {

constexpr double MoneyUnit = 10'000.0;

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
            sqlite3_bind_double(into, parameter, double(row.TakeLong()) / MoneyUnit);
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
            sqlite3_bind_text(into, parameter, digits.isNull() ? "" : digits.data(), int(digits.size()),
                              SQLITE_STATIC);
            break;
        }
        default:
            return false;
    }
    return row.IsSound();
}

}  // namespace zephrin::ado::files
