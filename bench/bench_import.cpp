// SPDX-License-Identifier: GPL-3.0-or-later
// Web import window: from choosing a county to its conventional tree shown, for a county of 20
// subcategories and 500 frequencies, against the local service on a loopback port (21 queries:
// the county, then each subcategory's frequencies), the tree built and painted.
#include "import/frmimportrr.h"
#include "webservice/rrclient.h"
#include "webservice/server/rrlocalserver.h"

#include "benchapp.h"

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

// The demo data with one more county of North Province: 20 subcategories of 25 frequencies.
kestrel::RRDataSet largeCounty() {
    kestrel::RRDataSet d = kestrel::RRDataSet::demo();
    kestrel::TypCountyInfo c;
    c.ctid = 1900;
    c.stid = 101;
    c.countyName = QStringLiteral("Benchmark");
    c.fips = QStringLiteral("99900");
    kestrel::TypCat cat;
    cat.cid = 2900;
    cat.cName = QStringLiteral("Benchmark Services");
    for (int s = 0; s < 20; ++s) {
        cat.subcats.append({3900 + s, QStringLiteral("Subcategory %1").arg(s + 1), 0, 0, 0});
        for (int f = 0; f < 25; ++f) {
            kestrel::TypFreq fr;
            fr.fid = 90000 + s * 25 + f;
            fr.out = 150.0 + s * 0.5 + f * 0.0125;
            fr.descr = QStringLiteral("Channel %1-%2").arg(s + 1).arg(f + 1);
            fr.alpha = QStringLiteral("CH%1").arg(f + 1);
            fr.tone = f % 3 ? QStringLiteral("CSQ") : QStringLiteral("156.7 PL");
            fr.mode = QString::number(1 + f % 3);
            fr.class_ = QStringLiteral("BM");
            fr.callsign = f % 5 ? QString() : QStringLiteral("KDL%1").arg(500 + f);
            d.freqs.append({fr, 3900 + s});
        }
    }
    c.cats.append(cat);
    d.counties.append(c);
    return d;
}

void ImportCountyTree(benchmark::State& state) {
    kestrel::bench::GuiApp();
    qputenv("KESTREL_SECRET_STORE", "none");
    QTemporaryDir dir;
    kestrel::ScriptedPrompts prompts;
    kestrel::AppContext ctx(dir.path(), &prompts);
    kestrel::RRLocalServer server(largeCounty());
    if (server.listen() == 0) {
        state.SkipWithError("cannot listen on loopback");
        return;
    }
    ctx.registry = {QStringLiteral("demo"), QStringLiteral("demo"), QString()};
    ctx.component<kestrel::RRClient>().setBaseUrlOverride(server.baseUrl());
    kestrel::FrmImportRR window(ctx);
    window.show();
    window.LogInBtn_Click();
    window.setListText(window.CboCountry(), QStringLiteral("Demoland"));
    window.setListText(window.CboState(), QStringLiteral("North Province"));
    QApplication::processEvents();
    for (auto _ : state) {
        window.setListText(window.CboCounty(), QStringLiteral("Benchmark"));
        window.TV1()->repaint();
        QApplication::processEvents();
    }
    const QTreeWidgetItem* sub = window.node(QStringLiteral("c1s20"));
    if (!sub || sub->childCount() != 25 || ctx.errors.reportCount() != 0)
        state.SkipWithError("the tree was not built in full");
}
BENCHMARK(ImportCountyTree)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
