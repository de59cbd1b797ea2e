#include "wizard/EveryWindow.h"

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
#include <QTest>
#include <QTextEdit>
#include <QToolTip>

#include <gtest/gtest.h>
#include <map>

using namespace zephrin;

namespace {

using Accessibility = test::EveryWindow;

/// The names of what the Tab key reaches in a window, from its first control on.
QString VisitOrder(const QWidget& window) {
    QStringList order;
    for (QWidget* widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        const bool reached = widget->focusPolicy() & Qt::TabFocus && !widget->focusProxy();
        if (reached && widget->isVisible() && widget->window() == &window && !widget->objectName().isEmpty())
            order << widget->objectName();
    }
    return order.join(u' ');
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

/// What is wrong with a control for who can't see it; empty when all is well.
QString Complaint(QWidget* widget) {
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    if (!interface) return QStringLiteral("is not there");
    if (interface->text(QAccessible::Name).trimmed().isEmpty()) return QStringLiteral("has no name");
    if (interface->role() == QAccessible::NoRole || interface->role() == QAccessible::Client)
        return QStringLiteral("has no role");
    if (!interface->state().focusable) return QStringLiteral("does not say that it takes the keyboard");
    if (bool(interface->state().disabled) == widget->isEnabled())
        return QStringLiteral("lies about being enabled");
    return {};
}

TEST_F(Accessibility, EveryControlOfEveryWindowIsToldToScreenReaders) {
    Begin();
    QSet<QString> seen;
    ForEach([&](QWidget& window, const QString& what) {
        const auto widgets = window.findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            // Parts that the toolkit makes inside of a control are told by the control.
            const bool part = widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_scroll");
            if (part || widget->window() != &window || !widget->isVisible()) continue;
            if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy()) continue;
            seen << what + widget->objectName();
            EXPECT_EQ(Complaint(widget), QString())
                << qPrintable(what) << ": " << qPrintable(widget->objectName());
        }
    });
    EXPECT_GT(seen.size(), 120);
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

TEST_F(Accessibility, TheTabKeyGoesThroughAWindowAsItIsRead) {
    // T is the strip of tabs, F the foot of the form, D that of the connection dialog.
    const std::map<std::string, std::string> table = {
        {"frmZPG tab 0",
         "T lstZPQTableSelection cmdZPQTableRight cmdZPQTableRightAll cmdZPQTableLeft "
         "cmdZPQTableLeftAll lstZPQTableTo F"},
        {"frmZPG tab 1",
         "T cmbJoinTables_0 cmbJoinTables_1 cmdlockTables lstJoinFields_0 lstJoinFields_1 "
         "cmbJoinType cmdAddJoin dgrJoins_pane_0 cmdResetJoins F"},
        {"frmZPG tab 2",
         "T lstZPQFieldFrom cmdZPQFieldRight cmdZPQFieldRightAll cmdZPQFieldLeft "
         "cmdZPQFieldLeftAll lstZPQFieldTo F"},
        {"frmZPG tab 3",
         "T optQuery_0 lstSelectedFields lstOperands cmbAvailableValues1 cmbAvailableValues2 "
         "cmdFieldValues optAndOr_0 cmdCommit cmdEditWhere cmdEditGroup cmdEditOrder "
         "cmdEditCalcField cmdCalcField sptBuild_handle chkDistinct txtTopX chkPercent txtSQL "
         "cmdResetSQL cmdCreateView cmdRunQuery F"},
        {"frmZPG tab 4",
         "T txtSQLErrors dgrQueryResults_pane_0 cmdAsc cmdDesc cmdResAddSplit "
         "cmdResDeleteSplit cmdExcel F"},
        {"frmZPG tab 3 with the grid",
         "T optQuery_0 lstSelectedFields lstOperands cmbAvailableValues1 cmbAvailableValues2 "
         "cmdFieldValues optAndOr_0 cmdCommit cmdEditWhere cmdEditGroup cmdEditOrder "
         "cmdEditCalcField cmdCalcField sptBuild_handle dgrSQL_pane_0 cmdSplit cmdDeleteSplit "
         "cmdSQLView cmdResetSQL cmdCreateView cmdRunQuery F"},
        {"frmCriteriaBuilder",
         "txtCriteria cmd7 cmd8 cmd9 cmd4 cmd5 cmd6 cmd1 cmd2 cmd3 cmd0 cmdPoint cmdApos "
         "cmdEquals cmdNotEqual cmdGreaterThan cmdLessThan cmdGreaterThanorEqual "
         "cmdLessThanorEqual cmdWildCard1 cmdWildCard2 cmdWildCard3 cmdLike cmdAnd cmdBetween "
         "cmdDelete cmdCriteriaOK cmdCriteriaCancel"},
        {"frmCalcFields",
         "optFunctionType_1 lstFunctions lstOperators lstCalcFields txtCriteria txtAlias "
         "chkShowField cmdClear cmdOK cmdCancel"},
        {"frmTableJoinTypes", "optJoinType_0 cmdOK cmdCancel"},
        {"frmExcelDataChoice", "optDataChoice_1 cmdOK cmdCancel"},
        {"frmFieldOrder for Group",
         "lstFields lstAlias txtAlias cmdUpDown_0 cmdUpDown_1 chkOutput cmdDelete cmdOK "
         "cmdCancel"},
        {"frmFieldOrder for Order", "lstFields cmdUpDown_0 cmdUpDown_1 cmdDelete cmdOK cmdCancel"},
        {"frmFieldOrder for Calc",
         "lstFields lstAlias txtAlias cmdUpDown_0 cmdUpDown_1 chkOutput cmdEdit cmdDelete "
         "cmdOK cmdCancel"},
        {"DataLinkDialog page 0", "T txtFile cmdBrowse cmbFileKind cmbFileDialect chkReadOnly D"},
        {"DataLinkDialog page 1", "T cmbDataSource txtSourceUser txtSourcePassword cmbSourceDialect D"},
        {"DataLinkDialog page 2",
         "T cmbDriver txtServer txtPort txtDatabase chkTrusted txtUser txtPassword "
         "chkEncrypt chkTrustCertificate cmbDriverDialect D"},
        {"DataLinkDialog page 3", "T txtString D"},
    };
    Begin();
    std::size_t compared = 0;
    ForEach([&](QWidget& window, const QString& what) {
        QString order = VisitOrder(window);
        order.replace(QLatin1StringView("qt_tabwidget_tabbar"), QLatin1StringView("T"));
        order.replace(QLatin1StringView("cmdOpenQuery cmdSaveQuery cmdDeleteQuery cmdExit"),
                      QLatin1StringView("F"));
        order.replace(QLatin1StringView("txtPreview cmdTest cmdOK cmdCancel"), QLatin1StringView("D"));
        const auto row = table.find(what.toStdString());
        ASSERT_NE(row, table.end()) << qPrintable(what);
        EXPECT_EQ(order.toStdString(), row->second) << qPrintable(what);
        ++compared;
    });
    EXPECT_EQ(compared, table.size());
}

TEST_F(Accessibility, AKeyShowsTheTipOfTheControl) {
    Begin();
    ChooseTab(3);
    struct Row {
        const char* Control;
        QString Tip;
    };
    const Row table[] = {
        {"cmdEditOrder", QStringLiteral("Edit Order Fields")},
        {"cmdRunQuery", QStringLiteral("F5")},
        {"cmdSaveQuery", QStringLiteral("Ctrl+S")},
    };
    for (const Row& row : table) {
        Find(row.Control)->setFocus();
        QTest::keyClick(form.get(), Qt::Key_F1, Qt::ShiftModifier);
        EXPECT_EQ(QToolTip::text(), row.Tip) << row.Control;
        QToolTip::hideText();
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
