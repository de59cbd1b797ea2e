#pragma once

#include <zephrin/Export.h>

#include <QString>

#include <exception>

namespace zephrin::ado {

/// Numbers of errors that ADO users know. A provider's own errors carry the provider's numbers.
namespace ErrorNumber {
inline constexpr int InvalidArgument = 3001;      ///< An argument that makes no sense
inline constexpr int WriteFile = 3004;            ///< A file could not be written
inline constexpr int NoCurrentRecord = 3021;      ///< The cursor stands on no row
inline constexpr int FeatureNotAvailable = 3251;  ///< The provider can't do that
inline constexpr int ItemNotFound = 3265;         ///< No column of that name or position
inline constexpr int ObjectClosed = 3704;         ///< Needs an open object
inline constexpr int ObjectOpen = 3705;           ///< Needs a closed object
inline constexpr int ProviderNotFound = 3706;     ///< No provider takes the connection string
inline constexpr int InvalidConnection = 3709;    ///< The connection is closed, or a file is no recordset
inline constexpr int StillExecuting = 3711;       ///< Another operation is still under way
inline constexpr int OperationCancelled = 3712;   ///< Stopped by the user or the host
/// A value that its field cannot hold: too long, or of a type that does not convert.
inline constexpr int ValueRefused = -2147217887;
/// A failure of a provider that brought no number of its own.
inline constexpr int ProviderFailed = -2147467259;
/// A statement or a connection attempt that ran into its time-out.
inline constexpr int TimeoutExpired = -2147217871;
/// A result that is larger than the connection lets it be.
inline constexpr int OutOfMemory = -2147024882;
}  // namespace ErrorNumber

/// The one error of the data layer. It is thrown by a connection, a statement, a file, or the writing of a
/// value that does not fit; moving about in a recordset never throws it.
class ZEPHRIN_EXPORT Error : public std::exception {
 public:
    /// `source` is who says so.
    Error(int number, QString description, QString source = QStringLiteral("ADODB"));
    ~Error() override;

    /// One of ErrorNumber, or the provider's own number.
    int Number() const { return number; }
    /// What went wrong, in the provider's own words where it has any. Without a trailing line break.
    const QString& Description() const { return description; }
    /// Who says so: "ADODB" or the provider's or driver's name.
    const QString& Source() const { return source; }
    /// Position in the statement that was sent, in UTF-16 units from 0, or -1 where the provider gave none.
    qsizetype Position() const { return position; }
    /// Where in the statement it went wrong, see Position().
    void SetPosition(qsizetype at) { position = at; }

    /// The description in UTF-8.
    const char* what() const noexcept override { return utf8.constData(); }

 private:
    int number;
    QString description;
    QString source;
    qsizetype position = -1;
    QByteArray utf8;
};

}  // namespace zephrin::ado
