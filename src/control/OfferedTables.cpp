#include "control/OfferedTables.h"

namespace zephrin {

void LoadTableString(ZPGGlobalDeclarations& state, const QString& tableString) {
    Collection& offer = state.OfferedTables;
    offer.Clear();
    const qsizetype length = tableString.size();
    // The rule counts from 1: the scan goes on while the position is less than the length, so that it ends at
    // the last character and never reads a name of that one character.
    qsizetype position = 1;
    while (position < length) {
        const qsizetype end = tableString.indexOf(u';', position - 1) + 1;
        const QString name =
            end > 0 ? tableString.mid(position - 1, end - position) : tableString.mid(position - 1);
        if (!name.isEmpty()) offer.Add(name);
        if (end == 0) return;
        position = end + 1;
    }
}

void LoadSchemaTables(ZPGGlobalDeclarations& state, bool removeSystemTables) {
    Collection& offer = state.OfferedTables;
    offer.Clear();
    if (!HasRows(state.rsSchemaTables)) return;
    ado::Recordset& schema = *state.rsSchemaTables;
    for (schema.MoveFirst(); !schema.Eof(); schema.MoveNext()) {
        const QString type = removeSystemTables ? schema.Value(u"Table_Type").toString() : QString();
        if (removeSystemTables && type != QLatin1StringView("TABLE") && type != QLatin1StringView("VIEW"))
            continue;
        // The same name in two schemas is one entry: nothing else tells them apart here.
        offer.Add(state.gDelimOpen + schema.Value(u"TABLE_NAME").toString() + state.gDelimClose);
    }
}

}  // namespace zephrin
