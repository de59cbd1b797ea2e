#include "DemoWindow.h"

#include "OptionPanel.h"
#include "Palettes.h"

#include <zephrin/clsTableCollection.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

namespace demo {

namespace {

const QString workbookItem = QStringLiteral("Excel workbook");

QString SampleConnection(const QString& dialectName, const SampleData& samples) {
    if (dialectName == workbookItem)
        return QStringLiteral("Driver={Microsoft Excel Driver (*.xls, *.xlsx, *.xlsm, *.xlsb)};DBQ=%1")
            .arg(samples.Workbook);
    return QStringLiteral("Provider=SQLite;Dialect=%1;Data Source=%2").arg(dialectName, samples.Database);
}

template <typename Receiver, typename Slot>
QPushButton* MakeButton(const QString& name, const QString& caption, Receiver* receiver, Slot slot) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    QObject::connect(button, &QPushButton::clicked, receiver, slot);
    return button;
}

}  // namespace

DemoWindow::DemoWindow(QWidget* parent)
    : QWidget(parent), control(new zephrin::Zephrin(this)), log(new EventLog) {
    setObjectName(QStringLiteral("demoWindow"));
    setWindowTitle(tr("Zephrin demo host"));
    control->SetZPBRunTimeControlCaption(tr("Shop queries"));
    // Blue, green, red: white on the blue of the icon.
    control->SetZPBLabelBackColor(0x8f6f2f);
    control->SetZPBLabelForeColor(0xffffff);
    log->Listen(control);

    auto* left = new QWidget;
    auto* steps = new QVBoxLayout(left);
    steps->setContentsMargins(0, 0, 0, 0);
    steps->addWidget(MakeConnectionBox());
    steps->addWidget(MakeMethodBox());
    steps->addWidget(MakeQueryBox());
    steps->addWidget(MakeTableBox());
    steps->addWidget(new OptionPanel(control));
    steps->addStretch();

    auto* splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(left);
    splitter->addWidget(log);
    splitter->setStretchFactor(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeHead());
    layout->addWidget(splitter, 1);
    resize(fontMetrics().averageCharWidth() * 190, sizeHint().height());
}

QWidget* DemoWindow::MakeHead() {
    auto* head = new QWidget;
    auto* title = new QLabel(tr("A host with one Zephrin control"));
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setBold(true);
    title->setFont(large);
    auto* text =
        new QLabel(tr("The control itself is invisible at run time. Connect, show the wizard, and watch its "
                      "events on the right."));
    text->setWordWrap(true);
    auto* dark = new QCheckBox(tr("&Dark colours"));
    dark->setObjectName(QStringLiteral("darkColours"));
    dark->setChecked(IsDark());
    connect(dark, &QCheckBox::toggled, this,
            [](bool on) { UseColours(on ? Colours::Dark : Colours::Light); });

    auto* layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* texts = new QVBoxLayout;
    texts->addWidget(title);
    texts->addWidget(text);
    layout->addLayout(texts, 1);
    layout->addWidget(dark, 0, Qt::AlignTop);
    return head;
}

QWidget* DemoWindow::MakeConnectionBox() {
    auto* box = new QGroupBox(tr("Connection"));
    dialect = new QComboBox;
    dialect->setObjectName(QStringLiteral("dialect"));
    dialect->addItems({QStringLiteral("SQL Server"), QStringLiteral("MS Access"),
                       QStringLiteral("Microsoft Excel Driver"), workbookItem});
    connection = new QLineEdit(SampleConnection(dialect->currentText(), samples));
    connection->setObjectName(QStringLiteral("connectionString"));
    connection->setCursorPosition(0);
    connect(dialect, &QComboBox::currentTextChanged, this, [this](const QString& name) {
        connection->setText(SampleConnection(name, samples));
        connection->setCursorPosition(0);
    });
    maxRecords = new QSpinBox;
    maxRecords->setObjectName(QStringLiteral("maxRecords"));
    maxRecords->setRange(0, 10'000'000);
    maxRecords->setSpecialValueText(tr("no limit"));

    auto* layout = new QFormLayout(box);
    layout->addRow(tr("Dia&lect:"), dialect);
    layout->addRow(tr("Connection &string:"), connection);
    layout->addRow(tr("&Rows at most:"), maxRecords);
    return box;
}

