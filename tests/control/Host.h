#pragma once

#include "support/ScratchDatabase.h"
#include "support/ScriptedPrompts.h"
#include "wizard/frmZPG.h"

#include <zephrin/Zephrin.h>

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

namespace zephrin::test {

/// A host application with one control on it, which notes every event with its arguments.
class Host {
 public:
    explicit Host(const QString& script = SmallShopScript());
    ~Host();

    void Connect() { control->ZPBMakeConnection(database.ConnectionString()); }
    QStringList Offer() const;
    /// Lets deferred deletions and other queued work happen.
    static void Drain();

    static QWidget* Find(const char* name);
    static void Click(const char* name);
    static void ChooseTab(int tab);
    /// In a wizard on one table: chooses it, puts every field out and stands on the build-query tab.
    static void ChooseEverything();
    static void RunQuery() { Click("cmdRunQuery"); }

    ScratchDatabase database;
    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    QPointer<Zephrin> control = new Zephrin;
    /// "ConnectionComplete 0 '' ''" and the like, as they came.
    QStringList log;
    /// The rows of the last QueryExecuted.
    ado::RecordsetPtr rows;
    /// Runs at each event, with its name, after it was noted.
    std::function<void(const QString& event)> OnEvent;

 private:
    void Note(const QString& event, const QString& arguments = {});
    void Listen();
};

}  // namespace zephrin::test
