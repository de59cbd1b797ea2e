#include "savedquery/SaveQuery.h"

#include "flow/FieldTab.h"
#include "platform/files/Disk.h"
#include "runstate/clsBridge.h"
#include "savedquery/QueryChanges.h"
#include "savedquery/QueryFamily.h"
#include "savedquery/QueryMaster.h"
#include "savedquery/QueryValues.h"
#include "savedquery/ReplaceFamily.h"

#include <zephrin/ado/Error.h>

#include <QDir>
#include <QFile>

namespace zephrin {

namespace {

/// The file dialog would ask about the name that was typed; the file that is written may be called otherwise.
bool MayOverwrite(ZPGGlobalDeclarations& state, const QString& master) {
    if (!QFile::exists(master)) return true;
    const QString question = QStringLiteral("%1 already exists.\r\nDo you want to replace it ?")
                                 .arg(QDir::toNativeSeparators(master));
    return state.UserPrompts->MsgBox(question,
                                     BoxStyle::YesNo + BoxStyle::Exclamation + BoxStyle::DefaultSecond,
                                     QStringLiteral("Save Query")) == BoxAnswer::Yes;
}

/// The chosen name whole; empty for Cancel, and where the showing ends behind the box. Who doesn't want to
/// replace a query wants another name.
QString AskForName(ZPGGlobalDeclarations& state) {
    const int showing = state.Showing;
    Prompts::FileChoice choice;
    choice.Title = QStringLiteral("Save Query");
    choice.Filter = QueryFilter();
    for (;;) {
        const QString name = state.UserPrompts->ShowSave(choice);
        if (state.Showing != showing || name.isEmpty()) return {};
        const QString base = QueryBase(name);
        const bool agreed = base.isEmpty() || MayOverwrite(state, MasterPath(base));
        if (state.Showing != showing) return {};
        if (agreed) return name;
    }
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
            file.Xml = ValuesToRows(ReadForm(state), leftOut)->ToXml();
        } else if (companion.Always || HasRows(state.*companion.Rows)) {
            file.Xml = Saveable(state.*companion.Rows)->ToXml();
        }
        if (file.Xml) master.Paths[each] = file.Path;
        family.push_back(std::move(file));
    }
    family.push_back({MasterPath(base), MasterToRows(master, leftOut)->ToXml()});
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

SaveOutcome SaveQuery(ZPGGlobalDeclarations& state) {
    BuildSelFields(state);
    state.Form->QueryPath.clear();
    const QString name = AskForName(state);
    if (name.isEmpty()) return SaveOutcome::Cancelled;
    const QString base = QueryBase(name);
    if (base.isEmpty()) {
        SetStatusText(state, QStringLiteral("The query was not saved: the name is too short .."));
        return SaveOutcome::Failed;
    }
    QStringList leftOut;
    const auto failed = [&state](const QString& reason) {
        SetStatusText(state, QStringLiteral("The query was not saved: %1 ..").arg(reason));
        return SaveOutcome::Failed;
    };
    try {
        ReplaceFamily(MakeFamily(state, base, leftOut));
    } catch (const files::Failure& failure) {
        return failed(failure.Text());
    } catch (const ado::Error& error) {
        return failed(error.Description());
    }
    if (leftOut.isEmpty()) KeepQuery(state);
    SetStatusText(state, SavedText(MasterPath(base), leftOut));
    state.Bridge().PassSavedQueryName(name);
    return SaveOutcome::Saved;
}

void DeleteQuery(ZPGGlobalDeclarations& state) {
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
    std::vector<QString> companions;
    if (const QString base = QueryBase(path); !base.isEmpty())
        for (const Companion& companion : Companions()) companions.push_back(CompanionPath(base, companion));
    try {
        RemoveFamily(companions, path);
    } catch (const files::Failure& failure) {
        SetStatusText(state, QStringLiteral("The query was not deleted whole: %1 ..").arg(failure.Text()));
        return;
    }
    state.Bridge().PassDeleteQueryName(path);
}

}  // namespace zephrin
