#include "EventLog.h"

#include <QHeaderView>

#include <algorithm>

namespace demo {

namespace {

/// In one line: a line break inside an argument shows as a blank.
QString OneLine(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral(" ")).simplified();
}

QString Count(const zephrin::ado::RecordsetPtr& rows) {
    if (!rows || !rows->IsOpen()) return QObject::tr("not open");
    return QObject::tr("%1 rows of %2 columns").arg(rows->RecordCount()).arg(rows->FieldCount());
}

}  // namespace

EventLog::EventLog(QWidget* parent) : QTreeWidget(parent) {
    setObjectName(QStringLiteral("eventLog"));
    setAccessibleName(tr("Events"));
    setColumnCount(2);
    setHeaderLabels({tr("Event"), tr("Value")});
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideRight);
    header()->setStretchLastSection(true);
    header()->resizeSection(0, fontMetrics().averageCharWidth() * 28);
}

void EventLog::Listen(zephrin::Zephrin* control) {
    using zephrin::Zephrin;
    connect(control, &Zephrin::QueryExecuted, this,
            [this](int& number, QString& error, QString& sql, zephrin::ado::RecordsetPtr& rows) {
                Add(QStringLiteral("QueryExecuted"),
                    {{QStringLiteral("ErrorNumber"), QString::number(number)},
                     {QStringLiteral("Error"), error},
                     {QStringLiteral("SQL"), sql},
                     {QStringLiteral("QueryResults"), Count(rows)}});
            });
    connect(control, &Zephrin::ConnectionComplete, this,
            [this](int& number, QString& description, QString& source) {
                Add(QStringLiteral("ConnectionComplete"),
                    {{QStringLiteral("ErrorNumber"), QString::number(number)},
                     {QStringLiteral("ErrorDescription"), description},
                     {QStringLiteral("ErrorSource"), source}});
            });
    connect(control, &Zephrin::QuerySaved, this, [this](QString& name) {
        Add(QStringLiteral("QuerySaved"), {{QStringLiteral("QueryName"), name}});
    });
    connect(control, &Zephrin::QueryDeleted, this, [this](QString& name) {
        Add(QStringLiteral("QueryDeleted"), {{QStringLiteral("QueryName"), name}});
    });
    connect(control, &Zephrin::ZPBUnloaded, this, [this](QString& error) {
        Add(QStringLiteral("ZPBUnloaded"), {{QStringLiteral("QueryLoadError"), error}});
    });
    connect(control, &Zephrin::ZPBAlreadyLoaded, this,
            [this] { Add(QStringLiteral("ZPBAlreadyLoaded"), {}); });
    connect(control, &Zephrin::UserCreatedView, this, [this](QString& view, QString& action) {
        Add(QStringLiteral("UserCreatedView"),
            {{QStringLiteral("ViewName"), view}, {QStringLiteral("Action"), action}});
    });
    connect(control, &Zephrin::ExportToExcel, this, [this] { Add(QStringLiteral("ExportToExcel"), {}); });
}

void EventLog::Add(const QString& event, std::initializer_list<Argument> arguments) {
    auto* branch = new QTreeWidgetItem(this, {event});
    QFont bold = font();
    bold.setBold(true);
    branch->setFont(0, bold);
    for (const Argument& argument : arguments) {
        auto* leaf = new QTreeWidgetItem(branch, {argument.first, OneLine(argument.second)});
        leaf->setToolTip(1, argument.second.toHtmlEscaped());
    }
    branch->setExpanded(true);
    scrollToBottom();
}

QString EventLog::Text() const {
    QString text;
    for (int row = 0; row < topLevelItemCount(); ++row) {
        const QTreeWidgetItem* branch = topLevelItem(row);
        text += branch->text(0) + u'\n';
        for (int child = 0; child < branch->childCount(); ++child)
            text += QStringLiteral("    %1 = \"%2\"\n")
                        .arg(branch->child(child)->text(0), branch->child(child)->text(1));
    }
    return text;
}

QString RowsAsText(const zephrin::ado::RecordsetPtr& rows, int count) {
    if (!rows || !rows->IsOpen()) return {};
    const qint64 shown = std::min<qint64>(count, rows->RecordCount());
    QStringList lines(static_cast<qsizetype>(shown) + 1);
    for (int field = 0; field < rows->FieldCount(); ++field) {
        QStringList cells{rows->FieldAt(field).Name};
        for (qint64 row = 0; row < shown; ++row) cells << OneLine(rows->TextAt(row, field));
        qsizetype width = 0;
        for (const QString& cell : std::as_const(cells)) width = std::max(width, cell.size());
        for (qsizetype line = 0; line < lines.size(); ++line)
            lines[line] += cells[line].leftJustified(width + 2);
    }
    return lines.join(u'\n');
}

}  // namespace demo
