#include "runstate/Retrieval.h"

namespace zephrin {

namespace {

const auto ReadingFields = QStringLiteral("Reading Fields ..");

/// Opens a connection like the shared one beside it, with the user and the time-outs of the run.
std::unique_ptr<ado::Connection> OpenBeside(ZPGGlobalDeclarations& state) {
    auto connection = std::make_unique<ado::Connection>(state.Providers);
    connection->SetWatcher(WatcherOf(state));
    connection->SetConnectionTimeout(state.gConnectionTimeout);
    connection->SetCommandTimeout(state.gCommandTimeout);
    connection->SetConnectionString(state.SharedConnection().ConnectionString());
    connection->Open({}, state.gUserId, state.gPassword);
    return connection;
}

/// The table without its delimiters, whatever they are.
QString BareName(const QString& table) {
    return table.size() > 2 ? table.mid(1, table.size() - 2) : QString();
}

/// Adds the fields of one table, in column order. Throws ado::Error when there are none.
void AddFields(const ZPGGlobalDeclarations& state, ado::Connection& connection, const QString& table,
               Collection& fields) {
    const ado::RecordsetPtr columns = connection.OpenSchema(ado::Schema::Columns, table);
    const qint64 count = columns->RecordCount();
    if (count == 0) {
        throw ado::Error(
            5, QStringLiteral("The table '%1' has no columns, or the database does not have it any more.")
                   .arg(table));
    }
    const int nameField = columns->FieldIndex(u"COLUMN_NAME");
    const QString prefix = state.gDelimOpen + table + state.gDelimClose + u'.' + state.gDelimOpen;
    for (qint64 row = 0; row < count; ++row)
        fields.Add(prefix + columns->ValueAt(row, nameField).toString() + state.gDelimClose);
}

}  // namespace

clsFieldRetrieval::clsFieldRetrieval(ZPGGlobalDeclarations& run) : state(run) {}

clsFieldRetrieval::~clsFieldRetrieval() = default;

Collection clsFieldRetrieval::FieldCollection(const Collection& tables) {
    const int showing = state.Showing;
    try {
        return ReadFields(tables);
    } catch (const ado::Error& error) {
        // Nobody is told what he asked for himself, nor of a showing that is over.
        stopped = error.Number() == ado::ErrorNumber::OperationCancelled || state.Showing != showing;
        // The listener may end the wizard: nothing of this object is touched behind it.
        const QString description = error.Description();
        if (!stopped && FieldCollectionError) FieldCollectionError(description);
    }
    return {};
}

Collection clsFieldRetrieval::ReadFields(const Collection& tables) {
    const Work work(state, ReadingFields);
    // A copy: they may change while somebody is let in.
    const Collection wanted = tables;
    Collection fields;
    connection = OpenBeside(state);
    for (const QString& table : wanted) {
        const QString name = BareName(table);
        if (name.isEmpty()) return {};
        AddFields(state, *connection, name, fields);
    }
    return fields;
}

ado::DataType clsFieldType::FieldType(const QString& tableName, const QString& fieldName) {
    const Work work(state, ReadingFields);
    const std::unique_ptr<ado::Connection> connection = OpenBeside(state);
    ado::Recordset recordset;
    recordset.SetMaxRecords(1);
    recordset.Open(QStringLiteral("SELECT ") + fieldName + QStringLiteral(" FROM ") + tableName, *connection);
    return recordset.FieldAt(0).Type;
}

ado::RecordsetPtr clsFieldValues::colFieldValues(const QString& tableName, const QString& fieldName) {
    return colExpressionValues(fieldName, QStringLiteral("FROM ") + tableName);
}

ado::RecordsetPtr clsFieldValues::colExpressionValues(const QString& expression, const QString& from) {
    const Work work(state, QStringLiteral("Looking up Values .."));
    auto values = std::make_shared<ado::Recordset>();
    values->Open(QStringLiteral("SELECT DISTINCT ") + expression + u' ' + from +
                     QStringLiteral(" ORDER BY ") + expression + QStringLiteral(" ASC"),
                 state.SharedConnection());
    return values;
}

}  // namespace zephrin
