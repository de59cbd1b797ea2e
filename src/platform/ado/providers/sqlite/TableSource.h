#pragma once

#include "platform/ado/providers/sqlite/Deadline.h"

#include <QList>
#include <QString>

namespace zephrin::ado::providers::sqlite {

/// Where the tables of a session come from that are not in its file from the start. Both operations may throw
/// ado::Error, which ends the statement.
class TableSource {
 public:
    virtual ~TableSource() = default;
    /// A statement names this table or view: it is made now, if there is one of that name.
    virtual void Declare(const QString& name) = 0;
    /// A statement reads these tables next: their rows must be there. The time counts as the statement's.
    virtual void Fill(const QList<QString>& tables, Deadline& deadline) = 0;
};

}  // namespace zephrin::ado::providers::sqlite
