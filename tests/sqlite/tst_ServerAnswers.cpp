#include "TestDatabase.h"
#include "platform/ado/DecimalDigits.h"
#include "support/SharedData.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

/// Statements with the answers of a server of the dialect, run on the embedded engine. Their folder
/// holds `tables.sql` and `answers.jsonl`; ZEPHRIN_SERVER_FAMILIES picks some of the statements by what they are
/// about.
namespace zephrin::ado::providers::sqlite::test {
namespace {

const char* KindOf(DataType type) {
    switch (type) {
        case DataType::SmallInt:
        case DataType::Integer:
        case DataType::TinyInt:
        case DataType::UnsignedTinyInt:
        case DataType::BigInt:
            return "int";
        case DataType::Decimal:
        case DataType::Numeric:
            return "decimal";
        case DataType::Currency:
            return "money";
        case DataType::Single:
        case DataType::Double:
            return "float";
        case DataType::Date:
        case DataType::DBTimeStamp:
            return "datetime";
        case DataType::DBDate:
            return "date";
        case DataType::Boolean:
            return "bit";
        default:
            return "text";
    }
}

/// A cell in the form that the answers have.
QString Cell(const Recordset& rows, qint64 row, int column, const QString& type) {
    if (rows.IsNullAt(row, column)) return QStringLiteral("~");
    QString text = rows.TextAt(row, column);
    if (type == u"decimal" || type == u"money")
        return QString::fromStdString(DecimalDigits::OfText(text.toStdString()).ToText());
    if (type == u"datetime" && text.size() == 10) text += QStringLiteral(" 00:00:00");
    if (type == u"bit") return text == u"True" ? QStringLiteral("1") : QStringLiteral("0");
    return text;
}

bool SameFloat(double a, double b) {
    return (std::fabs(a) < 1e-12 && std::fabs(b) < 1e-12) ||
           std::fabs(a - b) <= 1e-9 * std::max(std::fabs(a), std::fabs(b));
}

bool SameCell(const QString& ours, const QString& theirs, const QJsonObject& column, bool fold) {
    if (ours == theirs) return true;
    if (ours == u"~" || theirs == u"~") return false;
    const QString type = column[u"type"].toString();
    if (type == u"float") return SameFloat(ours.toDouble(), theirs.toDouble());
    if (type == u"decimal" || type == u"money") {
        if (!column.contains(u"digits")) return false;
        const int digits = column[u"digits"].toInt();
        const qsizetype point = ours.indexOf(u'.');
        return (point < 0 || ours.size() - point - 1 <= digits) &&
               std::fabs(ours.toDouble() - theirs.toDouble()) <= 1.001 * std::pow(10.0, -digits);
    }
    const auto folded = [](QString text) {
        while (text.endsWith(u' ')) text.chop(1);
        return text.toCaseFolded();
    };
    return type == u"text" && fold && folded(ours) == folded(theirs);
}

using Row = QStringList;

/// What differs, or nothing. Rows whose order is not told are compared as a set, by taking each once.
QString Difference(const QList<Row>& ours, const QList<Row>& theirs, const QJsonObject& answer) {
    if (ours.size() != theirs.size())
        return QStringLiteral("%1 rows, not %2").arg(ours.size()).arg(theirs.size());
    const QJsonArray columns = answer[u"columns"].toArray();
    const bool fold = answer[u"fold"].toBool();
    const auto same = [&](const Row& a, const Row& b, const QList<int>& which, bool folded) {
        return std::all_of(which.begin(), which.end(), [&](int column) {
            return SameCell(a[column], b[column], columns[column].toObject(), folded);
        });
    };
    QList<int> all;
    for (int column = 0; column < columns.size(); ++column) all << column;
    QList<int> keys;
    for (const QJsonValue& key : answer[u"keys"].toArray()) keys << key.toInt();
    if (!keys.isEmpty())
        for (qsizetype row = 0; row < ours.size(); ++row)
            // Two spellings of one key are the same key.
            if (!same(ours[row], theirs[row], keys, true))
                return QStringLiteral("row %1 in order: %2, not %3")
                    .arg(row)
                    .arg(ours[row].join(u'|'), theirs[row].join(u'|'));
    QList<Row> left = theirs;
    for (const Row& row : ours) {
        const auto found = std::find_if(left.begin(), left.end(),
                                        [&](const Row& other) { return same(row, other, all, fold); });
        if (found == left.end())
            return QStringLiteral("has %1, lacks e.g. %2").arg(row.join(u'|'), left.front().join(u'|'));
        left.erase(found);
    }
    return {};
}

QString Compared(Connection& connection, const QJsonObject& answer) {
    const QString refused = answer[u"error"].toString();
    try {
        const RecordsetPtr rows = connection.Execute(answer[u"sql"].toString());
        if (!refused.isEmpty())
            return QStringLiteral("taken; the server says: %1").arg(answer[u"remark"].toString());
        const QJsonArray columns = answer[u"columns"].toArray();
        if (rows->FieldCount() != columns.size()) return QStringLiteral("%1 columns").arg(rows->FieldCount());
        for (int column = 0; column < rows->FieldCount(); ++column) {
            const QJsonObject wanted = columns[column].toObject();
            const Field& field = rows->FieldAt(column);
            const QString name = wanted[u"name"].toString();
            if (wanted[u"type"].toString() != QLatin1StringView(KindOf(field.Type)))
                return QStringLiteral("column %1 is a %2, not a %3")
                    .arg(QString::number(column), QLatin1StringView(KindOf(field.Type)),
                         wanted[u"type"].toString());
            if (!name.isEmpty() && name != field.Name)
                return QStringLiteral("column %1 is named '%2', not '%3'")
                    .arg(QString::number(column), field.Name, name);
        }
        QList<Row> ours, theirs;
        for (qint64 row = 0; row < rows->RecordCount(); ++row) {
            ours.append(Row());
            for (int column = 0; column < columns.size(); ++column)
                ours.back() << Cell(*rows, row, column, columns[column].toObject()[u"type"].toString());
        }
        for (const QJsonValue& row : answer[u"rows"].toArray()) {
            theirs.append(Row());
            for (const QJsonValue& cell : row.toArray())
                theirs.back() << (cell.isNull() ? QStringLiteral("~") : cell.toString());
        }
        return Difference(ours, theirs, answer);
    } catch (const Error& error) {
        return refused.isEmpty() ? QStringLiteral("refused: ") + error.Description() : QString();
    }
}

TEST(ServerAnswers, AreTheSame) {
    const QString folder = zephrin::test::SharedFolder(QStringLiteral("server-answers"));
    QFile tables(QDir(folder).filePath(QStringLiteral("tables.sql")));
    QFile answers(QDir(folder).filePath(QStringLiteral("answers.jsonl")));
    if (folder.isEmpty() || !tables.open(QIODevice::ReadOnly) || !answers.open(QIODevice::ReadOnly))
        GTEST_SKIP() << zephrin::test::NoSharedFiles;
    const QStringList families =
        qEnvironmentVariable("ZEPHRIN_SERVER_FAMILIES").split(u',', Qt::SkipEmptyParts);
    const TestDatabase database(tables.readAll().constData());
    const auto connection = Connect(database, QStringLiteral("SQL Server"));
    int count = 0;
    int agreed = 0;
    while (!answers.atEnd()) {
        const QJsonObject answer = QJsonDocument::fromJson(answers.readLine()).object();
        if (!families.isEmpty() && !families.contains(answer[u"family"].toString())) continue;
        ++count;
        const QString difference = Compared(*connection, answer);
        agreed += difference.isEmpty();
        EXPECT_TRUE(difference.isEmpty())
            << "-- " << answer[u"id"].toString().toStdString() << ' '
            << answer[u"family"].toString().toStdString() << ": " << difference.toStdString() << "\n   "
            << answer[u"sql"].toString().simplified().toStdString();
    }
    EXPECT_GT(count, 0);
    std::printf("%d of %d statements answered as by the server\n", agreed, count);
}

}  // namespace
}  // namespace zephrin::ado::providers::sqlite::test
