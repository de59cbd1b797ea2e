#pragma once

#include "control/ControlProperties.h"
#include "runstate/Dialect.h"
#include "wizard/frmZPG.h"

#include <zephrin/Zephrin.h>

#include <QPointer>

#include <memory>
#include <optional>

namespace zephrin {

/// What the control holds. The state is shared with the wizard's form, and with whoever is in the middle of
/// an operation: it lives on while they do, though the control may be gone.
class Q_DECL_HIDDEN Zephrin::Private {
 public:
    explicit Private(Zephrin& owner);

    /// Window of the host that a wizard shown now belongs to; null where there is none.
    QWidget* Owner() const;
    void BringForward(frmZPG& open) const;

    struct ConnectArguments {
        QString ConnectionString, UserName, Password;
        int ConnectTimeout = 0;
        int CommandTimeout = 0;
        bool RemoveSystemTables = false;
    };
    /// Lets the user choose a connection where neither the arguments nor the properties give one.
    bool HasConnection(const ConnectArguments& arguments) const;
    void AskForConnection(ConnectArguments& arguments) const;
    /// Takes the route that the arguments call for. Nothing when no connection was attempted.
    std::optional<ConnectionErrors> Connect(const ConnectArguments& arguments);

    /// What the properties of a new control are: its labels have its own font.
    ControlProperties Defaults() const;
    std::shared_ptr<Prompts> DefaultUserPrompts() const;
    /// Hears the bridge of this control's wizard, from the first use on.
    void AttachBridge();
    /// What the wizard will read of the properties.
    void CopyOptions();
    void ShowForm();
    /// Raises ConnectionComplete; number 0 is a success.
    void TellConnection(const ado::Error& outcome);
    /// Closes the wizard and the connection without a word to anybody.
    void Terminate();

    /// Sets a flag that takes another one down with it.
    void SetWithDependent(bool& flag, const QString& name, bool value, bool& dependent,
                          const QString& dependentName);

    Zephrin& control;
    ControlProperties properties;
    std::shared_ptr<ZPGGlobalDeclarations> state;
    QPointer<frmZPG> form;
    /// The showing of `form`, as long as its end was not told.
    std::optional<int> openShowing;
    bool connectionFailed = false;

 private:
    ConnectionErrors OpenAndLoad(const ConnectArguments& arguments);
    /// The wizard was unloaded: what it was goes, and the host hears of it.
    void FormUnloaded(const QString& loadError);
    /// The toolkit took the form away without unloading it.
    void FormDestroyed();

    bool bridgeAttached = false;
};

}  // namespace zephrin
