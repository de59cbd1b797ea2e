#include "fuzz/Targets.h"

#include <zephrin/ado/Error.h>
#include <zephrin/ado/Recordset.h>

namespace zephrin::fuzz {

namespace {

const QString name = QStringLiteral("input");

QString Picture(const ado::Recordset& rows) {
    QString picture;
    for (int field = 0; field < rows.FieldCount(); ++field) {
        const ado::Field& column = rows.FieldAt(field);
        picture += column.Name + u'/' + QString::number(static_cast<int>(column.Type)) + u'/' +
                   QString::number(column.DefinedSize) + u'|';
    }
    for (qint64 row = 0; row < rows.RecordCount(); ++row)
        for (int field = 0; field < rows.FieldCount(); ++field)
            picture += rows.IsNullAt(row, field) ? QStringLiteral("\n-") : u'\n' + rows.TextAt(row, field);
    return picture;
}

}  // namespace

void FeedRecordset(const QByteArray& input) {
    ado::Recordset rows;
    try {
        rows.OpenXml(input, name);
    } catch (const ado::Error& error) {
        Require(!rows.IsOpen(), "a refused file leaves nothing open");
        Require(error.Description().startsWith(name), "a refusal names the file");
        return;
    }
    QByteArray written;
    try {
        written = rows.ToXml();
    } catch (const ado::Error&) {
        // A value that the form can't hold was read in another notation of it.
        return;
    }
    ado::Recordset again;
    try {
        again.OpenXml(written, name);
    } catch (const ado::Error& error) {
        throw Broken("what was written can't be read: " + error.Description().toStdString());
    }
    Require(Picture(again) == Picture(rows), "what was written reads differently");
}

}  // namespace zephrin::fuzz
