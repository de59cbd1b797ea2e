#pragma once

#include <zephrin/Export.h>
#include <zephrin/ado/Recordset.h>
#include <zephrin/clsTableCollection.h>

#include <QFont>
#include <QIcon>
#include <QString>
#include <QWidget>

#include <limits>
#include <memory>

namespace zephrin {

class Prompts;
class PropertyBag;

/// The query builder as a control: a host puts it on a form, connects it to a database, shows the wizard to
/// its user and hears what happened.
///
///     auto* builder = new zephrin::Zephrin(this);
///     connect(builder, &zephrin::Zephrin::QueryExecuted, this,
///             [](int& number, QString& error, QString& sql, zephrin::ado::RecordsetPtr& rows) {
///                 if (number == 0) qInfo() << sql << rows->RecordCount();
///             });
///     builder->ZPBMakeConnection(QStringLiteral("Provider=SQLite;Dialect=SQL Server;Data Source=shop.db"));
///     builder->ZPBShowZephrin();
///
/// The control itself is never seen while a program runs; in a form editor it has a small fixed footprint. At
/// most one wizard is open in an application. The wizard reads the properties when it is shown: a change
/// after that counts from the next showing on. The same control can show it again and again on one
/// connection.
///
/// Everything runs on the thread of the user interface. Events are raised in the middle of what caused them,
/// so connect them directly. Their arguments go by reference; what a host writes into them changes nothing of
/// the query. A host may do anything in a handler, delete the control included: its wizard then closes
/// without a question and without a word. Nothing here throws.
class ZEPHRIN_EXPORT Zephrin : public QWidget {
    Q_OBJECT
    Q_PROPERTY(
        QString ZPBConnectionString READ ZPBConnectionString WRITE SetZPBConnectionString DESIGNABLE false)
    Q_PROPERTY(QString ZPBCommandType READ ZPBCommandType WRITE SetZPBCommandType DESIGNABLE false)
    Q_PROPERTY(int ZPBCommandTimeout READ ZPBCommandTimeout WRITE SetZPBCommandTimeout DESIGNABLE false)
    Q_PROPERTY(QString ZPBTableString READ ZPBTableString WRITE SetZPBTableString DESIGNABLE false)
    Q_PROPERTY(int ConnectionTimeout READ ConnectionTimeout WRITE SetConnectionTimeout DESIGNABLE false)
    Q_PROPERTY(quint32 ZPBLabelBackColor READ ZPBLabelBackColor WRITE SetZPBLabelBackColor)
    Q_PROPERTY(quint32 ZPBLabelForeColor READ ZPBLabelForeColor WRITE SetZPBLabelForeColor)
    Q_PROPERTY(QFont ZPBLabelFont READ ZPBLabelFont WRITE SetZPBLabelFont)
    Q_PROPERTY(QIcon ZPBRunTimeControlIcon READ ZPBRunTimeControlIcon WRITE SetZPBRunTimeControlIcon)
    Q_PROPERTY(
        QString ZPBRunTimeControlCaption READ ZPBRunTimeControlCaption WRITE SetZPBRunTimeControlCaption)
    Q_PROPERTY(bool ZPBAllowTableSelection READ ZPBAllowTableSelection WRITE SetZPBAllowTableSelection)
    Q_PROPERTY(bool ZPBAllowJoinCreation READ ZPBAllowJoinCreation WRITE SetZPBAllowJoinCreation)
    Q_PROPERTY(bool ZPBAllowFieldSelection READ ZPBAllowFieldSelection WRITE SetZPBAllowFieldSelection)
    Q_PROPERTY(bool ZPBShowQueryResults READ ZPBShowQueryResults WRITE SetZPBShowQueryResults)
    Q_PROPERTY(bool ZPBCreateQueryRecordset READ ZPBCreateQueryRecordset WRITE SetZPBCreateQueryRecordset)
    Q_PROPERTY(bool ZPBAllowValueSearch READ ZPBAllowValueSearch WRITE SetZPBAllowValueSearch)
    Q_PROPERTY(bool ZPBAllowGroupByOption READ ZPBAllowGroupByOption WRITE SetZPBAllowGroupByOption)
    Q_PROPERTY(bool ZPBAllowOrderByOption READ ZPBAllowOrderByOption WRITE SetZPBAllowOrderByOption)
    Q_PROPERTY(bool ZPBAllowCalcFieldOption READ ZPBAllowCalcFieldOption WRITE SetZPBAllowCalcFieldOption)
    Q_PROPERTY(
        bool ZPBAllowAndOrOverride READ ZPBAllowAndOrOverride WRITE SetZPBAllowAndOrOverride DESIGNABLE false)
    Q_PROPERTY(bool ZPBAllowExcelExport READ ZPBAllowExcelExport WRITE SetZPBAllowExcelExport)
    Q_PROPERTY(bool ZPBDisableDefaultExportToExcel READ ZPBDisableDefaultExportToExcel WRITE
                   SetZPBDisableDefaultExportToExcel)
    Q_PROPERTY(bool ZPBAllowSaveDeleteQuery READ ZPBAllowSaveDeleteQuery WRITE SetZPBAllowSaveDeleteQuery)
    Q_PROPERTY(bool ZPBAllowSQLReset READ ZPBAllowSQLReset WRITE SetZPBAllowSQLReset)
    Q_PROPERTY(bool ZPBAllowCreateView READ ZPBAllowCreateView WRITE SetZPBAllowCreateView)
    Q_PROPERTY(bool ZPBModalForm READ ZPBModalForm WRITE SetZPBModalForm)
    Q_PROPERTY(QString ZPBDateFormat READ ZPBDateFormat WRITE SetZPBDateFormat)
    Q_PROPERTY(QString ZPBActiveConnectionString READ ZPBActiveConnectionString STORED false DESIGNABLE false)
    Q_PROPERTY(
        zephrin::clsTableCollection ZPBTableCollection READ ZPBTableCollection STORED false DESIGNABLE false)

