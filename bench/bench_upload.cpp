// SPDX-License-Identifier: GPL-3.0-or-later
// A full upload of all banks over a three-wire cable to the simulated scanner on a
// pseudo-terminal, at real pace and real line speed. Reports the wall time against the floor
// (every prescribed pause plus the 9600 baud line time of every frame and answer) and the CPU
// time the upload itself used.
#include "benchapp.h"
#include "link/frames.h"
#include "link/kestrelcomm.h"
#include "link/scannersim.h"

#include "core/appcontext.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>
#include <ctime>

using namespace kestrel;

namespace {

double threadCpuSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

double processCpuSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

void BM_UploadAllBanksThreeWire(benchmark::State& state) {
    kestrel::bench::GuiApp();
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Ok};
    AppContext ctx(dir.path(), &prompts);
    for (int b = 1; b <= BankCount; ++b)
        for (int c = 1; c <= ChansPerBank; ++c)
            ctx.cur().Banks[b].Chans[c].Freq = 150'000'000.0 + ChannelNumber(b, c) * 12'500.0;

    // The scanner runs on a thread of its own, as a real one runs on its own clock.
    QThread simThread;
    ScannerSimulator::Options opt;
    opt.cable = 3;
    auto* sim = new ScannerSimulator(opt);
    sim->moveToThread(&simThread);
    QObject::connect(&simThread, &QThread::finished, sim, &QObject::deleteLater);
    simThread.start();
    bool started = false;
    QMetaObject::invokeMethod(
        sim, [&] { started = sim->start(); }, Qt::BlockingQueuedConnection);
    if (!started) {
        state.SkipWithError("no pseudo-terminal");
        simThread.quit();
        simThread.wait();
        return;
    }

    KestrelComm link(ctx);
    link.setDevice(sim->devicePath());
    link.setCableType(3);
    int timeouts = 0;
    QObject::connect(&link, &KestrelComm::RxTimeOut, [&] { ++timeouts; });

    const QList<QByteArray> frames = UploadFrames(ctx.cur(), ProfilePart::AllBanks);
    qsizetype bytes = 0;
    for (const QByteArray& f : frames)
        bytes += 2 * f.size(); // the frame out and its answer back
    const double floorSeconds =
        0.25 * double(frames.size()) + double(bytes) * ScannerSimulator::kByteSeconds;

    double wall = 0, cpu = 0, processCpu = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        const double cpu0 = threadCpuSeconds();
        const double proc0 = processCpuSeconds();
        clock.start();
        link.SendAllChannels();
        wall = clock.nsecsElapsed() / 1e9;
        cpu = threadCpuSeconds() - cpu0;
        processCpu = processCpuSeconds() - proc0;
        state.SetIterationTime(wall);
    }
    if (timeouts)
        state.SkipWithError("the simulated scanner did not answer");
    state.counters["wall_s"] = wall;
    state.counters["floor_s"] = floorSeconds;
    state.counters["over_floor_pct"] = 100.0 * (wall - floorSeconds) / floorSeconds;
    state.counters["upload_cpu_s"] = cpu;
    state.counters["cpu_pct_of_wall"] = 100.0 * cpu / wall;
    state.counters["process_cpu_s"] = processCpu;

    simThread.quit();
    simThread.wait();
}

} // namespace

BENCHMARK(BM_UploadAllBanksThreeWire)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
