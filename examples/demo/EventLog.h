#pragma once

#include <zephrin/Zephrin.h>

#include <QTreeWidget>

#include <initializer_list>
#include <utility>

namespace demo {

/// What the control told its host: one branch an event, one leaf an argument.
class EventLog : public QTreeWidget {
    Q_OBJECT
 public:
    explicit EventLog(QWidget* parent = nullptr);

    /// Listens to all events of `control` from now on.
    void Listen(zephrin::Zephrin* control);

    using Argument = std::pair<QString, QString>;
    void Add(const QString& event, std::initializer_list<Argument> arguments);

    /// Everything as plain text, for where nobody sees the tree.
    QString Text() const;
};

/// The first rows of a recordset as aligned text, with column heads.
QString RowsAsText(const zephrin::ado::RecordsetPtr& rows, int count);

}  // namespace demo
