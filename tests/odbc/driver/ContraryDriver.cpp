// An ODBC driver that does what drivers should not do, for the tests: it hangs, it lies, and it lacks most
// functions.
//
// The connection string says how it connects, the statement what it answers; see Scenario. It hangs for a few
// seconds only, so that what was left behind comes to its end within the test program.

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr unsigned HangSeconds = 6;

/// Whether the last statement of any connection was the one that breaks down with its time-out.
std::atomic<bool> DiedOfTimeout = false;

struct Cell {
    SQLSMALLINT Type;
    SQLULEN Size;
    std::u16string Text;
    bool Null = false;
    bool TellsLength = true;
};

struct Record {
    std::string State;
    SQLINTEGER Native;
    std::string Message;
};

struct Handle {
    std::vector<Record> Records;
    std::string Scenario;
    std::atomic<bool> HangsInCancel = false;  // read while another thread executes
    struct Bound {
        SQLSMALLINT CType;
        SQLPOINTER Place;
        SQLLEN Capacity;
        SQLLEN* Indicator;
    };
    std::map<int, Bound> Bindings;
    std::map<int, size_t> Read;  // units of a column that SQLGetData has handed out
    int RowsLeft = 0;
    // How whole blocks of rows are fetched, on a connection that can.
    bool CanBlocks = false;
    SQLULEN BlockRows = 1;
    SQLULEN RowBytes = 0;
    SQLULEN* Offset = nullptr;
    SQLULEN* Fetched = nullptr;

    SQLRETURN Fail(const char* state, SQLINTEGER native, const char* message) {
        Records = {{state, native, message}};
        return SQL_ERROR;
    }
};

Handle* Of(SQLHANDLE handle) {
    return static_cast<Handle*>(handle);
}

