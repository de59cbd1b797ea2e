#include "wizard/frmCalcFields.h"

#include "platform/controls/DocumentText.h"
#include "wizard/Build.h"
#include "wizard/ListBox.h"
#include "wizard/ShowControl.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace zephrin {

namespace {

void ShowInList(ListState& list, const QStringList& items) {
    if (list.Items() == items) return;
    list.Clear();
    list.AddItems(items);
}

}  // namespace

frmCalcFields::frmCalcFields(ZPGGlobalDeclarations& run, QWidget* over)
    : WizardDialog(run, QStringLiteral("frmCalcFields"), over), form(LoadCalcField(run)) {
    setWindowTitle(ResString(run, 151).trimmed());

    auto* lists = new QHBoxLayout;
    lists->addWidget(MakeFunctions(), 4);
    lists->addWidget(
        MakeList(QStringLiteral("fraOperators"), 143, lstOperators, QStringLiteral("lstOperators")), 1);
    lists->addWidget(
        MakeList(QStringLiteral("fraFields"), 144, lstCalcFields, QStringLiteral("lstCalcFields")), 3);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists, 3);
    layout->addWidget(MakeExpression(), 2);
    layout->addWidget(MakeFoot());

    lstFunctions->SetItems(&functions);
    lstOperators->SetItems(&operators);
    lstCalcFields->SetItems(&fields);
    operators.AddItems(CalcOperators());
    QStringList shown, keys;
    for (const CalcFieldForm::FieldRow& row : form.Fields) {
        shown << row.Shown;
        keys << row.Key;
    }
    fields.AddItems(shown, keys);
    FinishControls();
    chkShowField->setText(ResString(State(), 147));
    ConnectLists();
    ConnectTexts();
    Show();
    txtCriteria->setFocus();
    resize(sizeHint().expandedTo(QSize(720, 480)));
}

QGroupBox* frmCalcFields::MakeFunctions() {
    QGroupBox* frame =
        MakeList(QStringLiteral("fraFunctions"), 142, lstFunctions, QStringLiteral("lstFunctions"));
    auto* options = new QHBoxLayout;
    const int tags[] = {139, 138, 140, 141};
    for (int index = 0; index < 4; ++index) {
        auto* option = new QRadioButton(ResString(State(), tags[index]));
        option->setObjectName(QStringLiteral("optFunctionType_%1").arg(index));
        option->setProperty("Tag", QString::number(tags[index]));
        options->addWidget(option);
        optFunctionType[index] = option;
    }
    MakeOneStop(QList<QRadioButton*>(std::begin(optFunctionType), std::end(optFunctionType)));
    options->addStretch();
    static_cast<QVBoxLayout*>(frame->layout())->insertLayout(0, options);
    for (QRadioButton* option : optFunctionType) setTabOrder(option, lstFunctions);
    return frame;
}

QGroupBox* frmCalcFields::MakeList(const QString& frameName, int tag, ListBox*& list, const QString& name) {
    QGroupBox* frame = MakeFrame(frameName, tag);
    list = new ListBox(name);
    list->setAccessibleName(ResString(State(), tag));
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(list);
    return frame;
}

QWidget* frmCalcFields::MakeExpression() {
    QGroupBox* frame = MakeFrame(QStringLiteral("fraExpression"), 145);
    txtCriteria = new QPlainTextEdit;
    txtCriteria->setObjectName(QStringLiteral("txtCriteria"));
    txtCriteria->setAccessibleName(ResString(State(), 145));
    txtCriteria->setTabChangesFocus(true);
    txtCriteria->setMinimumHeight(txtCriteria->fontMetrics().lineSpacing() * 4);
    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(txtCriteria);
    return frame;
}

QWidget* frmCalcFields::MakeFoot() {
    auto* foot = new QWidget;
    txtAlias = new QLineEdit;
    txtAlias->setObjectName(QStringLiteral("txtAlias"));
    txtAlias->setMinimumWidth(txtAlias->fontMetrics().averageCharWidth() * 24);
    QLabel* lblAlias = MakeLabel(QStringLiteral("lblAlias"), 146, txtAlias);
    txtAlias->setAccessibleName(ResString(State(), 146).remove(u':').trimmed());
    chkShowField = new QCheckBox;
    chkShowField->setObjectName(QStringLiteral("chkShowField"));
    chkShowField->setProperty("Tag", QStringLiteral("147"));
    cmdClear = MakeButton(QStringLiteral("cmdClear"), 150);
    cmdOK = MakeButton(QStringLiteral("cmdOK"), 148);
    cmdOK->setDefault(true);
    cmdCancel = MakeButton(QStringLiteral("cmdCancel"), 149);
    auto* layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lblAlias);
    layout->addWidget(txtAlias);
    layout->addWidget(chkShowField);
    layout->addStretch();
    for (QPushButton* button : {cmdClear, cmdOK, cmdCancel}) layout->addWidget(button);
    return foot;
}

