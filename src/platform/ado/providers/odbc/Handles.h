#pragma once

#include <QString>

#include <memory>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace zephrin::ado::odbc {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "texts go to the driver manager as UTF-16");

inline SQLWCHAR* ToWide(const QString& text) {
    // The driver manager's prototypes lack const; it doesn't write there.
    return const_cast<SQLWCHAR*>(reinterpret_cast<const SQLWCHAR*>(text.utf16()));
}
inline QString FromWide(const SQLWCHAR* text, qsizetype units = -1) {
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(text), units);
}
/// A number where ODBC wants a pointer.
inline SQLPOINTER AsPointer(SQLULEN value) {
    return reinterpret_cast<SQLPOINTER>(value);
}

/// An environment of ODBC 3. The handle is null where the driver manager gave none.
class Environment {
 public:
    Environment();
    ~Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    SQLHENV Handle() const { return handle; }

 private:
    SQLHENV handle = SQL_NULL_HENV;
};

/// One connection's handles. Made, used and destroyed on the thread of its Worker, since each of these may
/// hang.
class Link {
 public:
    Link();
    ~Link();
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    SQLHDBC Handle() const { return handle; }
    /// The destructor disconnects from then on.
    void SetConnected() { connected = true; }

 private:
    Environment environment;
    SQLHDBC handle = SQL_NULL_HDBC;
    bool connected = false;
};

/// One statement's handle. It keeps its connection alive, and is destroyed on the worker's thread too.
class Statement {
 public:
    explicit Statement(std::shared_ptr<Link> link);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    SQLHSTMT Handle() const { return handle; }
    const Link& Connection() const { return *link; }

 private:
    std::shared_ptr<Link> link;
    SQLHSTMT handle = SQL_NULL_HSTMT;
};

}  // namespace zephrin::ado::odbc
