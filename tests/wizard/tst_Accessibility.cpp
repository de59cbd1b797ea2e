#include "wizard/FormTest.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextEdit>

#include <gtest/gtest.h>

using namespace zephrin;

namespace {

using Accessibility = test::FormTest;

QString NameOf(QWidget* widget) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(QAccessible::Name) : QString();
}

/// What the Tab key reaches on the page, from its first control on.
QList<QWidget*> VisitOrder(QWidget* form, QWidget* page) {
    QList<QWidget*> order;
    for (QWidget* widget = form->nextInFocusChain(); widget != form; widget = widget->nextInFocusChain())
        if (page->isAncestorOf(widget) && widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy())
            order << widget;
    return order;
}

TEST_F(Accessibility, EveryControlOfTheDesignIsThere) {
    Connect();
    Show();
    const QMap<QString, QStringList> table = {
        {QStringLiteral("QTabWidget"), {QStringLiteral("TabZPG")}},
        {QStringLiteral("QStatusBar"), {QStringLiteral("stbZPB")}},
        {QStringLiteral("QListView"),
         QStringLiteral("lstZPQTableSelection lstZPQTableTo lstJoinFields_0 lstJoinFields_1 lstJoinCompare "
                        "lstZPQFieldFrom lstZPQFieldTo lstSelectedFields lstOperands")
             .split(u' ')},
        {QStringLiteral("QComboBox"),
         QStringLiteral("cmbJoinTables_0 cmbJoinTables_1 cmbJoinType cmbAvailableValues1 cmbAvailableValues2")
             .split(u' ')},
        {QStringLiteral("QPushButton"),
         QStringLiteral(
             "cmdExit cmdSaveQuery cmdDeleteQuery cmdOpenQuery cmdZPQTableRight cmdZPQTableRightAll "
             "cmdZPQTableLeft cmdZPQTableLeftAll cmdlockTables cmdAddJoin cmdResetJoins "
             "cmdZPQFieldRight cmdZPQFieldRightAll cmdZPQFieldLeft cmdZPQFieldLeftAll cmdCommit "
             "cmdFieldValues cmdEditWhere cmdEditGroup cmdEditOrder cmdEditCalcField cmdCalcField "
             "cmdSplit cmdDeleteSplit cmdSQLView cmdResetSQL cmdRunQuery cmdCreateView cmdAsc "
             "cmdDesc cmdExcel cmdResAddSplit cmdResDeleteSplit")
             .split(u' ')},
        {QStringLiteral("QRadioButton"),
         QStringLiteral("optQuery_0 optQuery_1 optQuery_2 optAndOr_0 optAndOr_1").split(u' ')},
        {QStringLiteral("QCheckBox"), QStringLiteral("chkDistinct chkPercent").split(u' ')},
        {QStringLiteral("QGroupBox"),
         QStringLiteral("fraBuildQuery fraAndOr fraQueryOptions fraExcel").split(u' ')},
        {QStringLiteral("QLabel"),
         QStringLiteral("lblTopX lblSQLLabel_0 lblSQLLabel_1 lblJoinTableFrom lblJoinTableTo lblJoinType "
                        "lblQuestionMark txtField txtOr_0 txtValue")
             .split(u' ')},
        {QStringLiteral("QLineEdit"), {QStringLiteral("txtTopX")}},
        {QStringLiteral("QTextEdit"), {QStringLiteral("txtSQL"), QStringLiteral("txtSQLErrors")}},
        {QStringLiteral("zephrin::controls::DataGrid"),
         QStringLiteral("dgrJoins dgrSQL dgrQueryResults").split(u' ')},
    };
    for (auto row = table.cbegin(); row != table.cend(); ++row) {
        for (const QString& name : row.value()) {
            const auto found = form->findChildren<QWidget*>(name);
            ASSERT_EQ(found.size(), 1) << qPrintable(name);
            EXPECT_TRUE(found.first()->inherits(qPrintable(row.key()))) << qPrintable(name);
        }
    }
}

