#pragma once

#include "runstate/Dialect.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <utility>

namespace zephrin {

/// The five settings of a control that a connection page reads and writes.
struct ConnectionSettings {
    int ZPBCommandTimeout = 60;
    int ConnectionTimeout = 60;
    QString ZPBConnectionString;
    QString ZPBCommandType;
    QString ZPBTableString;
};

/// What stands on a connection page, and what its user does to it. It has a run of its own to connect with,
/// so that no control is touched, and closes that connection at its end.
class ConnectionPageState {
 public:
    explicit ConnectionPageState(std::unique_ptr<ZPGGlobalDeclarations> ownRun);
    ~ConnectionPageState();
    ConnectionPageState(const ConnectionPageState&) = delete;
    ConnectionPageState& operator=(const ConnectionPageState&) = delete;

    // --- What stands on the page ---

    QString txtZPGDataConnection;
    QString cmbZPGCommandType;
    bool CommandTypeEnabled = false;
    /// Row 0 is "*", once tables are on offer.
    QStringList lstZPGSelTables;
    bool SelTablesEnabled = false;
    QStringList lstZPGSelectedTables;
    QString txtConnectionTimeout;
    QString txtCommandTimeout;
    /// Something was changed since the page was filled or applied.
    bool Changed = false;

    // --- What its user does ---

    /// Shows the settings of another control. Where they have a connection and a type, it connects for the
    /// tables on offer, and returns what went wrong. The page is unmarked after that.
    ConnectionErrors Fill(const ConnectionSettings& settings);
    void ConnectionTextChanged(const QString& text);
    /// Takes back what belongs to the present connection, before another one is asked for.
    void BuildConnection();
    /// Connects, and puts the tables of that type on offer. What went wrong comes back, and the offer stays
    /// then.
    ConnectionErrors CommandTypeChanged(const QString& type);
    /// Chooses the tables in these rows of the offer. Row 0 stands for all the others. Returns the rows that
    /// are selected from then on.
    QList<int> SelTablesClicked(QList<int> rows);
    /// The rows of the offer that hold chosen tables, with or without their delimiters.
    QList<int> ChosenRows() const;
    /// False when the text is no number; it stands all the same.
    bool ConnectionTimeoutChanged(const QString& text);
    bool CommandTimeoutChanged(const QString& text);

    /// What the control gets, by the names of its properties and in their order. A time-out that is no 32-bit
    /// number is left out. The page is unmarked after that.
    QList<std::pair<QByteArray, QVariant>> Apply();

    /// The chosen tables, each behind a ";" where they were chosen here.
    const QString& TableString() const { return tableString; }
    ZPGGlobalDeclarations& Run() { return *run; }

 private:
    bool TimeoutChanged(QString& timeout, const QString& text);
    void FillSelTables();
    void Choose(const QString& table);
    void ClearChosen();

    std::unique_ptr<ZPGGlobalDeclarations> run;
    QString tableString;
};

}  // namespace zephrin
