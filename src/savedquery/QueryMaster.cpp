#include "savedquery/QueryMaster.h"

#include <zephrin/ado/Error.h>

namespace zephrin {

namespace {

struct Column {
    const char16_t* Name;
    int Size;
};
constexpr int pathSize = 2000;
constexpr Column columns[] = {
    {u"rsWhere", pathSize},
    {u"rsGroupBy", pathSize},
    {u"rsOrderBy", pathSize},
    {u"rsCalcFields", pathSize},
    {u"rsJoins", pathSize},
    {u"rsZPBQueryValues", pathSize},
    {u"ConnectionString", pathSize},
    {u"ConnectionTimeout", 4},
    {u"CommandTimeout", 4},
    {u"PassWord", 255},
    {u"UserId", 255},
    {u"rsAlias", pathSize},
    {u"rsJoinTablesUsed", pathSize},
    {u"rsJoinTable", pathSize},
};

std::optional<int> ToSeconds(const QString& text) {
    bool number = false;
    const int seconds = text.toInt(&number);
    return number && seconds >= 0 ? std::optional(seconds) : std::nullopt;
}

}  // namespace

QueryMaster DescribeConnection(ZPGGlobalDeclarations& state) {
    QueryMaster master;
    master.ConnectionString = state.SharedConnection().ConnectionString();
    master.UserId = state.gUserId;
    master.Password = state.gPassword;
    master.ConnectionTimeout = state.gConnectionTimeout;
    master.CommandTimeout = state.gCommandTimeout;
    return master;
}

ado::RecordsetPtr MasterToRows(const QueryMaster& master, QStringList& leftOut) {
    auto rows = std::make_shared<ado::Recordset>();
    for (const Column& column : columns)
        rows->Append(QString::fromUtf16(column.Name), ado::DataType::VarChar, column.Size);
    rows->Open();
    rows->AddNew();
    const auto write = [&](const char16_t* name, const QString& text) {
        try {
            rows->SetValue(QStringView(name), text);
        } catch (const ado::Error&) {
            leftOut << QString::fromUtf16(name);
        }
    };
    for (size_t each = 0; each < CompanionCount; ++each) write(Companions()[each].Column, master.Paths[each]);
    write(u"ConnectionString", master.ConnectionString);
    write(u"ConnectionTimeout", QString::number(master.ConnectionTimeout.value_or(0)));
    write(u"CommandTimeout", QString::number(master.CommandTimeout.value_or(0)));
    write(u"PassWord", master.Password);
    write(u"UserId", master.UserId);
    rows->Update();
    return rows;
}

std::optional<QueryMaster> RowsToMaster(ado::Recordset& rows) {
    for (const Column& column : columns)
        if (rows.FieldIndex(QStringView(column.Name)) < 0) return std::nullopt;
    if (rows.RecordCount() == 0) return std::nullopt;
    rows.MoveFirst();
    QueryMaster master;
    for (size_t each = 0; each < CompanionCount; ++each)
        master.Paths[each] = rows.Text(QStringView(Companions()[each].Column));
    master.ConnectionString = rows.Text(u"ConnectionString");
    master.UserId = rows.Text(u"UserId");
    master.Password = rows.Text(u"PassWord");
    master.ConnectionTimeout = ToSeconds(rows.Text(u"ConnectionTimeout"));
    master.CommandTimeout = ToSeconds(rows.Text(u"CommandTimeout"));
    return master;
}

}  // namespace zephrin