void frmCalcFields::ConnectLists() {
    for (int index = 0; index < 4; ++index) {
        connect(optFunctionType[index], &QRadioButton::clicked, this, [this, index] {
            Change([&] { ChooseFunctionType(State(), form, static_cast<CalcFunctionType>(index)); });
        });
    }
    for (auto [list, items] : {std::pair{lstFunctions, &functions}, std::pair{lstOperators, &operators}}) {
        connect(list, &ListBox::Picked, this, [list, items](int row) {
            items->SetListIndex(row);
            list->setToolTip(PlainToolTip(items->Text()));
        });
        connect(list, &ListBox::DblClick, this, [this, items] { Insert(items->Text()); });
    }
    const auto key = [this] {
        const int row = fields.ListIndex();
        return row < 0 ? QString() : form.Fields[static_cast<size_t>(row)].Key;
    };
    connect(lstCalcFields, &ListBox::Picked, this, [this, key](int row) {
        fields.SetListIndex(row);
        lstCalcFields->setToolTip(PlainToolTip(key()));
        Change([&] { CalcFieldPicked(form); });
    });
    connect(lstCalcFields, &ListBox::DblClick, this, [this, key] { Insert(key()); });
}

void frmCalcFields::ConnectTexts() {
    connect(txtCriteria, &QPlainTextEdit::textChanged, this, [this] {
        if (!showing)
            Change([&] { ExpressionTyped(form, controls::DocumentText(*txtCriteria->document())); });
    });
    connect(txtAlias, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (showing) return;
        Change([&] {
            form.Alias = text;
            AliasChanged(form);
        });
    });
    connect(chkShowField, &QCheckBox::clicked, this, [this](bool on) { form.ShowField = on; });
    connect(cmdClear, &QPushButton::clicked, this, [this] {
        Change([&] { ClearExpression(form); });
        txtCriteria->setFocus();
    });
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmCalcFields::Change(const std::function<void()>& operation) {
    const QPointer<frmCalcFields> guard(this);
    Act(operation);
    if (guard) Show();
}

void frmCalcFields::Insert(const QString& text) {
    if (text.isEmpty()) return;
    const QTextCursor caret = txtCriteria->textCursor();
    const QTextDocument& document = *txtCriteria->document();
    form.SelStart = controls::TextPosition(document, caret.selectionStart());
    form.SelLength = controls::TextPosition(document, caret.selectionEnd()) - form.SelStart;
    Change([&] { InsertIntoExpression(form, text); });
    QTextCursor end = txtCriteria->textCursor();
    end.movePosition(QTextCursor::End);
    txtCriteria->setTextCursor(end);
    txtCriteria->setFocus();
}

void frmCalcFields::Show() {
    const QScopedValueRollback guard(showing, true);
    ShowInList(functions, form.Functions);
    const auto type = static_cast<size_t>(form.FunctionType);
    if (type < std::size(optFunctionType)) optFunctionType[type]->setChecked(true);
    if (controls::DocumentText(*txtCriteria->document()) != form.Criteria) {
        // One step for Undo, unlike setPlainText, which forgets what was typed.
        QTextCursor whole(txtCriteria->document());
        whole.select(QTextCursor::Document);
        whole.insertText(form.Criteria);
    }
    if (txtAlias->text() != form.Alias) txtAlias->setText(form.Alias);
    txtAlias->setEnabled(form.AliasEnabled);
    chkShowField->setChecked(form.ShowField);
    cmdOK->setEnabled(form.OkEnabled);
}

void frmCalcFields::accept() {
    if (!form.OkEnabled) return;
    CalcOutcome outcome = CalcOutcome::Refused;
    if (!Act([&] { outcome = AcceptCalcField(State(), form); })) return;
    if (outcome == CalcOutcome::Stored) {
        QDialog::accept();
    } else if (outcome == CalcOutcome::TakenAlias) {
        txtAlias->setFocus();
        txtAlias->selectAll();
    }
}

void frmCalcFields::reject() {
    CancelCalcField(State());
    QDialog::reject();
}

}  // namespace zephrin
