#include "RandomActs.h"

namespace zephrin {

namespace {

using test::Act;
using test::Acts;
using test::WizardRun;

/// What went wrong first, with all that was done until then; empty when nothing did.
QString Play(const Acts& acts) {
    WizardRun run;
    run.Load();
    QStringList done;
    for (const Act& act : acts) {
        const QString what = Perform(run, act);
        if (what.isEmpty()) continue;
        done << what;
        const QString broken = BrokenInvariant(run, act.PlainValues);
        if (!broken.isEmpty())
            return done.join(QStringLiteral("\n  ")) + QStringLiteral("\nbreaks: ") + broken;
    }
    return {};
}

/// The shortest sequence that still fails and is reached by leaving parts out.
Acts Shrunk(Acts acts) {
    for (std::size_t part = acts.size() / 2; part > 0; part /= 2) {
        for (std::size_t at = 0; at + part <= acts.size();) {
            Acts shorter(acts.begin(), acts.begin() + static_cast<std::ptrdiff_t>(at));
            shorter.insert(shorter.end(), acts.begin() + static_cast<std::ptrdiff_t>(at + part), acts.end());
            if (Play(shorter).isEmpty()) {
                at += part;
            } else {
                acts = std::move(shorter);
            }
        }
    }
    return acts;
}

}  // namespace

/// ZEPHRIN_SEEDS in the environment plays that many sequences instead.
TEST(RandomActs, EveryClauseEqualsARebuildAfterEveryAct) {
    const int seeds =
        qEnvironmentVariableIsSet("ZEPHRIN_SEEDS") ? qEnvironmentVariableIntValue("ZEPHRIN_SEEDS") : 12;
    for (int seed = 1; seed <= seeds; ++seed) {
        const Acts acts = test::RandomActs(static_cast<unsigned>(seed), 120, seed % 2 == 0);
        if (Play(acts).isEmpty()) continue;
        ADD_FAILURE() << "seed " << seed << ":\n  " << qPrintable(Play(Shrunk(acts)));
        return;
    }
}

}  // namespace zephrin