 public:
    /// Connects to nothing and shows nothing.
    explicit Zephrin(QWidget* parent = nullptr);
    ~Zephrin() override;

    // --- Methods ---

    /// The value of a time-out that is not passed: the property says how long, then.
    static constexpr int Omitted = std::numeric_limits<int>::min();

    /// Shows name and version of the product.
    Q_INVOKABLE void ShowAboutBox();
    /// Connects, and puts the database's tables on offer. With an empty string the ZPBConnectionString
    /// property counts, on its own time-outs and with the tables of ZPBTableString; where that is empty too,
    /// the user is asked for a connection. With OpenQuery or a QueryName nothing is connected here: the
    /// wizard opens that saved query, which brings its connection, and where the name is empty it asks for a
    /// file.
    ///
    /// The outcome is told by ConnectionComplete, but for a saved query and for a user who cancelled. In the
    /// middle of a work (see Busy) nothing is done, and ConnectionComplete brings
    /// ErrorNumber::StillExecuting. Time-outs are seconds, 0 waits for ever; MaxRecords limits the rows of a
    /// query, 0 does not.
    Q_INVOKABLE void ZPBMakeConnection(const QString& ConnectionString = {}, const QString& UserName = {},
                                       const QString& Password = {}, int ConnectTimeout = Omitted,
                                       int CommandTimeout = Omitted, int MaxRecords = 0,
                                       bool OpenQuery = false, const QString& QueryName = {},
                                       bool RemoveSystemTables = false);
    /// Closes the connection, if there is one. What goes on over it ends as if it was stopped.
    Q_INVOKABLE void ZPBDisconnectConnection();
    /// Shows the wizard, when there are tables on offer or a query is to be opened; a box says so when there
    /// are not. Does nothing while a wizard is open, nor while this control connects.
    Q_INVOKABLE void ZPBShowZephrin();
    /// Connection data for exports to old workbooks, whose query tables need a connection string of their own
    /// kind.
    Q_INVOKABLE void ZPBExcel97ConnectionDetails(const QString& Driver, const QString& Database,
                                                 const QString& Server = {}, const QString& DBQ = {},
                                                 const QString& UserID = {}, const QString& Password = {},
                                                 bool TrustedConnection = false);

