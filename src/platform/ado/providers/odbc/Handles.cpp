#include "platform/ado/providers/odbc/Handles.h"

namespace zephrin::ado::odbc {

Environment::Environment() {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &handle))) {
        handle = SQL_NULL_HENV;
        return;
    }
    SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, AsPointer(SQL_OV_ODBC3), 0);
}

Environment::~Environment() {
    if (handle) SQLFreeHandle(SQL_HANDLE_ENV, handle);
}

Link::Link() {
    if (environment.Handle()) SQLAllocHandle(SQL_HANDLE_DBC, environment.Handle(), &handle);
}

Link::~Link() {
    if (!handle) return;
    if (connected) SQLDisconnect(handle);
    SQLFreeHandle(SQL_HANDLE_DBC, handle);
}

Statement::Statement(std::shared_ptr<Link> owner) : link(std::move(owner)) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_STMT, link->Handle(), &handle))) handle = SQL_NULL_HSTMT;
}

Statement::~Statement() {
    if (handle) SQLFreeHandle(SQL_HANDLE_STMT, handle);
}

}  // namespace zephrin::ado::odbc
