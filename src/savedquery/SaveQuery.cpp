#include "savedquery/SaveQuery.h"

#include "flow/FieldTab.h"
#include "runstate/clsBridge.h"
#include "savedquery/QueryFamily.h"
#include "savedquery/QueryMaster.h"
#include "savedquery/QueryValues.h"

#include <zephrin/ado/Error.h>

#include <QDir>

namespace zephrin {

namespace {

/// The file dialog would ask about the name that was typed; the file that is written may be called otherwise.
bool MayOverwrite(ZPGGlobalDeclarations& state, QueryFiles& files, const QString& master) {
    if (!files.Exists(master)) return true;
    const QString question = QStringLiteral("%1 already exists.\r\nDo you want to replace it ?")
                                 .arg(QDir::toNativeSeparators(master));
    return state.UserPrompts->MsgBox(question,
                                     BoxStyle::YesNo + BoxStyle::Exclamation + BoxStyle::DefaultSecond,
                                     QStringLiteral("Save Query")) == BoxAnswer::Yes;
}

/// The chosen name whole; empty for Cancel.
QString AskForName(ZPGGlobalDeclarations& state) {
    Prompts::FileChoice choice;
    choice.Title = QStringLiteral("Save Query");
    choice.Filter = QueryFilter();
    return state.UserPrompts->ShowSave(choice);
}

/// A recordset that is closed or was never made is saved as one without columns and rows.
ado::RecordsetPtr Saveable(const ado::RecordsetPtr& rows) {
    if (rows && rows->IsOpen()) return rows;
    auto empty = std::make_shared<ado::Recordset>();
    empty->Open();
    return empty;
}

/// Every file of the family: the companions in their order, the master behind them.
std::vector<FamilyFile> MakeFamily(ZPGGlobalDeclarations& state, const QString& base, QStringList& leftOut) {
    std::vector<FamilyFile> family;
    QueryMaster master = DescribeConnection(state);
    for (size_t each = 0; each < CompanionCount; ++each) {
        const Companion& companion = Companions()[each];
        FamilyFile file{CompanionPath(base, companion), {}};
        if (!companion.Rows) {
            file.Rows = ValuesToRows(ReadForm(state), leftOut);
        } else if (companion.Always || HasRows(state.*companion.Rows)) {
            file.Rows = Saveable(state.*companion.Rows);
        }
        if (file.Rows) master.Paths[each] = file.Path;
        family.push_back(std::move(file));
    }
    // It holds the password as it was given.
    family.push_back(
        {MasterPath(base), MasterToRows(master, leftOut), ado::Recordset::FileAccess::OwnerOnly});
    return family;
}

/// Names the file, which need not be called as it was typed.
QString SavedText(const QString& master, const QStringList& leftOut) {
    const QString saved = QStringLiteral("Query saved as ") + QDir::toNativeSeparators(master);
    if (leftOut.isEmpty()) return saved + QStringLiteral(" ..");
    return saved + QStringLiteral(", too long to be saved: ") + leftOut.join(QStringLiteral(", ")) +
           QStringLiteral(" ..");
}

}  // namespace

SaveOutcome SaveQuery(ZPGGlobalDeclarations& state, QueryFiles& files) {
    BuildSelFields(state);
    state.Form->QueryPath.clear();
    const int showing = state.Showing;
    const QString name = AskForName(state);
    if (state.Showing != showing || name.isEmpty()) return SaveOutcome::Cancelled;
    const QString base = QueryBase(name);
    if (base.isEmpty()) {
        SetStatusText(state, QStringLiteral("The query was not saved: the name is too short .."));
        return SaveOutcome::Failed;
    }
    if (!MayOverwrite(state, files, MasterPath(base)) || state.Showing != showing)
        return SaveOutcome::Cancelled;
    QStringList leftOut;
    try {
        ReplaceFamily(files, MakeFamily(state, base, leftOut));
    } catch (const ado::Error& error) {
        SetStatusText(state, QStringLiteral("The query was not saved: %1 ..").arg(error.Description()));
        return SaveOutcome::Failed;
    }
    SetStatusText(state, SavedText(MasterPath(base), leftOut));
    state.Bridge().PassSavedQueryName(name);
    return SaveOutcome::Saved;
}

void DeleteQuery(ZPGGlobalDeclarations& state, QueryFiles& files) {
    const int showing = state.Showing;
    Prompts::FileChoice choice;
    choice.Title = QStringLiteral("Delete Query");
    choice.Filter = QueryFilter();
    choice.MustExist = true;
    const QString path = state.UserPrompts->ShowOpen(choice);
    if (state.Showing != showing || path.isEmpty()) return;
    const BoxAnswer answer =
        state.UserPrompts->MsgBox(ResString(state, 161) + u' ' + path, BoxStyle::YesNo + BoxStyle::Question,
                                  state.Options.gRunTimeCaption);
    if (state.Showing != showing || answer != BoxAnswer::Yes) return;
    QStringList failures;
    const auto remove = [&](const QString& file) {
        try {
            files.Remove(file);
        } catch (const ado::Error& error) {
            failures << error.Description();
        }
    };
    // The master first: without it the others are no query.
    remove(path);
    if (const QString base = QueryBase(path); failures.isEmpty() && !base.isEmpty())
        for (const Companion& companion : Companions()) remove(CompanionPath(base, companion));
    if (!failures.isEmpty()) {
        SetStatusText(state, QStringLiteral("The query was not deleted whole: %1 ..").arg(failures.first()));
        return;
    }
    state.Bridge().PassDeleteQueryName(path);
}

}  // namespace zephrin
