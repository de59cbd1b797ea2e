// Where the controls of the build-query tab stand, apart from what they do.

#include "platform/controls/ColouredText.h"
#include "platform/controls/DataGrid.h"
#include "platform/controls/Splitter.h"
#include "platform/dialogs/WrapLabel.h"
#include "wizard/Build.h"
#include "wizard/BuildTabPage.h"
#include "wizard/ComboBox.h"
#include "wizard/ListBox.h"
#include "wizard/ShowControl.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

namespace zephrin {

namespace {

template <std::size_t N>
std::array<QRadioButton*, N> MakeOptionButtons(const QString& name, const std::array<QString, N>& captions,
                                               QWidget* parent) {
    std::array<QRadioButton*, N> buttons{};
    auto* group = new QButtonGroup(parent);
    for (std::size_t i = 0; i < N; ++i) {
        buttons[i] = new QRadioButton(captions[i], parent);
        buttons[i]->setObjectName(QStringLiteral("%1_%2").arg(name).arg(i));
        group->addButton(buttons[i], static_cast<int>(i));
    }
    MakeOneStop(QList<QRadioButton*>(buttons.begin(), buttons.end()));
    return buttons;
}

/// The frame whose caption is the sentence under construction: however long a value is, the caption does not
/// widen the form. Where it is cut, it shows whole as a tool tip.
class SentenceFrame : public QGroupBox {
 public:
    QSize minimumSizeHint() const override { return QWidget::minimumSizeHint(); }
    QSize sizeHint() const override { return QWidget::sizeHint(); }

 protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QGroupBox::event(event);
        const auto* help = static_cast<QHelpEvent*>(event);
        const bool onTitle = help->pos().y() < contentsRect().top();
        if (!onTitle || fontMetrics().horizontalAdvance(title()) < width()) return QGroupBox::event(event);
        QToolTip::showText(help->globalPos(),
                           PlainToolTip(title().replace(QStringLiteral("&&"), QStringLiteral("&"))), this);
        return true;
    }
};

QVBoxLayout* PlainColumn(QWidget* parent) {
    auto* layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

QHBoxLayout* PlainRow(QWidget* parent) {
    auto* layout = new QHBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

}  // namespace

// --- Left: the sentence ---

QWidget* BuildTabPage::MakeSentence() {
    auto* left = new QWidget;
    QVBoxLayout* layout = PlainColumn(left);
    layout->addWidget(MakeModes());
    fraBuildQuery = new SentenceFrame;
    fraBuildQuery->setObjectName(QStringLiteral("fraBuildQuery"));
    auto* sentence = new QVBoxLayout(fraBuildQuery);
    sentence->addWidget(MakeLists(), 1);
    sentence->addWidget(MakeValues());
    layout->addWidget(fraBuildQuery, 1);
    layout->addWidget(MakeEditButtons());
    return left;
}

QWidget* BuildTabPage::MakeModes() {
    auto* modes = new QWidget;
    optQuery = MakeOptionButtons<3>(
        QStringLiteral("optQuery"),
        {QStringLiteral("Where"), QStringLiteral("Group"), QStringLiteral("Order")}, modes);
    QHBoxLayout* layout = PlainRow(modes);
    for (QRadioButton* option : optQuery) layout->addWidget(option);
    layout->addStretch();
    return modes;
}

QWidget* BuildTabPage::MakeLists() {
    auto* lists = new QWidget;
    lstSelectedFields = new ListBox(QStringLiteral("lstSelectedFields"));
    lstOperands = new ListBox(QStringLiteral("lstOperands"));
    auto* grid = new QGridLayout(lists);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(MakeLabel(QStringLiteral("lblSelectedFields"), 126, lstSelectedFields), 0, 0);
    grid->addWidget(MakeLabel(QStringLiteral("lblOperands"), 127, lstOperands), 0, 1);
    grid->addWidget(lstSelectedFields, 1, 0);
    grid->addWidget(lstOperands, 1, 1);
    grid->setColumnStretch(0, 3);
    grid->setColumnStretch(1, 2);
    return lists;
}

QWidget* BuildTabPage::MakeValues() {
    auto* values = new QWidget;
    auto* grid = new QGridLayout(values);
    grid->setContentsMargins(0, 0, 0, 0);
    for (int i = 0; i < 2; ++i) {
        cmbAvailableValues[i] = new ComboBox(QStringLiteral("cmbAvailableValues%1").arg(i + 1));
        grid->addWidget(
            MakeLabel(QStringLiteral("lblAvailableValues%1").arg(i + 1), 128 + i, cmbAvailableValues[i]), 0,
            i);
        grid->addWidget(cmbAvailableValues[i], 1, i);
        grid->setColumnStretch(i, 1);
    }
    cmdFieldValues = MakeIconButton(QStringLiteral("cmdFieldValues"), QStringLiteral("search"),
                                    ResString(Host().State(), 242));
    grid->addWidget(cmdFieldValues, 1, 2);

    fraAndOr = MakeFrame(QStringLiteral("fraAndOr"), 130);
    optAndOr = MakeOptionButtons<2>(QStringLiteral("optAndOr"), {QStringLiteral("AND"), QStringLiteral("OR")},
                                    fraAndOr);
    auto* row = new QHBoxLayout(fraAndOr);
    for (QRadioButton* option : optAndOr) row->addWidget(option);
    row->addStretch();
    cmdCommit = MakeButton(QStringLiteral("cmdCommit"), 233, QStringLiteral("add"));
    SetDesignToolTip(cmdCommit, ResString(Host().State(), 243));
    auto* foot = new QHBoxLayout;
    foot->addWidget(fraAndOr, 1);
    foot->addWidget(cmdCommit, 0, Qt::AlignBottom);
    grid->addLayout(foot, 2, 0, 1, 3);
    return values;
}

QWidget* BuildTabPage::MakeEditButtons() {
    QGroupBox* frame = MakeFrame(QStringLiteral("fraEdit"), 131);
    const auto make = [this](const QString& name, const QString& icon, int toolTip) {
        return MakeIconButton(name, icon, ResString(Host().State(), toolTip));
    };
    cmdEditWhere = make(QStringLiteral("cmdEditWhere"), QStringLiteral("edit-where"), 238);
    cmdEditGroup = make(QStringLiteral("cmdEditGroup"), QStringLiteral("edit-group"), 239);
    cmdEditOrder = make(QStringLiteral("cmdEditOrder"), QStringLiteral("edit-order"), 240);
    cmdEditCalcField = make(QStringLiteral("cmdEditCalcField"), QStringLiteral("edit-calc"), 241);
    cmdCalcField = MakeButton(QStringLiteral("cmdCalcField"), 230, QStringLiteral("calc-field"));
    SetDesignToolTip(cmdCalcField, ResString(Host().State(), 245));
    auto* layout = new QHBoxLayout(frame);
    for (QPushButton* button : {cmdEditWhere, cmdEditGroup, cmdEditOrder, cmdEditCalcField})
        layout->addWidget(button);
    layout->addStretch();
    layout->addWidget(cmdCalcField);
    return frame;
}

// --- Right: the statement or the grid ---

QWidget* BuildTabPage::MakeRight() {
    auto* right = new QWidget;
    QVBoxLayout* layout = PlainColumn(right);
    layout->addWidget(MakeOptions());
    txtSQL = new controls::ColouredText;
    txtSQL->setObjectName(QStringLiteral("txtSQL"));
    txtSQL->setTabChangesFocus(true);
    dgrSQL = new controls::DataGrid;
    dgrSQL->setObjectName(QStringLiteral("dgrSQL"));
    dgrSQL->setAccessibleName(ResString(Host().State(), 246));
    lblSQLLabel[0] = new WrapLabel;
    NameLabel(lblSQLLabel[0], QStringLiteral("lblSQLLabel_0"), 0, dgrSQL);
    lblSQLLabel[1] = MakeLabel(QStringLiteral("lblSQLLabel_1"), 120, txtSQL);
    layout->addWidget(lblSQLLabel[1]);
    layout->addWidget(txtSQL, 1);
    layout->addWidget(lblSQLLabel[0]);
    layout->addWidget(MakeLegend());
    layout->addWidget(dgrSQL, 1);
    layout->addWidget(MakeGridFoot());
    layout->addWidget(MakeRunButtons());
    return right;
}

QWidget* BuildTabPage::MakeOptions() {
    fraQueryOptions = MakeFrame(QStringLiteral("fraQueryOptions"), 122);
    chkDistinct = new QCheckBox(QStringLiteral("Distinct"));
    chkDistinct->setObjectName(QStringLiteral("chkDistinct"));
    txtTopX = new QLineEdit;
    txtTopX->setObjectName(QStringLiteral("txtTopX"));
    txtTopX->setMaximumWidth(txtTopX->fontMetrics().averageCharWidth() * 14);
    lblTopX = MakeLabel(QStringLiteral("lblTopX"), 121, txtTopX);
    chkPercent = new QCheckBox(QStringLiteral("Percent"));
    chkPercent->setObjectName(QStringLiteral("chkPercent"));
    auto* layout = new QHBoxLayout(fraQueryOptions);
    for (QWidget* widget : {static_cast<QWidget*>(chkDistinct), static_cast<QWidget*>(lblTopX),
                            static_cast<QWidget*>(txtTopX), static_cast<QWidget*>(chkPercent)})
        layout->addWidget(widget);
    layout->addStretch();
    return fraQueryOptions;
}

QWidget* BuildTabPage::MakeLegend() {
    fraTxt = new QFrame;
    fraTxt->setObjectName(QStringLiteral("fraTxt"));
    txtField = MakeLabel(QStringLiteral("txtField"), 116);
    txtValue = MakeLabel(QStringLiteral("txtValue"), 119);
    txtOr = MakeLabel(QStringLiteral("txtOr_0"), 117);
    auto* layout = new QHBoxLayout(fraTxt);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QLabel* label : {txtField, txtValue, txtOr}) layout->addWidget(label);
    layout->addStretch();
    return fraTxt;
}

QWidget* BuildTabPage::MakeGridFoot() {
    auto* foot = new QWidget;
    cmdSplit = MakeButton(QStringLiteral("cmdSplit"), 124, QStringLiteral("split"));
    cmdDeleteSplit = MakeButton(QStringLiteral("cmdDeleteSplit"), 125, QStringLiteral("unsplit"));
    cmdSQLView = MakeButton(QStringLiteral("cmdSQLView"), 165, QStringLiteral("edit"));
    QHBoxLayout* layout = PlainRow(foot);
    layout->addWidget(cmdSplit);
    layout->addWidget(cmdDeleteSplit);
    layout->addStretch();
    layout->addWidget(cmdSQLView);
    return foot;
}

QWidget* BuildTabPage::MakeRunButtons() {
    auto* buttons = new QWidget;
    cmdResetSQL = MakeButton(QStringLiteral("cmdResetSQL"), 164, QStringLiteral("reset"));
    cmdCreateView = MakeIconButton(QStringLiteral("cmdCreateView"), QStringLiteral("create-view"),
                                   ResString(Host().State(), 226));
    cmdRunQuery = MakeButton(QStringLiteral("cmdRunQuery"), 118, QStringLiteral("run"));
    SetDesignToolTip(cmdRunQuery, QStringLiteral("F5"));
    QHBoxLayout* layout = PlainRow(buttons);
    layout->addWidget(cmdResetSQL);
    layout->addStretch();
    layout->addWidget(cmdCreateView);
    layout->addWidget(cmdRunQuery);
    return buttons;
}

void BuildTabPage::SetVisitOrder() {
    QWidget* order[] = {optQuery[0],
                        optQuery[1],
                        optQuery[2],
                        lstSelectedFields,
                        lstOperands,
                        cmbAvailableValues[0],
                        cmbAvailableValues[1],
                        cmdFieldValues,
                        optAndOr[0],
                        optAndOr[1],
                        cmdCommit,
                        cmdEditWhere,
                        cmdEditGroup,
                        cmdEditOrder,
                        cmdEditCalcField,
                        cmdCalcField,
                        halves->handle(1),
                        chkDistinct,
                        txtTopX,
                        chkPercent,
                        txtSQL,
                        dgrSQL,
                        cmdSplit,
                        cmdDeleteSplit,
                        cmdSQLView,
                        cmdResetSQL,
                        cmdCreateView,
                        cmdRunQuery};
    for (int i = 1; i < static_cast<int>(std::size(order)); ++i) setTabOrder(order[i - 1], order[i]);
}

}  // namespace zephrin
