#include "fuzz/Choices.h"
#include "fuzz/Targets.h"
#include "platform/ado/ColumnStore.h"
#include "platform/excel/WorkbookFile.h"

#include <zephrin/ado/Error.h>

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <memory>
#include <zip.h>

namespace zephrin::fuzz {

namespace {

/// Rows that choices make, handed out once.
class MadeRows final : public excel::RowSource {
 public:
    explicit MadeRows(Choices& given) : choices(given), rows(given.Below(6)) {
        const int columns = 1 + choices.Below(5);
        for (int column = 0; column < columns; ++column) fields << ado::Field{choices.Text(12)};
    }

    std::unique_ptr<ado::Cursor> Run(const QString&) override { return std::make_unique<Rows>(*this); }
    bool Proceed(qint64) override { return true; }

    /// The texts of the text cells, in order.
    QStringList Texts;

 private:
    class Rows final : public ado::Cursor {
     public:
        explicit Rows(MadeRows& rowSource) : source(rowSource) {}
        const QList<ado::Field>& Fields() const override { return source.fields; }
        qint64 Fetch(ado::ColumnStore& into, qint64 most) override {
            const qint64 count = std::min<qint64>(most, source.rows - std::exchange(done, source.rows));
            for (qint64 row = 0; row < count; ++row) {
                for (int column = 0; column < source.fields.size(); ++column) source.Append(into, column);
                into.EndRows();
            }
            return count;
        }

     private:
        MadeRows& source;
        int done = 0;
    };

    void Append(ado::ColumnStore& into, int column) {
        switch (choices.Below(7)) {
            case 0:
                return into.AppendNull(column);
            case 1:
                return into.AppendInt(column, choices.Number());
            case 2:
                return into.AppendDouble(column, static_cast<double>(choices.Number()) / 7);
            case 3:
                return into.AppendCurrency(column, choices.Number());
            case 4:
                return into.AppendDate(column, choices.Number() % 3'000'000);
            case 5:
                return into.AppendDateTime(column, choices.Number());
            default:
                break;
        }
        const QByteArray utf8 = choices.Text(40).toUtf8();
        Texts << QString::fromUtf8(utf8);
        into.AppendText(column, utf8.constData(), utf8.size());
    }

    Choices& choices;
    const int rows;
    QList<ado::Field> fields;
};

using Package = std::unique_ptr<zip_t, void (*)(zip_t*)>;

QByteArray ReadPart(zip_t* package, zip_int64_t index) {
    zip_stat_t entry;
    Require(zip_stat_index(package, static_cast<zip_uint64_t>(index), 0, &entry) == 0, "a part has a size");
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> part(
        zip_fopen_index(package, static_cast<zip_uint64_t>(index), 0), zip_fclose);
    Require(part != nullptr, "a part opens");
    QByteArray bytes(static_cast<qsizetype>(entry.size), 0);
    Require(zip_fread(part.get(), bytes.data(), entry.size) == bytes.size(), "a part is whole");
    return bytes;
}

/// What a spreadsheet makes of the text of a cell: `_x000D_` is the character of that number.
QString Unescaped(const QString& text) {
    QString plain;
    for (qsizetype at = 0; at < text.size(); ++at) {
        bool isNumber = false;
        if (text.mid(at, 2) == u"_x" && text.mid(at + 6, 1) == u"_") {
            const ushort unit = text.mid(at + 2, 4).toUShort(&isNumber, 16);
            if (isNumber) plain += QChar(unit);
        }
        if (isNumber)
            at += 6;
        else
            plain += text[at];
    }
    return plain;
}

/// Reads a part, and of a sheet the texts of its cells behind the first row.
QStringList ReadTexts(const QByteArray& part, const QString& name) {
    QXmlStreamReader reader(part);
    QStringList texts;
    int rows = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        if (reader.name() == u"row") ++rows;
        if (reader.name() == u"t" && rows > 1) texts << Unescaped(reader.readElementText());
    }
    Require(!reader.hasError(), name + QStringLiteral(" is malformed: ") + reader.errorString());
    return texts;
}

/// What a sheet can hold of a text.
QString Holdable(const QString& text) {
    QString held;
    for (const QChar c : text)
        if ((c >= u' ' || c == u'\t' || c == u'\n' || c == u'\r') && c != QChar(0xFFFE) && c != QChar(0xFFFF))
            held += c;
    return held;
}

/// Writes a workbook of the rows, and says where it is.
QString Write(Choices& choices, MadeRows& rows, const QString& folder) {
    QString path;
    excel::WorkbookFile book(rows, folder, [&path](const QString& finished, qint64) { path = finished; });
    book.AddWorkbook();
    const QString connection = QStringLiteral("OLEDB;") + choices.Text(30), sql = choices.Text(60);
    book.SetSheetName(book.ActiveSheet(), QStringLiteral("Query Results"));
    const int table = book.AddQueryTable(book.ActiveSheet(), connection, QStringLiteral("A1"));
    book.SetQuerySql(table, sql);
    book.Refresh(table);
    book.SetVisible(true);
    return path;
}

}  // namespace

void FeedWorkbook(const QByteArray& input) {
    static const QTemporaryDir folder;
    Choices choices(input);
    MadeRows rows(choices);
    QString path;
    try {
        path = Write(choices, rows, folder.path());
    } catch (const ado::Error& error) {
        throw Broken("no workbook is made: " + error.Description().toStdString());
    }
    int failure = 0;
    const Package package(zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &failure), zip_discard);
    Require(package != nullptr, "the package opens");
    QStringList held;
    for (zip_int64_t part = 0; part < zip_get_num_entries(package.get(), 0); ++part) {
        const QString name =
            QString::fromUtf8(zip_get_name(package.get(), static_cast<zip_uint64_t>(part), 0));
        const QStringList texts = ReadTexts(ReadPart(package.get(), part), name);
        if (name.contains(QLatin1StringView("worksheets/sheet"))) held << texts;
    }
    QFile::remove(path);
    QStringList expected;
    for (const QString& text : rows.Texts) expected << Holdable(text);
    // Numbers beyond fifteen digits and days before 1900 stand there as texts, too.
    for (const QString& text : held)
        if (!expected.isEmpty() && expected.front() == text) expected.removeFirst();
    Require(expected.isEmpty(), QStringLiteral("a text is not as it was: ") + expected.value(0));
}

}  // namespace zephrin::fuzz
