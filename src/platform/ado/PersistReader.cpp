#include "platform/ado/PersistLimits.h"
#include "platform/ado/PersistText.h"
#include "platform/ado/PersistTypes.h"
#include "platform/ado/PersistXml.h"

#include <zephrin/ado/Error.h>

#include <QHash>
#include <QRegularExpression>
#include <QStringConverter>
#include <QXmlStreamReader>

#include <limits>

namespace zephrin::ado {

using namespace Qt::Literals::StringLiterals;

namespace {

// As with the bytes: far above what is kept, far below what hurts.
constexpr int MostColumns = 32'768;
constexpr qint64 MostCells = 8'000'000;

[[noreturn]] void Refuse(const QString& source, qint64 line, const QString& what) {
    throw Error(ErrorNumber::InvalidConnection,
                QStringLiteral("%1, line %2: %3").arg(source).arg(line).arg(what));
}

/// Reads the form in one pass, element by element: what is not expected where it stands is an error.
class PersistReader {
 public:
    /// `xml` is bytes or text.
    template <typename Xml>
    PersistReader(const Xml& xml, const QString& from) : reader(xml), source(from) {}

    PersistedTable Read();

 private:
    [[noreturn]] void Fail(const QString& what) const;
    /// Goes to the next element inside the present one; false at its end. Text between elements is an error.
    bool NextChild();
    bool Is(QStringView space, QStringView name) const {
        return reader.namespaceUri() == space && reader.name() == name;
    }
    void Require(QStringView space, QStringView name);
    /// Moves to the end of the present element, which must hold nothing.
    void RequireEmpty();

    void ReadSchema();
    void ReadColumns();
    Field ReadColumn(QString& attributeName);
    void ReadType(Field& field);
    void ReadRows();
    void ReadRow();
    int Number(const QXmlStreamAttributes& attributes, const QString& space, QLatin1StringView name) const;
    bool Flag(const QXmlStreamAttributes& attributes, QLatin1StringView name) const;
    void TakeFlag(const QXmlStreamAttributes& attributes, QLatin1StringView name, int bit,
                  Field& field) const;
    void AddColumn(const Field& field, const QString& attributeName);

