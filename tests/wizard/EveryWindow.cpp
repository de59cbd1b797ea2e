#include "wizard/EveryWindow.h"

#include "platform/ado/providers/AllProviders.h"
#include "platform/dialogs/DataLinkDialog.h"
#include "wizard/frmCalcFields.h"
#include "wizard/frmCriteriaBuilder.h"
#include "wizard/frmExcelDataChoice.h"
#include "wizard/frmFieldOrder.h"
#include "wizard/frmTableJoinTypes.h"

#include <QTabWidget>
#include <QTest>

namespace zephrin::test {

void EveryWindow::Begin() {
    Connect();
    state->Options.gAllowCreateView = true;
    state->Options.gAllowSaveDelete = true;
    Show();
    ChooseOneTable(QStringLiteral("[Orders]"), {QStringLiteral("[Orders].[OrderID]")});
    State().TabZPG.TabEnabled.fill(true);
    ShowFormNow(*state);
}

void EveryWindow::End() {
    state->gClosingSilently = true;
    form->close();
    form.reset();
}

void EveryWindow::VisitTabs(const Visit& visit) {
    auto* tabs = Find<QTabWidget>("TabZPG");
    for (int tab = 0; tab < tabs->count(); ++tab) {
        State().TabZPG.TabEnabled.fill(true);
        ShowFormNow(*state);
        ChooseTab(tab);
        ASSERT_EQ(tabs->currentIndex(), tab);
        QCoreApplication::processEvents();
        visit(*form, QStringLiteral("frmZPG tab %1").arg(tab));
    }
    ChooseTab(3);
    Find<QAbstractButton>("cmdEditWhere")->click();
    QCoreApplication::processEvents();
    visit(*form, QStringLiteral("frmZPG tab 3 with the grid"));
}

void EveryWindow::VisitDialog(QDialog* dialog, const QString& what, const Visit& visit) {
    const std::unique_ptr<QDialog> owned(dialog);
    dialog->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    visit(*dialog, what);
    dialog->hide();
}

void EveryWindow::VisitDataLink(const Visit& visit) {
    for (int page = 0; page < 4; ++page) {
        auto* dialog = new DataLinkDialog(QString(), ado::providers::AllProviders(), form.get());
        dialog->findChild<QTabWidget*>(QStringLiteral("tabPages"))->setCurrentIndex(page);
        VisitDialog(dialog, QStringLiteral("DataLinkDialog page %1").arg(page), visit);
    }
}

void EveryWindow::ForEach(const Visit& visit) {
    VisitTabs(visit);
    QString answer = QStringLiteral("=");
    VisitDialog(new frmCriteriaBuilder(*state, {}, form.get()), QStringLiteral("frmCriteriaBuilder"), visit);
    VisitDialog(new frmCalcFields(*state, form.get()), QStringLiteral("frmCalcFields"), visit);
    VisitDialog(new frmTableJoinTypes(*state, answer, form.get()), QStringLiteral("frmTableJoinTypes"),
                visit);
    VisitDialog(new frmExcelDataChoice(*state, answer, form.get()), QStringLiteral("frmExcelDataChoice"),
                visit);
    for (const char16_t* mode : {u"Group", u"Order", u"Calc"}) {
        state->EditMode = QString::fromUtf16(mode);
        VisitDialog(new frmFieldOrder(*state, form.get()),
                    QStringLiteral("frmFieldOrder for %1").arg(state->EditMode), visit);
    }
    VisitDataLink(visit);
}

}  // namespace zephrin::test
