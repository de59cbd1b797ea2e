#pragma once

#include "runstate/ZPGGlobalDeclarations.h"

#include <functional>

namespace zephrin {

/// Reads the columns of tables from the database's own description, through a connection of its own.
class clsFieldRetrieval {
 public:
    explicit clsFieldRetrieval(ZPGGlobalDeclarations& state);
    ~clsFieldRetrieval();

    /// Hears the description of any failure; the result is then empty.
    std::function<void(const QString& description)> FieldCollectionError;

    /// The fields of `tables` as `[table].[field]`, table after table, in column order. A table text loses
    /// its first and last character, so it must carry its delimiters; a text of one or two characters ends
    /// the walk and the result is empty.
    Collection FieldCollection(const Collection& tables);
    /// The last result is empty because somebody stopped the reading; nobody was told then.
    bool WasStopped() const { return stopped; }

 private:
    Collection ReadFields(const Collection& tables);

    ZPGGlobalDeclarations& state;
    std::unique_ptr<ado::Connection> connection;
    bool stopped = false;
};

/// Asks for the type of one field, through a connection of its own.
class clsFieldType {
 public:
    explicit clsFieldType(ZPGGlobalDeclarations& run) : state(run) {}
    /// Throws ado::Error when the field can't be read. Names carry their delimiters.
    ado::DataType FieldType(const QString& tableName, const QString& fieldName);

 private:
    ZPGGlobalDeclarations& state;
};

/// Reads the distinct values of one field, or of an expression, on the shared connection, in ascending order,
/// Null included.
class clsFieldValues {
 public:
    explicit clsFieldValues(ZPGGlobalDeclarations& run) : state(run) {}
    // Both answer with one column and throw ado::Error where it can't be read. `from` is a FROM clause with
    // what follows it.
    ado::RecordsetPtr colFieldValues(const QString& tableName, const QString& fieldName);
    ado::RecordsetPtr colExpressionValues(const QString& expression, const QString& from);

 private:
    ZPGGlobalDeclarations& state;
};

}  // namespace zephrin