TEST_F(Accessibility, EveryControlHasAName) {
    Connect();
    Show();
    const auto widgets = form->findChildren<QWidget*>();
    int seen = 0;
    for (QWidget* widget : widgets) {
        // Parts of a control that the toolkit makes have no name of their own in the form.
        const bool ours = !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
        if (!ours || widget->focusPolicy() == Qt::NoFocus) continue;
        ++seen;
        EXPECT_FALSE(NameOf(widget).isEmpty()) << qPrintable(widget->objectName());
    }
    EXPECT_GT(seen, 60);
}

TEST_F(Accessibility, NoTwoControlsOfATabShareAMnemonic) {
    Connect();
    Show();
    auto* tabs = Find<QTabWidget>("TabZPG");
    for (int i = 0; i < tabs->count(); ++i) {
        QMap<QString, QString> taken;
        const auto widgets = form->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            bool other = false;
            for (int j = 0; j < tabs->count(); ++j)
                other = other || (j != i && tabs->widget(j)->isAncestorOf(widget));
            const QVariant text = widget->property(widget->inherits("QGroupBox") ? "title" : "text");
            const QKeySequence key = QKeySequence::mnemonic(text.toString());
            if (other || widget->inherits("QLineEdit") || key.isEmpty()) continue;
            EXPECT_FALSE(taken.contains(key.toString()))
                << qPrintable(widget->objectName()) << " and " << qPrintable(taken.value(key.toString()));
            taken.insert(key.toString(), widget->objectName());
        }
    }
}

TEST_F(Accessibility, TheTabKeyGoesThroughAPageAsItIsRead) {
    Connect();
    Show();
    auto* tabs = Find<QTabWidget>("TabZPG");
    const QStringList expected[] = {
        QStringLiteral("lstZPQTableSelection cmdZPQTableRight cmdZPQTableRightAll cmdZPQTableLeft "
                       "cmdZPQTableLeftAll lstZPQTableTo")
            .split(u' '),
        QStringLiteral(
            "cmbJoinTables_0 cmbJoinTables_1 cmdlockTables lstJoinFields_0 lstJoinFields_1 cmbJoinType "
            "cmdAddJoin dgrJoins_pane_0 cmdResetJoins")
            .split(u' '),
    };
    for (int page = 0; page < 2; ++page) {
        QStringList names;
        for (const QWidget* widget : VisitOrder(form.get(), tabs->widget(page)))
            if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_") &&
                widget->objectName() != QLatin1StringView("lstJoinCompare"))
                names << widget->objectName();
        EXPECT_EQ(names.join(u' ').toStdString(), expected[page].join(u' ').toStdString());
    }
}

// In every font the texts fit the form at its smallest.
TEST_F(Accessibility, NoCaptionIsCut) {
    const QFont before = QApplication::font();
    struct Row {
        const char* Family;
        int Points;
    };
    const Row table[] = {{"Noto Sans", 8}, {"DejaVu Sans", 10}, {"DejaVu Sans", 16}, {"DejaVu Serif", 13}};
    Connect();
    state->Options.gAllowCreateView = true;
    state->Options.gAllowSaveDelete = false;
    for (const Row& row : table) {
        QApplication::setFont(QFont(QString::fromLatin1(row.Family), row.Points));
        Show();
        State().TabZPG.TabEnabled.fill(true);
        ShowFormNow(*state);
        form->resize(form->minimumSizeHint());
        for (int tab = 0; tab < 5; ++tab) {
            ChooseTab(tab);
            QCoreApplication::processEvents();
            const auto widgets = form->findChildren<QWidget*>();
            for (const QWidget* widget : widgets) {
                const bool holdsText = widget->inherits("QAbstractButton") || widget->inherits("QLabel");
                if (!holdsText || !widget->isVisible() || widget->objectName().isEmpty()) continue;
                const QSize needed = widget->inherits("QPushButton") || widget->inherits("QLabel")
                                         ? widget->minimumSizeHint()
                                         : widget->sizeHint();
                EXPECT_GE(widget->width(), needed.width())
                    << qPrintable(widget->objectName()) << " in " << row.Family << row.Points;
                EXPECT_GE(widget->height(), needed.height())
                    << qPrintable(widget->objectName()) << " in " << row.Family << row.Points;
            }
        }
        form->close();
    }
    QApplication::setFont(before);
}

}  // namespace
