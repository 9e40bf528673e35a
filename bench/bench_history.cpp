// SPDX-License-Identifier: GPL-3.0-or-later
// Undo: 10,000 steps of one channel each on the context's undo stack, either all in one bank
// (argument 0) or each in another profile and bank than the one before (argument 1). Measured:
// the heap the stack holds, and the time of one undo, on its own and with the main window shown
// offscreen (which switches to the step's profile and bank and repaints).
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "history/history.h"
#include "mainwin/mainform.h"

#include "benchapp.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <memory>

namespace {

constexpr int kSteps = 10000;

size_t heapInUse() {
    return mallinfo2().uordblks;
}

// A loaded memory image and kSteps one-channel steps on its stack; heldBytes is what the steps
// took from the heap.
struct SteppedContext {
    QTemporaryDir dir;
    kestrel::AppContext ctx{dir.path()};
    size_t heldBytes = 0;

    explicit SteppedContext(bool spread) {
        kestrel::MakeBanksDir(ctx);
        kestrel::Load_Profiles(ctx);
        kestrel::History& history = kestrel::HistoryOf(ctx);
        const size_t before = heapInUse();
        for (int i = 0; i < kSteps; ++i) {
            const qint16 p = qint16(spread ? i % kestrel::ProfileCount : 0);
            const int b = spread ? 1 + (i / kestrel::ProfileCount) % kestrel::BankCount : 1;
            const int slot = 1 + (i / 100) % kestrel::ChansPerBank;
            kestrel::ChangeStep step(ctx, QStringLiteral("Edit Description"), p, quint8(b));
            ctx.Profiles[p].Banks[b].Chans[slot].Desc = QStringLiteral("Step %1").arg(i);
            ctx.Profiles[p].Banks[b].Changed = ctx.Profiles[p].Changed = true;
        }
        heldBytes = heapInUse() - before;
        if (history.stack().count() != kSteps)
            qFatal("the steps were not recorded");
    }
};

// Undoes one step per iteration; the stack is redone whole (not timed) when it runs out.
void undoLoop(benchmark::State& state, SteppedContext& s) {
    QUndoStack& stack = kestrel::HistoryOf(s.ctx).stack();
    for (auto _ : state) {
        if (stack.index() == 0) {
            state.PauseTiming();
            stack.setIndex(stack.count());
            state.ResumeTiming();
        }
        stack.undo();
    }
    state.counters["StackMB"] = double(s.heldBytes) / (1024.0 * 1024.0);
    state.counters["BytesPerStep"] = double(s.heldBytes) / kSteps;
}

void UndoOneStep(benchmark::State& state) {
    SteppedContext s(state.range(0) != 0);
    undoLoop(state, s);
}
BENCHMARK(UndoOneStep)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void UndoOneStepShown(benchmark::State& state) {
    kestrel::bench::GuiApp();
    SteppedContext s(state.range(0) != 0);
    kestrel::MainForm form(s.ctx);
    form.show();
    QApplication::processEvents();
    undoLoop(state, s);
}
BENCHMARK(UndoOneStepShown)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

} // namespace
