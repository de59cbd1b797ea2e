#include "runstate/ZPGGlobalDeclarations.h"

#include "resources/StringTable.h"
#include "runstate/clsBridge.h"

namespace zephrin {

ZPGGlobalDeclarations::ZPGGlobalDeclarations(ado::ProviderSet providers, std::shared_ptr<Prompts> prompts)
    : Providers(std::move(providers)), UserPrompts(std::move(prompts)), Form(std::make_shared<FormState>()) {}

ZPGGlobalDeclarations::~ZPGGlobalDeclarations() = default;

ado::Connection& ZPGGlobalDeclarations::SharedConnection() {
    if (adoConnection) return *adoConnection;
    adoConnection = std::make_unique<ado::Connection>(Providers);
    adoConnection->SetWatcher(WatcherOf(*this));
    return *adoConnection;
}

clsBridge& ZPGGlobalDeclarations::Bridge() {
    if (!oBridge) oBridge = std::make_unique<clsBridge>();
    return *oBridge;
}

void SetStatusText(ZPGGlobalDeclarations& state, const QString& text) {
    state.Form->StatusText = text;
}

QString ResString(const ZPGGlobalDeclarations& state, int id) {
    return resources::LoadResString(id + state.gResourceOffset);
}

}  // namespace zephrin