    QXmlStreamReader reader;
    QString source;
    const QString typeSpace = TypeNamespace.toString();
    const QString rowsetSpace = RowsetNamespace.toString();
    QList<Field> fields;
    QHash<QString, int> columnOf;
    std::unique_ptr<EditedRows> rows = std::make_unique<EditedRows>();
    qint64 cells = 0;
};

void PersistReader::Fail(const QString& what) const {
    Refuse(source, reader.lineNumber(), what);
}

bool PersistReader::NextChild() {
    for (;;) {
        switch (reader.readNext()) {
            case QXmlStreamReader::StartElement:
                return true;
            case QXmlStreamReader::EndElement:
                return false;
            case QXmlStreamReader::StartDocument:
            case QXmlStreamReader::Comment:
            case QXmlStreamReader::ProcessingInstruction:
                break;
            case QXmlStreamReader::Characters:
                if (!reader.isWhitespace()) Fail(QStringLiteral("text where an element is expected"));
                break;
            case QXmlStreamReader::DTD:
                Fail(QStringLiteral("a document type is not allowed here"));
            case QXmlStreamReader::Invalid:
                Fail(reader.errorString());
            default:
                Fail(QStringLiteral("this is not the form of a saved recordset"));
        }
    }
}

void PersistReader::Require(QStringView space, QStringView name) {
    if (!NextChild() || !Is(space, name)) Fail(QStringLiteral("the element '%1' is expected").arg(name));
}

void PersistReader::RequireEmpty() {
    if (NextChild()) Fail(QStringLiteral("the element '%1' is not expected").arg(reader.qualifiedName()));
}

PersistedTable PersistReader::Read() {
    Require({}, u"xml");
    Require(SchemaNamespace, u"Schema");
    ReadSchema();
    Require(RowsetNamespace, u"data");
    ReadRows();
    RequireEmpty();
    // Behind the root only blanks and comments may follow; the reader itself refuses a second root.
    while (!reader.atEnd()) reader.readNext();
    if (reader.hasError()) Fail(reader.errorString());
    return {FieldList(fields), std::move(rows)};
}

void PersistReader::ReadSchema() {
    if (reader.attributes().value("id"_L1) != u"RowsetSchema")
        Fail(QStringLiteral("the schema is not one of rows"));
    Require(SchemaNamespace, u"ElementType");
    if (reader.attributes().value("name"_L1) != u"row") Fail(QStringLiteral("the schema is not one of rows"));
    ReadColumns();
    RequireEmpty();
}

void PersistReader::ReadColumns() {
    while (NextChild()) {
        if (Is(SchemaNamespace, u"AttributeType")) {
            QString attributeName;
            const Field field = ReadColumn(attributeName);
            AddColumn(field, attributeName);
        } else if (Is(SchemaNamespace, u"extends") || Is(SchemaNamespace, u"attribute")) {
            RequireEmpty();
        } else {
            Fail(QStringLiteral("the element '%1' is not expected").arg(reader.qualifiedName()));
        }
    }
}

Field PersistReader::ReadColumn(QString& attributeName) {
    const QXmlStreamAttributes attributes = reader.attributes();
    Field field;
    attributeName = attributes.value("name"_L1).toString();
    if (attributeName.isEmpty()) Fail(QStringLiteral("a column has no name"));
    const QStringView trueName = attributes.value(rowsetSpace, "name"_L1);
    field.Name = trueName.isNull() ? attributeName : UnescapedFromXml(trueName.toString());
    const int number = Number(attributes, rowsetSpace, "number"_L1);
    if (number != 0 && number != fields.size() + 1) Fail(QStringLiteral("a column is out of its place"));
    TakeFlag(attributes, "nullable"_L1, FieldIsNullable, field);
    TakeFlag(attributes, "write"_L1, FieldUpdatable, field);
    Require(SchemaNamespace, u"datatype");
    ReadType(field);
    RequireEmpty();
    RequireEmpty();
    return field;
}

void PersistReader::ReadType(Field& field) {
    const QXmlStreamAttributes attributes = reader.attributes();
    const QString type = attributes.value(typeSpace, "type"_L1).toString();
    const QString dbType = attributes.value(rowsetSpace, "dbtype"_L1).toString();
    const auto known =
        TypeOfPersisted({type, dbType, Flag(attributes, "fixedlength"_L1), Flag(attributes, "long"_L1)});
    if (!known) Fail(QStringLiteral("the type '%1' is unknown").arg(type));
    field.Type = *known;
    field.DefinedSize = Number(attributes, typeSpace, "maxLength"_L1);
    field.Precision = Number(attributes, rowsetSpace, "precision"_L1);
    field.NumericScale = Number(attributes, rowsetSpace, "scale"_L1);
    TakeFlag(attributes, "maybenull"_L1, FieldMayBeNull, field);
}

int PersistReader::Number(const QXmlStreamAttributes& attributes, const QString& space,
                          QLatin1StringView name) const {
    const QStringView text = attributes.value(space, name);
    if (text.isEmpty()) return 0;
    bool whole = false;
    const qulonglong value = text.toULongLong(&whole);
    if (!whole) Fail(QStringLiteral("'%1' is no number").arg(text));
    // Unlimited sizes are written as numbers beyond an int.
    return static_cast<int>(std::min<qulonglong>(value, std::numeric_limits<int>::max()));
}

bool PersistReader::Flag(const QXmlStreamAttributes& attributes, QLatin1StringView name) const {
    const QStringView text = attributes.value(rowsetSpace, name);
    if (text.isEmpty() || text == u"false") return false;
    if (text != u"true") Fail(QStringLiteral("'%1' is neither true nor false").arg(text));
    return true;
}

/// A field of which none of these flags is told keeps its attributes unspecified.
void PersistReader::TakeFlag(const QXmlStreamAttributes& attributes, QLatin1StringView name, int bit,
                             Field& field) const {
    if (attributes.value(rowsetSpace, name).isNull()) return;
    if (field.Attributes == FieldAttributesUnspecified) field.Attributes = 0;
    if (Flag(attributes, name)) field.Attributes |= bit;
}

void PersistReader::AddColumn(const Field& field, const QString& attributeName) {
    if (fields.size() == MostColumns) Fail(QStringLiteral("there are too many columns"));
    if (columnOf.contains(attributeName))
        Fail(QStringLiteral("the column '%1' comes twice").arg(attributeName));
    columnOf.insert(attributeName, static_cast<int>(fields.size()));
    fields << field;
}

void PersistReader::ReadRows() {
    while (NextChild()) {
        if (Is(RowNamespace, u"row")) {
            ReadRow();
        } else if (Is(RowsetNamespace, u"insert")) {
            // Rows that were never written to a database; here they are rows like any.
            while (NextChild()) {
                if (!Is(RowNamespace, u"row")) Fail(QStringLiteral("a row is expected"));
                ReadRow();
            }
        } else {
            Fail(QStringLiteral("a row is expected"));
        }
    }
}

void PersistReader::ReadRow() {
    rows->Append();
    const qint64 row = rows->Count() - 1;
    // Room is taken up to the last column that a row has, and for the row itself.
    int last = 0;
    const QXmlStreamAttributes attributes = reader.attributes();
    for (const QXmlStreamAttribute& attribute : attributes) {
        const int column = columnOf.value(attribute.qualifiedName().toString(), -1);
        if (column < 0) Fail(QStringLiteral("'%1' is no column").arg(attribute.qualifiedName()));
        last = std::max(last, column);
    }
    cells += last + 2;
    if (cells > MostCells) Fail(QStringLiteral("there are too many rows"));
    for (const QXmlStreamAttribute& attribute : attributes) {
        const int column = columnOf.value(attribute.qualifiedName().toString());
        try {
            rows->Set(row, column, ValueOfPersisted(attribute.value().toString(), fields.at(column)));
        } catch (const Error& error) {
            Fail(error.Description());
        }
    }
    RequireEmpty();
}

void RequireModest(const QByteArray& xml, const QString& source) {
    qint64 line = 1;
    if (const QString excess = FindExcess(xml, line); !excess.isEmpty()) Refuse(source, line, excess);
}

/// Whether what begins as ASCII says of itself that it isn't, and so would go on unseen by who reads it as
/// ASCII.
bool ChangesItsEncoding(const QByteArray& xml) {
    static const QRegularExpression wide(
        QStringLiteral("^\\s*<\\?xml[^>]*encoding\\s*=\\s*.[^'\">]*(?:16|32)"),
        QRegularExpression::CaseInsensitiveOption);
    return wide.match(QString::fromLatin1(xml.first(std::min<qsizetype>(xml.size(), 1024)))).hasMatch();
}

}  // namespace

PersistedTable ReadPersisted(const QByteArray& xml, const QString& source) {
    if (xml.size() > MostPersistedBytes)
        throw Error(ErrorNumber::InvalidConnection, QStringLiteral("%1: the file is too large").arg(source));
    const auto encoding = QStringConverter::encodingForData(xml, u'<');
    if (encoding && *encoding != QStringConverter::Utf8) {
        const QString text = QStringDecoder(*encoding).decode(xml);
        RequireModest(text.toUtf8(), source);
        return PersistReader(text, source).Read();
    }
    if (ChangesItsEncoding(xml))
        Refuse(source, 1, QStringLiteral("the encoding is not the one that it says"));
    RequireModest(xml, source);
    return PersistReader(xml, source).Read();
}

}  // namespace zephrin::ado
