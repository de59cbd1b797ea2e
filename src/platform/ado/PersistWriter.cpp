#include "platform/ado/Conversion.h"
#include "platform/ado/PersistText.h"
#include "platform/ado/PersistTypes.h"
#include "platform/ado/PersistXml.h"

#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamWriter>

namespace zephrin::ado {

namespace {

QString Flag(bool value) {
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

/// Names of the attributes in which the rows' values stand: the column's own where XML takes it, else c0, c1
/// and so on.
QStringList AttributeNames(const FieldList& fields) {
    static const QRegularExpression plain(
        QStringLiteral("^(?!c[0-9]+\\z)(?![Xx][Mm][Ll])[A-Za-z_][A-Za-z0-9_.-]*\\z"));
    QSet<QString> taken;
    QStringList names;
    for (int index = 0; index < fields.Count(); ++index) {
        QString name = fields.At(index).Name;
        if (!plain.match(name).hasMatch() || taken.contains(name)) name = QStringLiteral("c%1").arg(index);
        taken.insert(name);
        names << name;
    }
    return names;
}

class PersistWriter {
 public:
    PersistWriter(const FieldList& columns, const RowSet& values)
        : fields(columns), rows(values), names(AttributeNames(columns)), writer(&xml) {}

    QByteArray Write();

 private:
    void WriteSchema();
    void WriteColumn(int index);
    void WriteType(const Field& field);
    void WriteRow(qint64 row);
    void WriteNumber(const QString& name, int value);

    const FieldList& fields;
    const RowSet& rows;
    QStringList names;
    QByteArray xml;
    QXmlStreamWriter writer;
};

QByteArray PersistWriter::Write() {
    writer.writeStartElement(QStringLiteral("xml"));
    // From here on, or the file would begin with an empty line.
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
    writer.writeAttribute(QStringLiteral("xmlns:s"), SchemaNamespace.toString());
    writer.writeAttribute(QStringLiteral("xmlns:dt"), TypeNamespace.toString());
    writer.writeAttribute(QStringLiteral("xmlns:rs"), RowsetNamespace.toString());
    writer.writeAttribute(QStringLiteral("xmlns:z"), RowNamespace.toString());
    WriteSchema();
    writer.writeStartElement(QStringLiteral("rs:data"));
    for (qint64 row = 0; row < rows.Count(); ++row) WriteRow(row);
    writer.writeEndElement();
    writer.writeEndElement();
    writer.writeEndDocument();
    return xml;
}

void PersistWriter::WriteSchema() {
    writer.writeStartElement(QStringLiteral("s:Schema"));
    writer.writeAttribute(QStringLiteral("id"), QStringLiteral("RowsetSchema"));
    writer.writeStartElement(QStringLiteral("s:ElementType"));
    writer.writeAttribute(QStringLiteral("name"), QStringLiteral("row"));
    writer.writeAttribute(QStringLiteral("content"), QStringLiteral("eltOnly"));
    writer.writeAttribute(QStringLiteral("rs:updatable"), Flag(true));
    for (int index = 0; index < fields.Count(); ++index) WriteColumn(index);
    writer.writeEmptyElement(QStringLiteral("s:extends"));
    writer.writeAttribute(QStringLiteral("type"), QStringLiteral("rs:rowbase"));
    writer.writeEndElement();
    writer.writeEndElement();
}

void PersistWriter::WriteColumn(int index) {
    const Field& field = fields.At(index);
    writer.writeStartElement(QStringLiteral("s:AttributeType"));
    writer.writeAttribute(QStringLiteral("name"), names.at(index));
    if (names.at(index) != field.Name)
        writer.writeAttribute(QStringLiteral("rs:name"), EscapedForXml(field.Name));
    writer.writeAttribute(QStringLiteral("rs:number"), QString::number(index + 1));
    if (field.Attributes != FieldAttributesUnspecified) {
        writer.writeAttribute(QStringLiteral("rs:nullable"), Flag(field.Attributes & FieldIsNullable));
        writer.writeAttribute(QStringLiteral("rs:write"), Flag(field.Attributes & FieldUpdatable));
    }
    WriteType(field);
    writer.writeEndElement();
}

void PersistWriter::WriteType(const Field& field) {
    const PersistedType type = PersistedTypeOf(field.Type);
    writer.writeEmptyElement(QStringLiteral("s:datatype"));
    writer.writeAttribute(QStringLiteral("dt:type"), type.Type.toString());
    if (!type.DbType.isEmpty()) writer.writeAttribute(QStringLiteral("rs:dbtype"), type.DbType.toString());
    WriteNumber(QStringLiteral("dt:maxLength"), field.DefinedSize);
    WriteNumber(QStringLiteral("rs:precision"), field.Precision);
    WriteNumber(QStringLiteral("rs:scale"), field.NumericScale);
    if (type.FixedLength) writer.writeAttribute(QStringLiteral("rs:fixedlength"), Flag(true));
    if (type.Long) writer.writeAttribute(QStringLiteral("rs:long"), Flag(true));
    if (field.Attributes != FieldAttributesUnspecified)
        writer.writeAttribute(QStringLiteral("rs:maybenull"), Flag(field.Attributes & FieldMayBeNull));
}

void PersistWriter::WriteNumber(const QString& name, int value) {
    if (value > 0) writer.writeAttribute(name, QString::number(value));
}

void PersistWriter::WriteRow(qint64 row) {
    writer.writeEmptyElement(QStringLiteral("z:row"));
    for (int index = 0; index < fields.Count(); ++index) {
        const Field& field = fields.At(index);
        if (rows.IsNull(row, index)) continue;
        const QVariant value = Converted(rows.Value(row, index, field.Type), field);
        writer.writeAttribute(names.at(index), PersistedValue(value, field));
    }
}

}  // namespace

QByteArray WritePersisted(const FieldList& fields, const RowSet& rows) {
    return PersistWriter(fields, rows).Write();
}

}  // namespace zephrin::ado
