#include "Player.h"

#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTextStream>

#include <cstdio>

namespace demo {

namespace {

constexpr int shownRows = 8;

}  // namespace

int Player::Run() {
    try {
        Connect();
        PlayOneTable();
        // The connection outlives the wizard: the second showing needs none of its own.
        PlayJoin();
        TakePicture(QStringLiteral("0-host"), &window);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "The demo could not go on: %s\n%s", failure.what(),
                     qPrintable(window.Log()->Text()));
        return 1;
    }
    QTextStream out(stdout);
    out << "Events:\n" << window.Log()->Text();
    if (!folder.isEmpty()) out << "\nPictures of the wizard: " << QDir(folder).path() << "/*.png\n";
    return 0;
}

void Player::PlayOneTable() {
    ShowWizard();
    ChooseTables({QStringLiteral("[Orders]")});
    ChooseFields({QStringLiteral("[Orders].[OrderID]"), QStringLiteral("[Orders].[Order Date]"),
                  QStringLiteral("[Orders].[Freight]"), QStringLiteral("[Orders].[Paid]"),
                  QStringLiteral("[Orders].[Comment]")});
    LimitRows();
    RunQuery();
    SortRows();
    TakePicture(QStringLiteral("6-sorted"));
    CloseWizard();
    ReportQuery();
}

void Player::PlayJoin() {
    ShowWizard();
    ChooseTables({QStringLiteral("[Customers]"), QStringLiteral("[Orders]")});
    TakePicture(QStringLiteral("1-select-tables"));
    JoinTables();
    TakePicture(QStringLiteral("2-build-joins"));
    ChooseFields({QStringLiteral("[Customers].[Customer Name]"), QStringLiteral("[Customers].[City]"),
                  QStringLiteral("[Orders].[Order Date]"), QStringLiteral("[Orders].[Freight]")});
    TakePicture(QStringLiteral("3-select-fields"));
    OpenTab(3);
    AddCriterion(QStringLiteral("[Freight]"), QStringLiteral(">="), QStringLiteral("25"));
    AddCriterion(QStringLiteral("[Customer Name]"), QStringLiteral("contains"), QStringLiteral("o"));
    OrderBy(QStringLiteral("[Customer Name]"));
    TakePicture(QStringLiteral("4-build-query"));
    RunQuery();
    TakePicture(QStringLiteral("5-query-results"));
    CloseWizard();
    ReportQuery();
}

void Player::LimitRows() {
    OpenTab(3);
    Press(QStringLiteral("chkDistinct"));
    auto* top = Find<QLineEdit>(QStringLiteral("txtTopX"));
    QTest::mouseClick(top, Qt::LeftButton);
    QTest::keyClicks(top, QStringLiteral("250"));
}

void Player::SortRows() {
    auto* grid = Find<QWidget>(QStringLiteral("dgrQueryResults"))->findChild<QTableView*>();
    auto* head = grid->horizontalHeader();
    const QPoint middle(head->sectionViewportPosition(2) + head->sectionSize(2) / 2, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, middle);
    Press(QStringLiteral("cmdDesc"));
}

void Player::ReportQuery() {
    QTextStream out(stdout);
    out << "Statement:\n" << statement.trimmed() << "\n\n";
    out << "The first of " << rows->RecordCount() << " rows:\n" << RowsAsText(rows, shownRows) << "\n\n";
}

}  // namespace demo
