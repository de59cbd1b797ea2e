#include "platform/ado/providers/odbc/OdbcProvider.h"

#include "platform/ado/providers/odbc/DriverList.h"
#include "platform/ado/providers/odbc/OdbcSession.h"

namespace zephrin::ado::providers {

bool OdbcProvider::Accepts(const QString&) const {
    return true;
}

std::unique_ptr<Session> OdbcProvider::Open(const OpenRequest& request) const {
    return std::make_unique<odbc::OdbcSession>(odbc::Translate(request, odbc::Installation::Read()), request);
}

InstalledSources OdbcProvider::Installed() const {
    const odbc::Installation installation = odbc::Installation::Read();
    InstalledSources sources;
    for (const odbc::Driver& driver : installation.Drivers) sources.Drivers << driver.Name;
    sources.DataSources = installation.DataSources;
    return sources;
}

}  // namespace zephrin::ado::providers
