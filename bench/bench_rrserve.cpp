// SPDX-License-Identifier: GPL-3.0-or-later
// One getTag query of the web-service client against the local service, over loopback HTTP:
// envelope written, posted, answered, read into the store.
#include "webservice/rrclient.h"
#include "webservice/server/rrlocalserver.h"

#include "benchapp.h"

#include <QApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace kestrel;

namespace {

void GetTagRoundTrip(benchmark::State& state) {
    kestrel::bench::GuiApp();
    RRLocalServer server;
    QTemporaryDir dir;
    ScriptedPrompts prompts(Answer::Yes);
    AppContext ctx(dir.path(), &prompts);
    ctx.settings.DBaseIndex = 1;
    ctx.settings.DBaseVersion = 999;
    RRClient& client = ctx.component<RRClient>();
    if (server.listen() == 0) {
        state.SkipWithError("cannot listen on 127.0.0.1");
        return;
    }
    client.setBaseUrlOverride(server.baseUrl());
    client.setCredentials(QStringLiteral("demo"), QStringLiteral("demo"));
    if (!client.InitSoap() || !client.getTag(0)) {
        state.SkipWithError("the local service did not answer");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(client.getTag(0));
    state.counters["tags"] = double(client.Tags.size());
}
BENCHMARK(GetTagRoundTrip)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
