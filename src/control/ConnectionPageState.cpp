#include "control/ConnectionPageState.h"

#include "platform/text/Text.h"

#include <cmath>
#include <limits>
#include <optional>

namespace zephrin {

namespace {

/// The 32-bit number that a text is, or nothing. A half goes to the even neighbour.
std::optional<int> ToSeconds(const QString& text) {
    const std::optional<double> number = text::ToNumber(text);
    if (!number) return std::nullopt;
    const double whole = std::nearbyint(*number);
    const bool fits = whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max();
    return fits ? std::optional(static_cast<int>(whole)) : std::nullopt;
}

}  // namespace

ConnectionPageState::ConnectionPageState(std::unique_ptr<ZPGGlobalDeclarations> ownRun)
    : run(std::move(ownRun)) {}

ConnectionPageState::~ConnectionPageState() {
    if (run->adoConnection && run->adoConnection->State() == ado::ObjectState::Open)
        run->adoConnection->Close();
}

ConnectionErrors ConnectionPageState::Fill(const ConnectionSettings& settings) {
    // What was on offer for another control would be wrong here.
    lstZPGSelTables.clear();
    SelTablesEnabled = false;
    ClearChosen();
    CommandTimeoutChanged(QString::number(settings.ZPBCommandTimeout));
    ConnectionTimeoutChanged(QString::number(settings.ConnectionTimeout));
    ConnectionTextChanged(settings.ZPBConnectionString);
    cmbZPGCommandType = settings.ZPBCommandType;
    ConnectionErrors errors;
    if (CommandTypeEnabled) errors = CommandTypeChanged(settings.ZPBCommandType);
    tableString = settings.ZPBTableString;
    const QStringList tables = tableString.split(u';', Qt::SkipEmptyParts);
    for (const QString& table : tables) Choose(table);
    Changed = false;
    return errors;
}

void ConnectionPageState::ConnectionTextChanged(const QString& text) {
    txtZPGDataConnection = text;
    CommandTypeEnabled = !text.isEmpty();
    if (text.isEmpty()) BuildConnection();
    Changed = true;
}

void ConnectionPageState::BuildConnection() {
    const bool wasEmpty = tableString.isEmpty() && lstZPGSelectedTables.isEmpty() &&
                          lstZPGSelTables.isEmpty() && cmbZPGCommandType.isEmpty();
    tableString.clear();
    lstZPGSelectedTables.clear();
    lstZPGSelTables.clear();
    cmbZPGCommandType.clear();
    if (!wasEmpty) Changed = true;
}

ConnectionErrors ConnectionPageState::CommandTypeChanged(const QString& type) {
    cmbZPGCommandType = type;
    if (type.isEmpty()) return {};
    const ConnectionSettings initial;
    ConnectionErrors errors = OpenDatabaseConnection(
        *run, txtZPGDataConnection, ToSeconds(txtConnectionTimeout).value_or(initial.ConnectionTimeout),
        ToSeconds(txtCommandTimeout).value_or(initial.ZPBCommandTimeout), {}, {});
    if (!errors.IsEmpty()) return errors;
    FillSelTables();
    Changed = true;
    return {};
}

void ConnectionPageState::FillSelTables() {
    const bool tables = cmbZPGCommandType == QLatin1StringView("Tables");
    const bool views = cmbZPGCommandType == QLatin1StringView("Views");
    SelTablesEnabled = tables || views || cmbZPGCommandType == QLatin1StringView("Both");
    lstZPGSelTables.clear();
    if (!SelTablesEnabled) return;
    lstZPGSelTables << QStringLiteral("*");
    if (!HasRows(run->rsSchemaTables)) return;
    ado::Recordset& schema = *run->rsSchemaTables;
    for (schema.MoveFirst(); !schema.Eof(); schema.MoveNext()) {
        const QString type = schema.Text(u"Table_Type");
        if (tables && type != QLatin1StringView("TABLE")) continue;
        if (views && type != QLatin1StringView("VIEW")) continue;
        lstZPGSelTables << run->gDelimOpen + schema.Text(u"TABLE_NAME") + run->gDelimClose;
    }
    schema.MoveFirst();
}

QList<int> ConnectionPageState::SelTablesClicked(QList<int> rows) {
    ClearChosen();
    if (rows.contains(0)) {
        rows.clear();
        for (int row = 1; row < lstZPGSelTables.size(); ++row) rows << row;
    }
    for (const int row : std::as_const(rows)) {
        const QString table = lstZPGSelTables.value(row);
        tableString += u';' + table;
        Choose(table);
    }
    Changed = true;
    return rows;
}

QList<int> ConnectionPageState::ChosenRows() const {
    QList<int> rows;
    for (int row = 1; row < lstZPGSelTables.size(); ++row) {
        const QString& table = lstZPGSelTables[row];
        const QString bare = table.mid(run->gDelimOpen.size()).chopped(run->gDelimClose.size());
        for (const QString& name : {table, bare})
            if (lstZPGSelectedTables.contains(name, Qt::CaseInsensitive) && !rows.contains(row)) rows << row;
    }
    return rows;
}

bool ConnectionPageState::ConnectionTimeoutChanged(const QString& text) {
    return TimeoutChanged(txtConnectionTimeout, text);
}

bool ConnectionPageState::CommandTimeoutChanged(const QString& text) {
    return TimeoutChanged(txtCommandTimeout, text);
}

bool ConnectionPageState::TimeoutChanged(QString& timeout, const QString& text) {
    timeout = text;
    const bool isNumber = text::IsNumeric(text);
    if (isNumber) Changed = true;
    return isNumber;
}

QList<std::pair<QByteArray, QVariant>> ConnectionPageState::Apply() {
    QList<std::pair<QByteArray, QVariant>> values;
    values.append({"ZPBConnectionString", txtZPGDataConnection});
    if (const auto seconds = ToSeconds(txtCommandTimeout)) values.append({"ZPBCommandTimeout", *seconds});
    if (const auto seconds = ToSeconds(txtConnectionTimeout)) values.append({"ConnectionTimeout", *seconds});
    values.append({"ZPBCommandType", cmbZPGCommandType});
    values.append({"ZPBTableString", tableString});
    Changed = false;
    return values;
}

void ConnectionPageState::Choose(const QString& table) {
    lstZPGSelectedTables << table;
    run->OfferedTables.Add(table);
}

void ConnectionPageState::ClearChosen() {
    tableString.clear();
    lstZPGSelectedTables.clear();
    run->OfferedTables.Clear();
}

}  // namespace zephrin