const std::vector<Cell>& CellsOf(const std::string& scenario) {
    static const std::map<std::string, std::vector<Cell>> all{
        {"types",
         {{SQL_INTEGER, 10, u"42"},
          {-9999, 20, u"unmapped"},
          {SQL_WVARCHAR, 10, {u'a', char16_t(0xD800), u'b'}},
          {SQL_VARCHAR, 10, u"", true},
          {SQL_WLONGVARCHAR, 0, std::u16string(100'000, u'x') + u"end", false, false},
          {SQL_INTEGER, 10, u"43"},
          {SQL_WLONGVARCHAR, 0, u"", true}}},
        {"lie", {{SQL_VARCHAR, 3, u"longer than three"}}},
        {"fetch", {{SQL_INTEGER, 10, u"1"}}},
        {"warned", {{SQL_INTEGER, 10, u"1"}}},
        {"middle", {{SQL_INTEGER, 10, u"1"}}},
        {"timeout", {{SQL_INTEGER, 10, u"1"}}},
        // A row fills a batch, so that many calls fetch them.
        {"slow", {{SQL_WVARCHAR, 600'000, u"row"}}},
    };
    static const std::vector<Cell> none;
    const auto found = all.find(scenario);
    return found == all.end() ? none : found->second;
}

SQLRETURN Deliver(const Cell& cell, const Handle::Bound& to, size_t& from) {
    if (cell.Null) {
        *to.Indicator = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    if (to.CType == SQL_C_SBIGINT) {
        const SQLBIGINT value = std::stoll(std::string(cell.Text.begin(), cell.Text.end()));
        std::memcpy(to.Place, &value, sizeof value);
        *to.Indicator = sizeof value;
        return SQL_SUCCESS;
    }
    const size_t left = cell.Text.size() - from;
    const size_t units = std::min(left, size_t(to.Capacity) / 2 - 1);
    std::memcpy(to.Place, cell.Text.data() + from, units * 2);
    static_cast<char16_t*>(to.Place)[units] = 0;
    *to.Indicator = cell.TellsLength || units == left ? SQLLEN(left * 2) : SQL_NO_TOTAL;
    from += units;
    return units < left ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

}  // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* out) {
    auto* made = new Handle;
    made->CanBlocks = type == SQL_HANDLE_STMT && Of(parent)->CanBlocks;
    *out = made;
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    delete Of(handle);
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT, SQLUSMALLINT) {
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLGetConnectAttr(SQLHDBC, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER,
                                    SQLINTEGER*) {
    if (attribute == SQL_ATTR_CONNECTION_DEAD)
        *static_cast<SQLUINTEGER*>(value) = DiedOfTimeout ? SQL_CD_TRUE : SQL_CD_FALSE;
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLDisconnect(SQLHDBC) {
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDriverConnect(SQLHDBC connection, SQLHWND, SQLCHAR* text, SQLSMALLINT, SQLCHAR*,
                                   SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
    const std::string given(reinterpret_cast<const char*>(text));
    Of(connection)->CanBlocks = given.find("Do=blocks") != std::string::npos;
    if (given.find("Do=hang") != std::string::npos) sleep(HangSeconds);
    if (given.find("Do=refuse") != std::string::npos)
        return Of(connection)->Fail("08001", 3705, "[Contrary]refused with a number of ADO's");
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRec(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT record, SQLCHAR* state,
                                SQLINTEGER* native, SQLCHAR* message, SQLSMALLINT capacity,
                                SQLSMALLINT* length) {
    const std::vector<Record>& all = Of(handle)->Records;
    if (size_t(record) > all.size()) return SQL_NO_DATA;
    const Record& from = all[size_t(record) - 1];
    std::memcpy(state, from.State.c_str(), 6);
    *native = from.Native;
    *length = SQLSMALLINT(from.Message.copy(reinterpret_cast<char*>(message), size_t(capacity) - 1));
    message[*length] = 0;
    return SQL_SUCCESS;
}

// The driver manager asks for no record without it.
SQLRETURN SQL_API SQLGetDiagField(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT,
                                  SQLSMALLINT*) {
    return SQL_NO_DATA;
}

SQLRETURN SQL_API SQLExecDirect(SQLHSTMT statement, SQLCHAR* text, SQLINTEGER length) {
    Handle& handle = *Of(statement);
    handle.Scenario.assign(reinterpret_cast<const char*>(text), size_t(length));
    handle.RowsLeft = handle.Scenario == "slow" ? 1000 : 3;
    DiedOfTimeout = handle.Scenario == "timeout";
    handle.HangsInCancel = handle.Scenario == "hang both";
    if (handle.Scenario == "hang" || handle.Scenario == "hang both") sleep(HangSeconds);
    if (handle.Scenario == "lost") return handle.Fail("08S01", 77, "[Contrary]link broken");
    if (handle.Scenario == "3704") return handle.Fail("42000", 3704, "[Contrary]no permission");
    if (handle.Scenario == "silent") return SQL_ERROR;
    if (handle.Scenario == "timeout")
        return handle.Fail("HYT00", 20003, "[Contrary]timed out, and then broke down");
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLCancel(SQLHSTMT statement) {
    if (Of(statement)->HangsInCancel) sleep(HangSeconds);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT statement, SQLSMALLINT* columns) {
    *columns = SQLSMALLINT(CellsOf(Of(statement)->Scenario).size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeCol(SQLHSTMT statement, SQLUSMALLINT number, SQLCHAR* name, SQLSMALLINT,
                                 SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                 SQLSMALLINT* nullable) {
    const Cell& cell = CellsOf(Of(statement)->Scenario)[number - 1];
    std::strcpy(reinterpret_cast<char*>(name), "c");
    *length = 1;
    *type = cell.Type;
    *size = cell.Size;
    *digits = 0;
    *nullable = SQL_NULLABLE_UNKNOWN;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT statement, SQLUSMALLINT number, SQLSMALLINT cType, SQLPOINTER place,
                             SQLLEN capacity, SQLLEN* indicator) {
    Of(statement)->Bindings[number] = {cType, place, capacity, indicator};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER) {
    Handle& handle = *Of(statement);
    if (!handle.CanBlocks) return handle.Fail("HYC00", 0, "[Contrary]no attributes");
    if (attribute == SQL_ATTR_ROW_ARRAY_SIZE) handle.BlockRows = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_ROW_BIND_TYPE) handle.RowBytes = reinterpret_cast<SQLULEN>(value);
    if (attribute == SQL_ATTR_ROW_BIND_OFFSET_PTR) handle.Offset = static_cast<SQLULEN*>(value);
    if (attribute == SQL_ATTR_ROWS_FETCHED_PTR) handle.Fetched = static_cast<SQLULEN*>(value);
    return SQL_SUCCESS;
}
SQLRETURN SQL_API SQLGetStmtAttr(SQLHSTMT statement, SQLINTEGER attribute, SQLPOINTER value, SQLINTEGER,
                                 SQLINTEGER*) {
    if (attribute != SQL_ATTR_ROW_ARRAY_SIZE)
        return Of(statement)->Fail("HYC00", 0, "[Contrary]not that one");
    *static_cast<SQLULEN*>(value) = Of(statement)->BlockRows;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT statement) {
    Handle& handle = *Of(statement);
    handle.Records.clear();
    if (handle.RowsLeft == 0) return SQL_NO_DATA;
    if (handle.Scenario == "slow") usleep(200'000);
    SQLRETURN outcome = SQL_SUCCESS;
    SQLULEN row = 0;
    for (; row < handle.BlockRows && handle.RowsLeft > 0; ++row) {
        --handle.RowsLeft;
        if (handle.Scenario == "fetch" && handle.RowsLeft == 0)
            return handle.Fail("22003", 5, "[Contrary]third row");
        if (handle.Scenario == "warned" || handle.Scenario == "middle") {
            // More warnings than anybody reads, and behind them what FreeTDS tells of a server that gave up.
            handle.Records.insert(handle.Records.end(), 40,
                                  {"01003", 8153, "[Contrary]a Null was passed over"});
            outcome = SQL_SUCCESS_WITH_INFO;
        }
        if (handle.Scenario == "middle" && handle.RowsLeft == 0) {
            handle.Records.push_back({"22012", 8134, "[Contrary]divided by zero"});
            break;
        }
        handle.Read.clear();
        for (const auto& [number, bound] : handle.Bindings) {
            const SQLULEN by = (handle.Offset ? *handle.Offset : 0) + row * handle.RowBytes;
            const Handle::Bound place{
                bound.CType, static_cast<char*>(bound.Place) + by, bound.Capacity,
                reinterpret_cast<SQLLEN*>(reinterpret_cast<char*>(bound.Indicator) + by)};
            size_t from = 0;
            if (Deliver(CellsOf(handle.Scenario)[size_t(number - 1)], place, from) != SQL_SUCCESS)
                outcome = SQL_SUCCESS_WITH_INFO;
        }
    }
    if (handle.Fetched) *handle.Fetched = row;
    return outcome;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT statement, SQLUSMALLINT number, SQLSMALLINT cType, SQLPOINTER place,
                             SQLLEN capacity, SQLLEN* indicator) {
    Handle& handle = *Of(statement);
    if (handle.Bindings.count(number) > 0) return handle.Fail("07009", 0, "[Contrary]bound already");
    return Deliver(CellsOf(handle.Scenario)[number - 1u], {cType, place, capacity, indicator},
                   handle.Read[number]);
}

}  // extern "C"
