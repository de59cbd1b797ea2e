#include "wizard/ResultsTabPage.h"

#include "output/RunQuery.h"
#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "wizard/Build.h"
#include "wizard/ExportMeans.h"
#include "wizard/ShowControl.h"
#include "wizard/Splits.h"
#include "wizard/frmExcelDataChoice.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin {

ResultsTabPage::ResultsTabPage(WizardHost& wizardHost)
    : WizardPage(wizardHost, QStringLiteral("tabResults")) {
    txtSQLErrors = new controls::ColouredText;
    txtSQLErrors->setObjectName(QStringLiteral("txtSQLErrors"));
    txtSQLErrors->setReadOnly(true);
    txtSQLErrors->setTabChangesFocus(true);
    txtSQLErrors->setFixedHeight(txtSQLErrors->fontMetrics().lineSpacing() * 4);
    dgrQueryResults = new controls::DataGrid;
    dgrQueryResults->setObjectName(QStringLiteral("dgrQueryResults"));
    dgrQueryResults->SetAllowUpdate(false);
    dgrQueryResults->SetHeadText(tr("&Sort by This Column"));
    lblTruncated = MakeLabel(QStringLiteral("lblTruncated"), 0, dgrQueryResults);
    lblTruncated->hide();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeLabel(QStringLiteral("lblSQLErrors"), 135, txtSQLErrors));
    layout->addWidget(txtSQLErrors);
    layout->addWidget(MakeLabel(QStringLiteral("lblQueryResults"), 133, dgrQueryResults));
    layout->addWidget(dgrQueryResults, 1);
    layout->addWidget(lblTruncated);
    layout->addWidget(MakeFoot());
    ConnectControls();
}

QWidget* ResultsTabPage::MakeFoot() {
    auto* foot = new QWidget;
    QGroupBox* fraSort = MakeFrame(QStringLiteral("fraSort"), 134);
    cmdAsc = MakeButton(QStringLiteral("cmdAsc"), 227, QStringLiteral("sort-asc"));
    cmdDesc = MakeButton(QStringLiteral("cmdDesc"), 228, QStringLiteral("sort-desc"));
    auto* sort = new QHBoxLayout(fraSort);
    sort->addWidget(cmdAsc);
    sort->addWidget(cmdDesc);
    cmdResAddSplit = MakeButton(QStringLiteral("cmdResAddSplit"), 124, QStringLiteral("split"));
    cmdResDeleteSplit = MakeButton(QStringLiteral("cmdResDeleteSplit"), 125, QStringLiteral("unsplit"));
    fraExcel = MakeFrame(QStringLiteral("fraExcel"), 229);
    cmdExcel = MakeButton(QStringLiteral("cmdExcel"), 229, QStringLiteral("excel"));
    auto* excel = new QHBoxLayout(fraExcel);
    excel->addWidget(cmdExcel);

    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(fraSort);
    layout->addWidget(cmdResAddSplit, 0, Qt::AlignBottom);
    layout->addWidget(cmdResDeleteSplit, 0, Qt::AlignBottom);
    layout->addStretch();
    layout->addWidget(fraExcel);
    return foot;
}

void ResultsTabPage::ConnectControls() {
    OnClick(cmdAsc, [](ZPGGlobalDeclarations& state) { SortResults(state, false); });
    OnClick(cmdDesc, [](ZPGGlobalDeclarations& state) { SortResults(state, true); });
    connect(dgrQueryResults, &controls::DataGrid::HeadClick, this, [this](int column) {
        Host().Run([column](ZPGGlobalDeclarations& state) { state.Form->SortColumn = column; });
    });
    OnClick(cmdExcel, [this](ZPGGlobalDeclarations& state) { Export(state); });
    OnClick(cmdResAddSplit, [this](ZPGGlobalDeclarations& state) {
        AddSplit(state, dgrQueryResults, state.Form->cmdResDeleteSplit);
    });
    OnClick(cmdResDeleteSplit, [this](ZPGGlobalDeclarations& state) {
        RemoveSplit(state, dgrQueryResults, state.Form->cmdResDeleteSplit);
    });
}

void ResultsTabPage::Export(ZPGGlobalDeclarations& state) {
    const QPointer<ResultsTabPage> page(this);
    const ExportRoute route = BeginExport(state);
    if (!page || route == ExportRoute::Done) return;
    if (route == ExportRoute::OleDb) {
        ExportWithOleDb(state, MakeExportMeans(state));
        return;
    }
    QString choice;
    if (WizardDialog::Run(new frmExcelDataChoice(state, choice, window())) && !choice.isEmpty())
        ExportWithOdbc(state, choice, MakeExportMeans(state));
}

void ResultsTabPage::ShowTruncation(const GridState& grid) {
    const bool cut = grid.DataSource && grid.DataSource->Truncated();
    if (cut) {
        lblTruncated->setText(tr("Only the first %1 rows are shown: the host limits the number of rows.")
                                  .arg(grid.DataSource->RecordCount()));
    }
    lblTruncated->setVisible(cut);
}

void ResultsTabPage::ShowState(FormState& form) {
    ShowColouredText(txtSQLErrors, form.txtSQLErrors);
    ShowGrid(dgrQueryResults, form.dgrQueryResults);
    // A query that is begun anew is shown in one pane.
    while (!form.cmdResDeleteSplit.Enabled && dgrQueryResults->SplitCount() > 1)
        dgrQueryResults->RemoveSplit();
    dgrQueryResults->MarkColumn(form.dgrQueryResults.DataSource ? form.SortColumn : -1);
    dgrQueryResults->SetEmptyText(form.dgrQueryResults.DataSource ? tr("No rows")
                                                                  : tr("No query has run yet."));
    ShowTruncation(form.dgrQueryResults);
    ShowControl(cmdAsc, form.cmdAsc);
    ShowControl(cmdDesc, form.cmdDesc);
    ShowControl(cmdResAddSplit, form.cmdResAddSplit);
    ShowControl(cmdResDeleteSplit, form.cmdResDeleteSplit);
    ShowControl(fraExcel, form.fraExcel);
    ShowControl(cmdExcel, form.cmdExcel);
}

}  // namespace zephrin
