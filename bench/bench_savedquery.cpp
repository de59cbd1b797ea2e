// Saving and opening a query of 20 tables, 2,000 fields and 100 rows of criteria, and how both grow when each
// doubles.

#include "bench/Measure.h"
#include "platform/ado/providers/AllProviders.h"
#include "savedquery/OpenQuery.h"
#include "savedquery/SaveQuery.h"
#include "sqlgen/WhereClause.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace zephrin::bench {
namespace {

struct Size {
    int Tables;
    int Fields;
    int Criteria;
};

class OnePath : public Prompts {
 public:
    explicit OnePath(QString queryPath) : path(std::move(queryPath)) {}
    BoxAnswer MsgBox(const QString&, int, const QString&) override { return BoxAnswer::Yes; }
    QString InputBox(const QString&, const QString&, const QString&) override { return {}; }
    QString ShowOpen(const FileChoice&) override { return path; }
    QString ShowSave(const FileChoice&) override { return path; }
    QString PromptNewConnection(const QString&) override { return {}; }
    void ShowAbout(const QString&, const QString&) override {}

 private:
    QString path;
};

void Fill(ZPGGlobalDeclarations& state, const Size& size) {
    CreateWorkingRecordsets(state);
    FormState& form = *state.Form;
    for (int table = 0; table < size.Tables; ++table)
        form.lstZPQTableTo.Items.AddItem(QStringLiteral("[Table %1]").arg(table));
    state.colTables = Collection(form.lstZPQTableTo.Items.Items());
    for (int field = 0; field < size.Fields; ++field)
        state.colFields.Add(QStringLiteral("[Table %1].[Field %2]").arg(field % size.Tables).arg(field));
    form.lstZPQFieldTo.Items.AddItems(state.colFields.Items());
    SyncCriteriaColumns(state);
    for (int row = 0; row < size.Criteria; ++row) {
        state.rsWhere->AddNew();
        for (int cell = 0; cell < 5; ++cell)
            state.rsWhere->SetValue((row * 7 + cell * 31) % size.Fields,
                                    QStringLiteral("= 'value %1'").arg(row));
        state.rsWhere->Update();
    }
}

struct Times {
    double Save;
    double Open;
};

Times Measure(const Size& size) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Query.zpb"));
    const auto prompts = std::make_shared<OnePath>(path);
    std::vector<double> saves, opens;
    for (int run = 0; run < 5; ++run) {
        ZPGGlobalDeclarations state(ado::providers::AllProviders(), prompts);
        Fill(state, size);
        saves.push_back(Seconds([&] { SaveQuery(state); }));
        ZPGGlobalDeclarations other(ado::providers::AllProviders(), prompts);
        CreateWorkingRecordsets(other);
        opens.push_back(Seconds([&] { OpenSavedQuery(other, path); }));
    }
    return {Median(saves), Median(opens)};
}

void Main() {
    const Size base{20, 2000, 100};
    const Times one = Measure(base);
    std::printf("Query of %d tables, %d fields, %d rows of criteria\n", base.Tables, base.Fields,
                base.Criteria);
    PrintRow("save", one.Save, one.Save);
    PrintRow("open", one.Open, one.Save);
    const struct {
        const char* What;
        Size Grown;
    } rows[] = {{"twice the tables", {40, 2000, 100}},
                {"twice the fields", {20, 4000, 100}},
                {"twice the criteria", {20, 2000, 200}}};
    for (const auto& row : rows) {
        const Times times = Measure(row.Grown);
        std::printf("%s\n", row.What);
        PrintRow("save, against the first", times.Save, one.Save);
        PrintRow("open, against the first", times.Open, one.Open);
    }
}

}  // namespace
}  // namespace zephrin::bench

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    zephrin::bench::Main();
}
