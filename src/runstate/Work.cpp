#include "runstate/Work.h"

#include "runstate/ZPGGlobalDeclarations.h"

#include <QLocale>

#include <utility>

namespace zephrin {

namespace {

bool Breathe(ZPGGlobalDeclarations& state) {
    WorkInHand& work = state.WorkNow;
    if (work.Depth == 0) return true;
    const qint64 now = work.Since.elapsed();
    if (now - work.LastBreath < ado::Watch::Interval) return !work.StopWanted;
    work.Progress.Seconds = static_cast<int>(now / 1000);
    if (const std::shared_ptr<WorkSurroundings> around = state.Surroundings) {
        work.Felt = now >= Work::FeltAfter;
        if (!around->Breathe(state)) work.StopWanted = true;
    }
    work.LastBreath = work.Since.elapsed();
    return !work.StopWanted;
}

}  // namespace

QString ProgressText(const WorkProgress& progress) {
    const QString time = QStringLiteral("%1 %2 s").arg(progress.What, QLocale().toString(progress.Seconds));
    return progress.Rows > 0 ? QStringLiteral("%1, %2 records").arg(time, QLocale().toString(progress.Rows))
                             : time;
}

Work::Work(ZPGGlobalDeclarations& run, const QString& what) : state(run), outer(run.WorkNow.Progress) {
    WorkInHand& work = state.WorkNow;
    if (work.Depth++ == 0) {
        work.Felt = work.StopWanted = false;
        work.LastBreath = 0;
        work.Since.start();
    }
    work.Progress = {what};
}

Work::~Work() {
    WorkInHand& work = state.WorkNow;
    // Busy still: who hears of the end must not begin the next in the middle of what this one was a part of.
    if (work.Depth == 1) {
        work.Felt = false;
        if (const std::shared_ptr<WorkSurroundings> around = state.Surroundings) around->Ended(state);
    }
    work.Progress = outer;
    --work.Depth;
}

void Work::Tell(const QString& what) {
    state.WorkNow.Progress.What = what;
}

void Work::Expect(qint64 all) {
    state.WorkNow.Progress.All = all;
}

bool Work::GoOn(qint64 rows) {
    state.WorkNow.Progress.Rows = rows;
    return Step(rows);
}

bool Work::Step(qint64 done) {
    state.WorkNow.Progress.Done = done;
    return Breathe(state);
}

bool IsBusy(const ZPGGlobalDeclarations& state) {
    return state.WorkNow.Depth > 0;
}

ado::Error BusyError(const ZPGGlobalDeclarations& state) {
    return ado::Error(ado::ErrorNumber::StillExecuting,
                      QStringLiteral("Operation cannot be performed while another one is still executing: %1")
                          .arg(state.WorkNow.Progress.What));
}

void StopWork(ZPGGlobalDeclarations& state) {
    if (IsBusy(state)) state.WorkNow.StopWanted = true;
}

ado::Watcher WatcherOf(ZPGGlobalDeclarations& state) {
    return [&state](const ado::Progress& progress) {
        state.WorkNow.Progress.Rows = progress.Rows;
        return Breathe(state);
    };
}

}  // namespace zephrin
