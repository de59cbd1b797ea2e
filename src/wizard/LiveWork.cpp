#include "wizard/LiveWork.h"

#include <utility>

namespace zephrin {

namespace {

void Show(const ZPGGlobalDeclarations& state) {
    if (state.ShowWork) state.ShowWork();
}

}  // namespace

bool LiveWork::Breathe(ZPGGlobalDeclarations& state) {
    if (!wait) wait = std::make_unique<LiveWait>();
    if (state.WorkNow.Felt) {
        wait->Begin();
        Show(state);
        if (OnProgress) OnProgress(state.WorkNow.Progress);
        told = true;
    }
    return wait->Breathe();
}

void LiveWork::Ended(ZPGGlobalDeclarations& state) {
    wait.reset();
    if (!std::exchange(told, false)) return;
    Show(state);
    if (OnEnded) OnEnded();
}

}  // namespace zephrin
