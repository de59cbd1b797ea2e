#include "Guide.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>
#include <QTextEdit>

#include <cstdio>

namespace demo {

namespace {

const QString customers = QStringLiteral("[Customers]");
const QString orders = QStringLiteral("[Orders]");

/// Makes the first cell of the column that has this head the current one.
void GoToColumn(QTableView& grid, const QString& head) {
    const QAbstractItemModel* model = grid.model();
    for (int column = 0; column < model->columnCount(); ++column)
        if (model->headerData(column, Qt::Horizontal).toString() == head)
            grid.setCurrentIndex(model->index(0, column));
    grid.setFocus();
}

}  // namespace

int Guide::Run() {
    // A caret that blinks would be in one picture and not in the next.
    QApplication::setCursorFlashTime(0);
    try {
        Connect();
        ShowStepByStep();
        ShowGroups();
        ShowDialogs();
        ShowWaiting();
    } catch (const Failure& failure) {
        std::fprintf(stderr, "The guide could not go on: %s\n%s", failure.what(),
                     qPrintable(window.Log()->Text()));
        return 1;
    }
    return 0;
}

void Guide::ShowStepByStep() {
    ShowWizard();
    ChooseTables({customers, orders});
    TakePicture(QStringLiteral("using-tables"));
    JoinTables();
    TakePicture(QStringLiteral("using-joins"));
    ChooseFields({QStringLiteral("[Customers].[Customer Name]"), QStringLiteral("[Customers].[City]"),
                  QStringLiteral("[Orders].[Order Date]"), QStringLiteral("[Orders].[Freight]")});
    TakePicture(QStringLiteral("using-fields"));
    OpenTab(3);
    AddCriterion(QStringLiteral("[Freight]"), QStringLiteral(">="), QStringLiteral("25"));
    Pick(QStringLiteral("lstSelectedFields"), QStringLiteral("[Customer Name]"));
    Pick(QStringLiteral("lstOperands"), QStringLiteral("contains"));
    QTest::keyClicks(Find<QComboBox>(QStringLiteral("cmbAvailableValues1")), QStringLiteral("o"));
    TakePicture(QStringLiteral("using-limit"));
    Press(QStringLiteral("cmdCommit"));
    OrderBy(QStringLiteral("[Customer Name]"));
    TakePicture(QStringLiteral("build-query"));
    RunQuery();
    TakePicture(QStringLiteral("query-results"));
    CloseWizard();
}

void Guide::ShowGroups() {
    ShowWizard();
    ChooseTables({orders});
    OpenTab(3);
    Press(QStringLiteral("optQuery_1"));
    const std::pair<QString, QString> rowsOfGroup[] = {
        {QStringLiteral("[CustomerID]"), QStringLiteral("GROUP BY")},
        {QStringLiteral("[Freight]"), QStringLiteral("SUM")},
        {QStringLiteral("[Freight]"), QStringLiteral("MAX")},
    };
    for (const auto& [field, how] : rowsOfGroup) {
        Pick(QStringLiteral("lstSelectedFields"), field);
        Pick(QStringLiteral("lstOperands"), how);
        AnswerNextBox(QMessageBox::Yes);
        Press(QStringLiteral("cmdCommit"));
    }
    TakePicture(QStringLiteral("using-groups"));
    TakeDialog(QStringLiteral("cmdEditGroup"), QStringLiteral("frmFieldOrder"), QStringLiteral("using-order"),
               [](QDialog& dialog) {
                   auto* list = FindIn<QAbstractItemView>(dialog, QStringLiteral("lstFields"));
                   const QModelIndex second = list->model()->index(1, 0);
                   QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(second).center());
               });
    CloseWizard();
}

void Guide::ShowDialogs() {
    ShowWizard();
    ChooseTables({orders});
    ChooseFields({QStringLiteral("[Orders].[OrderID]"), QStringLiteral("[Orders].[Freight]")});
    OpenTab(3);
    AddCriterion(QStringLiteral("[Freight]"), QStringLiteral(">="), QStringLiteral("25"));
    TakeDialog(QStringLiteral("cmdCalcField"), QStringLiteral("frmCalcFields"),
               QStringLiteral("using-calculate"), [](QDialog& dialog) {
                   QTest::keyClicks(FindIn<QPlainTextEdit>(dialog, QStringLiteral("txtCriteria")),
                                    QStringLiteral("[Orders].[Freight] * 1.19"));
                   auto* alias = FindIn<QLineEdit>(dialog, QStringLiteral("txtAlias"));
                   alias->setFocus();
                   QTest::keyClicks(alias, QStringLiteral("FreightWithTax"));
               });
    Press(QStringLiteral("cmdEditWhere"));
    auto* grid = Find<QWidget>(QStringLiteral("dgrSQL"))->findChild<QTableView*>();
    GoToColumn(*grid, QStringLiteral("[Orders].[Freight]"));
    TakePicture(QStringLiteral("using-grid"));
    OnNextDialog(QStringLiteral("frmCriteriaBuilder"), [this](QDialog& dialog) {
        TakePicture(QStringLiteral("using-keypad"), &dialog);
        dialog.reject();
    });
    QTest::keyClick(grid, Qt::Key_F4);
    CloseWizard();
}

/// A join that somebody forgot to finish, two seconds on.
void Guide::ShowWaiting() {
    ShowWizard();
    ChooseTables({orders});
    ChooseFields({QStringLiteral("[Orders].[OrderID]")});
    OpenTab(3);
    Find<QTextEdit>(QStringLiteral("txtSQL"))
        ->setPlainText(
            QStringLiteral("SELECT COUNT(*)\nFROM [Orders] a, [Orders] b, [Orders] c, [Orders] d"));
    std::string failed;
    QMetaObject::Connection watched;
    watched = QObject::connect(window.Control(), &zephrin::Zephrin::Busy, &window,
                               [&](const QString&, qint64, int seconds) {
                                   if (seconds < 2) return;
                                   // Nothing may be thrown through what is waited for.
                                   try {
                                       TakePicture(QStringLiteral("using-waiting"));
                                   } catch (const Failure& failure) {
                                       failed = failure.what();
                                   }
                                   QObject::disconnect(watched);
                                   window.Control()->StopWork();
                               });
    Press(QStringLiteral("cmdRunQuery"));
    if (!failed.empty()) throw Failure(failed);
    CloseWizard();
}

void Guide::TakeDialog(const QString& button, const QString& dialog, const QString& picture,
                       const std::function<void(QDialog&)>& act) {
    OnNextDialog(dialog, [this, picture, act](QDialog& shown) {
        act(shown);
        TakePicture(picture, &shown);
        shown.reject();
    });
    Press(button);
}

}  // namespace demo