QWidget* DemoWindow::MakeMethodBox() {
    auto* box = new QGroupBox(tr("Methods"));
    auto* layout = new QGridLayout(box);
    auto* connectButton = MakeButton(QStringLiteral("makeConnection"), tr("&Make connection"), this,
                                     [this] { MakeConnection(); });
    auto* showButton = MakeButton(QStringLiteral("showZephrin"), tr("Show &wizard"), control,
                                  [this] { control->ZPBShowZephrin(); });
    auto* disconnectButton = MakeButton(QStringLiteral("disconnectConnection"), tr("Dis&connect"), control,
                                        [this] { control->ZPBDisconnectConnection(); });
    auto* aboutButton =
        MakeButton(QStringLiteral("aboutBox"), tr("&About"), control, [this] { control->ShowAboutBox(); });
    connectButton->setToolTip(QStringLiteral("ZPBMakeConnection"));
    showButton->setToolTip(QStringLiteral("ZPBShowZephrin"));
    disconnectButton->setToolTip(QStringLiteral("ZPBDisconnectConnection"));
    aboutButton->setToolTip(QStringLiteral("ShowAboutBox"));
    layout->addWidget(connectButton, 0, 0);
    layout->addWidget(showButton, 0, 1);
    layout->addWidget(disconnectButton, 1, 0);
    layout->addWidget(aboutButton, 1, 1);
    return box;
}

QWidget* DemoWindow::MakeQueryBox() {
    auto* box = new QGroupBox(tr("Saved query"));
    query = new QComboBox;
    query->setObjectName(QStringLiteral("savedQuery"));
    query->setAccessibleName(tr("Saved query"));
    query->setToolTip(tr("With a query the connection comes from its file (QueryName of ZPBMakeConnection)"));
    query->addItem(tr("none"));
    const QDir saved(samples.Queries);
    for (const QFileInfo& file : saved.entryInfoList({QStringLiteral("*.zpb")}, QDir::Files))
        query->addItem(file.completeBaseName(), file.filePath());
    auto* layout = new QHBoxLayout(box);
    layout->addWidget(query, 1);
    layout->addWidget(
        MakeButton(QStringLiteral("chooseQuery"), tr("&Choose file..."), this, [this] { ChooseQuery(); }));
    return box;
}

void DemoWindow::ChooseQuery() {
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Choose a saved query"), {}, tr("Saved queries (*.zpb)"));
    if (path.isEmpty()) return;
    int index = query->findData(path);
    if (index < 0) {
        query->addItem(QFileInfo(path).completeBaseName(), path);
        index = query->count() - 1;
    }
    query->setCurrentIndex(index);
}

QWidget* DemoWindow::MakeTableBox() {
    auto* box = new QGroupBox(tr("Tables on offer"));
    table = new QLineEdit(QStringLiteral("Reviews"));
    table->setObjectName(QStringLiteral("tableName"));
    table->setAccessibleName(tr("Table name"));
    auto* layout = new QHBoxLayout(box);
    layout->addWidget(table, 1);
    layout->addWidget(MakeButton(QStringLiteral("addTable"), tr("Add &table"), this,
                                 [this] { control->ZPBTableCollection().AddTable(table->text()); }));
    layout->addWidget(MakeButton(QStringLiteral("removeTable"), tr("R&emove table"), this,
                                 [this] { control->ZPBTableCollection().RemoveTable(table->text()); }));
    layout->addWidget(MakeButton(QStringLiteral("listTables"), tr("L&ist"), this, [this] { ShowTables(); }));
    return box;
}

void DemoWindow::ShowTables() {
    const zephrin::clsTableCollection tables = control->ZPBTableCollection();
    QStringList names;
    for (int index = 1; index <= tables.CountTableCollection(); ++index) names << tables.GetTableName(index);
    log->Add(QStringLiteral("ZPBTableCollection"),
             {{QStringLiteral("CountTableCollection"), QString::number(names.size())},
              {QStringLiteral("GetTableName"), names.join(QStringLiteral(", "))}});
}

void DemoWindow::MakeConnection() {
    using zephrin::Zephrin;
    constexpr bool removeSystemTables = true;
    control->ZPBMakeConnection(connection->text(), {}, {}, Zephrin::Omitted, Zephrin::Omitted,
                               maxRecords->value(), false, query->currentData().toString(),
                               removeSystemTables);
}

void DemoWindow::ConnectAndShow() {
    MakeConnection();
    control->ZPBShowZephrin();
}

}  // namespace demo
