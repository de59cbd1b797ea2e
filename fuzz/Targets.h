#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>
#include <string>

namespace zephrin::fuzz {

/// What a target throws where the program did what it must not: a fuzzer then keeps the input, a test fails.
class Broken : public std::logic_error {
 public:
    using std::logic_error::logic_error;
};

inline void Require(bool holds, const char* what) {
    if (!holds) throw Broken(what);
}
void Require(bool holds, const QString& what);

// Each of these feeds a part of the program that takes what others made with any bytes. That part may refuse
// them in its own way, and nothing else.

/// A saved recordset, as a query file holds them: what is read can be written, and reads the same again.
void FeedRecordset(const QByteArray& input);
/// A statement for the embedded engine, behind a byte that chooses the dialect.
void FeedStatement(const QByteArray& input);
/// Choices of which a statement is made that means the same to the embedded engine and to SQLite.
void FeedDifference(const QByteArray& input);
/// A connection string on its way to a driver: no part of it takes the place of the login of the request.
void FeedConnection(const QByteArray& input);
/// A form of Qt Designer, of which one widget's properties are read, set and removed.
void FeedForm(const QByteArray& input);
/// Choices of which rows are made, which a workbook must hold as they are.
void FeedWorkbook(const QByteArray& input);

}  // namespace zephrin::fuzz
