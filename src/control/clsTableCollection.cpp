#include "platform/text/Text.h"
#include "runstate/Retrieval.h"
#include "wizard/Hourglass.h"

#include <zephrin/clsTableCollection.h>

#include <cmath>
#include <limits>
#include <optional>

namespace zephrin {

namespace {

constexpr int alreadyThere = 171;
constexpr int unableToAdd = 172;
constexpr int notThere = 173;
constexpr int unableToRemove = 174;

QString Delimited(const ZPGGlobalDeclarations& state, const QString& name) {
    if (name.left(1) == state.gDelimOpen) return name;
    return state.gDelimOpen + name + state.gDelimClose;
}

void TellNoConnection(const ZPGGlobalDeclarations& state) {
    state.UserPrompts->MsgBox(ResString(state, 168) + QStringLiteral("\r\n") + ResString(state, 169) +
                                  QStringLiteral("\r\n") + ResString(state, 170),
                              BoxStyle::Critical, QStringLiteral("AddTable Method"));
}

void TellBusy(const ZPGGlobalDeclarations& state) {
    state.UserPrompts->MsgBox(BusyError(state).Description(), BoxStyle::Critical,
                              QStringLiteral("AddTable Method"));
}

void TellUnknownTable(const ZPGGlobalDeclarations& state, const QString& name) {
    state.UserPrompts->MsgBox(ResString(state, 166) + name + ResString(state, 167), BoxStyle::Critical,
                              QStringLiteral("Add Table method"));
}

/// "Table : 'X' <what>" and, below, what that prevented. Both methods speak under the title of the first.
void TellRefusal(const ZPGGlobalDeclarations& state, const QString& name, int what, int outcome) {
    state.UserPrompts->MsgBox(ResString(state, 166) + name + ResString(state, what) + QStringLiteral("\r\n") +
                                  ResString(state, outcome),
                              BoxStyle::Critical, QStringLiteral("AddTable Method"));
}

bool IsInDatabase(clsFieldRetrieval& retrieval, const QString& table) {
    Hourglass pointer;
    pointer.Show(MousePointer::Hourglass);
    return !retrieval.FieldCollection(Collection({table})).IsEmpty();
}

/// The position that a host means by a number or by a text that reads as one; nothing for a name.
std::optional<int> AsPosition(const QVariant& index) {
    // A flag is a number, too, and none that a position has.
    if (index.typeId() == QMetaType::Bool) return 0;
    bool isNumber = false;
    const double value = index.toDouble(&isNumber);
    const bool isText = index.typeId() == QMetaType::QString;
    const std::optional<double> number = isText     ? text::ToNumber(index.toString())
                                         : isNumber ? std::optional(value)
                                                    : std::nullopt;
    if (!number) return std::nullopt;
    // A half goes to the even neighbour; what no list can be long enough for stands nowhere.
    const double rounded = std::nearbyint(*number);
    const bool fits = rounded >= 1 && rounded <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(rounded) : 0;
}

}  // namespace

void clsTableCollection::AddTable(const QString& tableName) {
    const std::shared_ptr<ZPGGlobalDeclarations> state = run.lock();
    if (!state) return;
    if (state->SharedConnection().ConnectionString().isEmpty()) return TellNoConnection(*state);
    if (tableName.isEmpty()) return;
    const QString table = Delimited(*state, tableName);
    if (IsBusy(*state)) return TellBusy(*state);
    clsFieldRetrieval retrieval(*state);
    const bool found = IsInDatabase(retrieval, table);
    // Who stopped it knows.
    if (retrieval.WasStopped()) return;
    if (!found) return TellUnknownTable(*state, tableName);
    if (!state->OfferedTables.Add(table)) TellRefusal(*state, tableName, alreadyThere, unableToAdd);
}

void clsTableCollection::RemoveTable(const QVariant& tableIndex) {
    const std::shared_ptr<ZPGGlobalDeclarations> state = run.lock();
    if (!state) return;
    const std::optional<int> position = AsPosition(tableIndex);
    const QString name = tableIndex.toString();
    const bool removed = position ? state->OfferedTables.RemoveAt(*position)
                                  : state->OfferedTables.Remove(Delimited(*state, name));
    if (!removed) TellRefusal(*state, name, notThere, unableToRemove);
}

QString clsTableCollection::GetTableName(int item) const {
    const std::shared_ptr<ZPGGlobalDeclarations> state = run.lock();
    return state ? state->OfferedTables.Item(item) : QString();
}

int clsTableCollection::CountTableCollection() const {
    const std::shared_ptr<ZPGGlobalDeclarations> state = run.lock();
    return state ? state->OfferedTables.Count() : 0;
}

}  // namespace zephrin
