#pragma once

#include "platform/ado/Provider.h"

#include <QList>
#include <QString>

namespace zephrin::ado::odbc {

/// What a driver speaks to, as far as connection strings differ by it.
enum class Family {
    SqlServer,  ///< the vendor's own drivers
    FreeTds,    ///< the same servers, with a port keyword of its own
    Access,
    Excel,
    Other,
};

/// A driver that the driver manager knows.
struct Driver {
    QString Name;
    QString Library;  ///< the file, with or without a path

    bool operator==(const Driver&) const = default;
};

Family FamilyOf(const Driver& driver);

/// What is installed on this machine. A plain value, so that tests can have another machine.
struct Installation {
    QList<Driver> Drivers;
    QList<InstalledSources::DataSource> DataSources;

    /// Asks the driver manager; empty lists where it has none.
    static Installation Read();

    /// The driver of that name, without regard to case.
    const Driver* Find(const QString& name) const;
    /// The best installed driver for SQL Server: the vendor's newest first, then FreeTDS.
    const Driver* ForSqlServer() const;
    /// The first driver whose name begins with `prefix`.
    const Driver* WithPrefix(const QString& prefix) const;
    /// "Installed drivers: A, B." for an error that a driver is missing.
    QString Listing() const;
};

}  // namespace zephrin::ado::odbc
