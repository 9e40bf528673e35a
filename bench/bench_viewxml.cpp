// SPDX-License-Identifier: GPL-3.0-or-later
// XML tree viewer on a 50 MB reply: indexing the text alone, opening it in a new window (time to
// the first level and peak memory), filling a kept window, and opening the level of every record.
#include "core/appcontext.h"
#include "webservice/ui/frmviewxml.h"
#include "webservice/xmlindex.h"

#include "benchapp.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <benchmark/benchmark.h>

namespace {

// A search reply of about 50 MB: an envelope, a body, a list of records of some 200 bytes each.
const QString& bigReply() {
    static const QString text = [] {
        QString records;
        records.reserve(52 * 1024 * 1024);
        for (int i = 0; records.size() < 50 * 1024 * 1024; ++i)
            records +=
                QStringLiteral("<item xsi:type=\"tns:Freq\"><fid>%1</fid><out>154.%2</out>"
                               "<descr>Fire Dispatch %1</descr><alpha>FD %1</alpha><mode>5</mode>"
                               "<tone>CSQ</tone></item>")
                    .arg(i)
                    .arg(i % 1000, 4, 10, QLatin1Char('0'));
        return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><SOAP-ENV:Envelope>"
                              "<SOAP-ENV:Body><searchResponse><return>%1</return>"
                              "</searchResponse></SOAP-ENV:Body></SOAP-ENV:Envelope>")
            .arg(records);
    }();
    return text;
}

void ViewXmlIndexOnly(benchmark::State& state) {
    const QString& text = bigReply();
    for (auto _ : state) {
        kestrel::XmlIndex index;
        benchmark::DoNotOptimize(index.read(text));
    }
}
BENCHMARK(ViewXmlIndexOnly)->Unit(benchmark::kMillisecond)->Iterations(3);

// The peak resident memory of the process from the last reset on, in bytes.
void resetPeakMemory() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}
double peakMemory() {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() * 1024;
    return 0;
}

// A fresh window given the reply until its first level is shown; peak_over_text is the peak
// memory above the text's own (already held) memory, against the text's size.
void ViewXmlOpen50MB(benchmark::State& state) {
    kestrel::bench::GuiApp();
    QTemporaryDir dir;
    kestrel::AppContext ctx(dir.path());
    const QString& text = bigReply();
    double before = 0;
    double peak = 0;
    for (auto _ : state) {
        state.PauseTiming();
        resetPeakMemory();
        before = peakMemory();
        state.ResumeTiming();
        {
            kestrel::FrmViewXml w(ctx);
            w.show();
            benchmark::DoNotOptimize(w.FillXML(text));
            QApplication::processEvents();
            state.PauseTiming();
            peak = std::max(peak, peakMemory() - before);
        }
        QApplication::processEvents();
        state.ResumeTiming();
    }
    const double bytes = double(text.toUtf8().size());
    state.counters["peak_MB"] = peak / 1e6;
    state.counters["peak_over_text"] = peak / bytes;
}
BENCHMARK(ViewXmlOpen50MB)->Unit(benchmark::kMillisecond)->Iterations(3);

void ViewXmlFill(benchmark::State& state) {
    kestrel::bench::GuiApp();
    QTemporaryDir dir;
    kestrel::AppContext ctx(dir.path());
    kestrel::FrmViewXml w(ctx);
    w.show();
    const QString& text = bigReply();
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.FillXML(text));
        QApplication::processEvents();
    }
    state.counters["items"] = double(w.TV1()->topLevelItemCount());
}
BENCHMARK(ViewXmlFill)->Unit(benchmark::kMillisecond)->Iterations(3);

// Opening "searchResponse" turns every record under "return" into a tree item.
void ViewXmlOpenRecords(benchmark::State& state) {
    kestrel::bench::GuiApp();
    QTemporaryDir dir;
    kestrel::AppContext ctx(dir.path());
    kestrel::FrmViewXml w(ctx);
    w.show();
    int records = 0;
    for (auto _ : state) {
        state.PauseTiming();
        w.FillXML(bigReply());
        QTreeWidget* tree = w.TV1();
        QTreeWidgetItem* envelope = tree->topLevelItem(1);
        tree->expandItem(envelope);
        QTreeWidgetItem* body = envelope->child(0);
        tree->expandItem(body);
        QApplication::processEvents();
        state.ResumeTiming();
        tree->expandItem(body->child(0));
        QApplication::processEvents();
        records = body->child(0)->child(0)->childCount();
    }
    state.counters["records"] = records;
}
BENCHMARK(ViewXmlOpenRecords)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
