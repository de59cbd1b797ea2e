#include "control/ConnectionPageForm.h"

#include "platform/controls/QuietWheel.h"
#include "wizard/TextDelegate.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace zephrin {

namespace {

/// The rows of a list that are seen without scrolling, and the width of its entries in letters.
constexpr int visibleRows = 8;
constexpr int visibleLetters = 28;

QString Caption(const char* text) {
    return QCoreApplication::translate("zephrin::ZPBConnection", text);
}

template <class Widget>
Widget* Make(const char* name, const QString& toolTip, QWidget* parent) {
    auto* widget = new Widget(parent);
    widget->setObjectName(QLatin1StringView(name));
    widget->setToolTip(toolTip);
    return widget;
}

QLabel* MakeLabel(const char* name, const char* text, QWidget* buddy) {
    auto* label = new QLabel(Caption(text), buddy->parentWidget());
    label->setObjectName(QLatin1StringView(name));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    // A label gives its text, blanks at the end and all, to a screen reader only where this says nothing.
    buddy->setAccessibleName(label->text().trimmed().remove(u':'));
    return label;
}

QLineEdit* MakeSeconds(const char* name, const QString& toolTip, QWidget* parent) {
    auto* line = Make<QLineEdit>(name, toolTip, parent);
    line->setInputMethodHints(Qt::ImhPreferNumbers);
    line->setMaximumWidth(line->fontMetrics().averageCharWidth() * 16);
    return line;
}

QListWidget* MakeList(const char* name, const QString& toolTip, QAbstractItemView::SelectionMode selection,
                      QWidget* parent) {
    auto* list = Make<QListWidget>(name, toolTip, parent);
    list->setSelectionMode(selection);
    list->setItemDelegate(new TextDelegate(list));
    const QFontMetrics metrics = list->fontMetrics();
    list->setMinimumSize(metrics.averageCharWidth() * visibleLetters, metrics.lineSpacing() * visibleRows);
    return list;
}

}  // namespace

ConnectionPageForm::ConnectionPageForm(QWidget* page)
    : fraConnection(Make<QGroupBox>("fraConnection", {}, page)),
      txtZPGDataConnection(Make<QLineEdit>("txtZPGDataConnection",
                                           Caption("How the database is reached. A password in it is stored "
                                                   "with the control as it stands."),
                                           fraConnection)),
      cmdBuildConnection(Make<QPushButton>(
          "cmdBuildConnection", Caption("Choose or enter another connection in a dialog."), fraConnection)),
      cmbZPGCommandType(Make<QComboBox>("cmbZPGCommandType",
                                        Caption("Connects, and lists what the database has of this kind."),
                                        fraConnection)),
      lstZPGSelTables(MakeList("lstZPGSelTables",
                               Caption("Select what the wizard offers; \"*\" selects everything."),
                               QAbstractItemView::ExtendedSelection, fraConnection)),
      lstZPGSelectedTables(MakeList("lstZPGSelectedTables", Caption("What the wizard will offer."),
                                    QAbstractItemView::SingleSelection, fraConnection)),
      txtConnectionTimeout(MakeSeconds("txtConnectionTimeout",
                                       Caption("Seconds to wait for a connection; 0 waits for ever."),
                                       fraConnection)),
      txtCommandTimeout(MakeSeconds("txtCommandTimeout",
                                    Caption("Seconds to wait for a statement; 0 waits for ever."),
                                    fraConnection)) {
    controls::KeepWheelAway(cmbZPGCommandType);
    fraConnection->setTitle(Caption("Connection and Record Source"));
    cmdBuildConnection->setText(Caption("B&uild..."));
    cmbZPGCommandType->addItems({QStringLiteral("Tables"), QStringLiteral("Views"), QStringLiteral("Both")});

    auto* connection = new QHBoxLayout;
    connection->addWidget(txtZPGDataConnection, 1);
    connection->addWidget(cmdBuildConnection);
    auto* type = new QHBoxLayout;
    type->addWidget(MakeLabel("lblCommandType", "Command Type:", cmbZPGCommandType));
    type->addWidget(cmbZPGCommandType);
    type->addStretch();
    auto* column = new QVBoxLayout(fraConnection);
    // A label as wide as its text stands where the direction of the window puts it, whatever its language.
    column->addWidget(MakeLabel("lblConnectionString", "Connection String:", txtZPGDataConnection), 0,
                      Qt::AlignLeft);
    column->addLayout(connection);
    column->addLayout(type);
    column->addLayout(BuildLists(), 1);
    column->addLayout(BuildTimeouts());
    auto* whole = new QVBoxLayout(page);
    whole->addWidget(fraConnection);
}

QLayout* ConnectionPageForm::BuildLists() const {
    auto* grid = new QGridLayout;
    grid->addWidget(MakeLabel("lblSelTables", "Select Table(s) and/or Stored Procedure(s):", lstZPGSelTables),
                    0, 0, Qt::AlignLeft);
    grid->addWidget(MakeLabel("lblSelectedTables",
                              "Selected Table(s) and/or Stored Procedure(s): ", lstZPGSelectedTables),
                    0, 1, Qt::AlignLeft);
    grid->addWidget(lstZPGSelTables, 1, 0);
    grid->addWidget(lstZPGSelectedTables, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    return grid;
}

QLayout* ConnectionPageForm::BuildTimeouts() const {
    auto* row = new QHBoxLayout;
    row->addWidget(MakeLabel("lblConnectionTimeout", "Connection Timeout:", txtConnectionTimeout));
    row->addWidget(txtConnectionTimeout);
    row->addStretch();
    row->addWidget(MakeLabel("lblCommandTimeout", "Command Timeout:", txtCommandTimeout));
    row->addWidget(txtCommandTimeout);
    row->addStretch();
    return row;
}

void ConnectionPageForm::ShowCommandType(const QString& text) const {
    constexpr int typesOnOffer = 3;
    while (cmbZPGCommandType->count() > typesOnOffer && cmbZPGCommandType->itemText(typesOnOffer) != text)
        cmbZPGCommandType->removeItem(typesOnOffer);
    if (!text.isEmpty() &&
        cmbZPGCommandType->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive) < 0)
        cmbZPGCommandType->addItem(text);
    cmbZPGCommandType->setCurrentIndex(
        cmbZPGCommandType->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
}

}  // namespace zephrin
