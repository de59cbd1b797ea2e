#pragma once

#include "platform/dialogs/LiveWait.h"
#include "runstate/ZPGGlobalDeclarations.h"

#include <functional>
#include <memory>

namespace zephrin {

/// Keeps the windows alive while a run works, shows on the form how far it is, and tells who wants to hear
/// it.
class LiveWork : public WorkSurroundings {
 public:
    std::function<void(const WorkProgress&)> OnProgress;
    std::function<void()> OnEnded;

    bool Breathe(ZPGGlobalDeclarations& state) override;
    void Ended(ZPGGlobalDeclarations& state) override;

 private:
    std::unique_ptr<LiveWait> wait;
    bool told = false;
};

}  // namespace zephrin
