// SPDX-License-Identifier: GPL-3.0-or-later
// Main window: switching the shown profile (refills all lists) and the shown bank, on a shown
// window drawn offscreen, each switch followed by the repaint it causes.
#include "core/files.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"

#include "benchapp.h"

#include <QApplication>
#include <QTabBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

// A shown main window over a throw-away data folder whose profiles 0 and 1 differ in every
// channel, so that each switch repaints every row.
struct ShownWindow {
    QTemporaryDir dir;
    kestrel::ScriptedPrompts prompts;
    std::unique_ptr<kestrel::AppContext> ctx;
    std::unique_ptr<kestrel::MainForm> form;

    ShownWindow() {
        kestrel::bench::GuiApp();
        ctx = std::make_unique<kestrel::AppContext>(dir.path(), &prompts);
        kestrel::MakeBanksDir(*ctx);
        kestrel::Load_Profiles(*ctx);
        ctx->CurProfile = 1;
        kestrel::ClearAllBanks(*ctx, 1);
        kestrel::ClearSearchLimits(*ctx, 1);
        ctx->CurProfile = 0;
        form = std::make_unique<kestrel::MainForm>(*ctx);
        form->show();
        QApplication::processEvents();
    }
};

void SwitchProfile(benchmark::State& state) {
    ShownWindow w;
    int next = 1;
    for (auto _ : state) {
        w.form->ProfileTab()->setCurrentIndex(next);
        QApplication::processEvents();
        next = 1 - next;
    }
}
BENCHMARK(SwitchProfile)->Unit(benchmark::kMillisecond);

void SwitchBank(benchmark::State& state) {
    ShownWindow w;
    int next = 1;
    for (auto _ : state) {
        w.form->BankTab()->setCurrentIndex(next);
        QApplication::processEvents();
        next = (next + 1) % kestrel::BankCount;
    }
}
BENCHMARK(SwitchBank)->Unit(benchmark::kMillisecond);

} // namespace