    /// Puts the host's own boxes and dialogs in the place of the default ones; null brings these back.
    void SetPrompts(std::shared_ptr<Prompts> prompts);

    // --- Where the properties are kept ---

    /// Gives every property the value that it has on a new control.
    void InitProperties();
    /// Takes every property out of the bag, with the value of a new control for what is not there. It does so
    /// past the rules of the single properties: what was stored comes back, and nothing is reported.
    void ReadProperties(const PropertyBag& bag);
    /// Writes every property into the bag.
    void WriteProperties(PropertyBag& bag) const;

    // --- Properties ---

    /// Connection string of ZPBMakeConnection when it gets none.
    QString ZPBConnectionString() const;
    void SetZPBConnectionString(const QString& value);
    /// "Tables", "Views" or "Both": what the connection page offers.
    QString ZPBCommandType() const;
    void SetZPBCommandType(const QString& value);
    /// Seconds for a statement when ZPBMakeConnection gets none; 0 waits for ever.
    int ZPBCommandTimeout() const;
    void SetZPBCommandTimeout(int value);
    /// Fixed list of tables, ";" between them. A last name of one character is lost.
    QString ZPBTableString() const;
    void SetZPBTableString(const QString& value);
    /// Seconds for connecting when ZPBMakeConnection gets none; 0 waits for ever.
    int ConnectionTimeout() const;
    void SetConnectionTimeout(int value);
    /// Back colour of the wizard's labels and check boxes, as OLE colour: 0x00BBGGRR, or a system
    /// colour with the top bit set.
    quint32 ZPBLabelBackColor() const;
    void SetZPBLabelBackColor(quint32 value);
    /// Fore colour of the same.
    quint32 ZPBLabelForeColor() const;
    void SetZPBLabelForeColor(quint32 value);
    /// Font of labels, check boxes and buttons; the control's own font at first.
    QFont ZPBLabelFont() const;
    void SetZPBLabelFont(const QFont& value);
    /// Icon of the wizard; an empty one keeps the application's.
    QIcon ZPBRunTimeControlIcon() const;
    void SetZPBRunTimeControlIcon(const QIcon& value);
    /// Caption of the wizard and title of its boxes.
    QString ZPBRunTimeControlCaption() const;
    void SetZPBRunTimeControlCaption(const QString& value);
    /// Table tab shown. False also sets ZPBAllowJoinCreation to False, and reports that.
    bool ZPBAllowTableSelection() const;
    void SetZPBAllowTableSelection(bool value);
    /// Join tab shown. Can be set only while ZPBAllowTableSelection is True.
    bool ZPBAllowJoinCreation() const;
    void SetZPBAllowJoinCreation(bool value);
    /// Field tab shown.
    bool ZPBAllowFieldSelection() const;
    void SetZPBAllowFieldSelection(bool value);
    /// Results tab shown. Can be set only while ZPBCreateQueryRecordset is True.
    bool ZPBShowQueryResults() const;
    void SetZPBShowQueryResults(bool value);
    /// A query that is run is sent to the database. False also sets ZPBShowQueryResults to False, and
    /// reports that; QueryExecuted then brings the statement and a recordset that was never opened.
    bool ZPBCreateQueryRecordset() const;
    void SetZPBCreateQueryRecordset(bool value);
    /// The user may look values up in the database.
    bool ZPBAllowValueSearch() const;
    void SetZPBAllowValueSearch(bool value);
    /// Grouping is offered.
    bool ZPBAllowGroupByOption() const;
    void SetZPBAllowGroupByOption(bool value);
    /// Ordering is offered.
    bool ZPBAllowOrderByOption() const;
    void SetZPBAllowOrderByOption(bool value);
    /// Calculated fields are offered.
    bool ZPBAllowCalcFieldOption() const;
    void SetZPBAllowCalcFieldOption(bool value);
    /// Has no effect, and setting it does nothing.
    bool ZPBAllowAndOrOverride() const;
    void SetZPBAllowAndOrOverride(bool value);
    /// The Excel button is there.
    bool ZPBAllowExcelExport() const;
    void SetZPBAllowExcelExport(bool value);
    /// The Excel button only raises ExportToExcel and leaves the export to the host.
    bool ZPBDisableDefaultExportToExcel() const;
    void SetZPBDisableDefaultExportToExcel(bool value);
    /// Queries can be saved and deleted, and closing asks whether to save.
    bool ZPBAllowSaveDeleteQuery() const;
    void SetZPBAllowSaveDeleteQuery(bool value);
    /// The reset button can be pressed.
    bool ZPBAllowSQLReset() const;
    void SetZPBAllowSQLReset(bool value);
    /// The button that stores the statement as a view is there, on database servers.
    bool ZPBAllowCreateView() const;
    void SetZPBAllowCreateView(bool value);
    /// ZPBShowZephrin returns when the wizard was closed.
    bool ZPBModalForm() const;
    void SetZPBModalForm(bool value);
    /// How dates are written in criteria, e.g. "mm/dd/yyyy h:mm:ss am/pm".
    QString ZPBDateFormat() const;
    void SetZPBDateFormat(const QString& value);
    /// The string of the connection at this moment.
    QString ZPBActiveConnectionString() const;
    /// The tables on offer, for a host that wants others.
    clsTableCollection ZPBTableCollection() const;

 Q_SIGNALS:
    // --- Events, in the order of their numbers ---

    /// A query was run: 0 and the rows, or the error of the statement. The rows are the host's own copy,
    /// without any cost, and outlive the wizard.
    void QueryExecuted(int& ErrorNumber, QString& Error, QString& SQL,
                       zephrin::ado::RecordsetPtr& QueryResults);
    /// A connection attempt ended: 0 for a success.
    void ConnectionComplete(int& ErrorNumber, QString& ErrorDescription, QString& ErrorSource);
    /// The user saved the query; the name is the path that he chose for its file.
    void QuerySaved(QString& QueryName);
    /// The user deleted a saved query; the name is the path that its file had.
    void QueryDeleted(QString& QueryName);
    /// The wizard was closed and everything of it released: it can be shown again from here. The text is
    /// empty unless a saved query could not be opened.
    void ZPBUnloaded(QString& QueryLoadError);
    /// ZPBMakeConnection found a wizard open and did nothing.
    void ZPBAlreadyLoaded();
    /// The user stored the statement as a view. The action is "NewViewCreated" or "AlterView".
    void UserCreatedView(QString& ViewName, QString& Action);
    /// The Excel button was pressed; the export follows, unless it is left to the host.
    void ExportToExcel();

    // --- Beside the events ---

    /// The user waits for the database: what for, the records so far, and since how many seconds. Raised
    /// about twenty times a second once it has taken 300 ms, for a host that shows progress of its own.
    /// Events are let in meanwhile; a handler may do anything, delete the control included.
    void Busy(const QString& what, qint64 rows, int seconds);
    /// What Busy told of is over, whichever way; what came of it is told by the events. A control that is
    /// deleted meanwhile says nothing more.
    void BusyEnded();

    /// A property was set, be it to the value that it had; `name` is the property's.
    void PropertyChanged(const QString& name);

 public Q_SLOTS:
    /// Stays hidden whatever a host shows, except in a form editor (dynamic property "ZPBDesignTime").
    void setVisible(bool visible) override;
    /// Stops what Busy tells of, as the wizard's button does; nothing where there is nothing to stop. A query
    /// ends as a failed one, with ErrorNumber::OperationCancelled.
    void StopWork();

 public:
    /// Size of the footprint in a form editor.
    QSize sizeHint() const override;

 protected:
    /// Keeps the footprint of a form editor as it is.
    /// @{
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /// @}

 private:
    class Private;
    std::unique_ptr<Private> d;
};

}  // namespace zephrin
