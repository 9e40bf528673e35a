// SPDX-License-Identifier: GPL-3.0-or-later
// The web-service client's parsers against bare parses of the same bytes: the service
// description into its tables, and a 1,000-frequency reply into its store.
#include "webservice/rrdescription.h"
#include "webservice/rrrecords.h"
#include "webservice/soapenvelope.h"

#include <QDomDocument>
#include <QFile>
#include <QXmlStreamReader>
#include <benchmark/benchmark.h>

using namespace kestrel;

namespace {

QString description() {
    QFile f(QStringLiteral(KESTREL_SOURCE_DIR "/tests/data/webservice/rr_soap2.wsdl"));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return soap::DecodeXmlText(f.readAll());
}

// A reply as the live service sends it: frequencies as megahertz text, two tags each.
QByteArray freqReply() {
    QList<TypFreq> freqs(1000);
    for (int i = 0; i < freqs.size(); ++i) {
        TypFreq& f = freqs[i];
        f.fid = 100000 + i;
        f.out = 150.0 + i * 0.0125;
        f.callsign = QStringLiteral("KQB%1").arg(i);
        f.descr = QStringLiteral("Fire Dispatch %1").arg(i);
        f.alpha = QStringLiteral("FD %1").arg(i);
        f.tone = QStringLiteral("118.8 PL");
        f.mode = QStringLiteral("2");
        f.class_ = QStringLiteral("B");
        f.tags = {TypTag{3, {}}, TypTag{14, {}}};
        f.sort = i;
        f.lastUpdated = QStringLiteral("2026-01-02 10:00:00");
    }
    soap::SoapMessage m;
    m.method = QStringLiteral("getSubcatFreqsResponse");
    m.methodNS = QStringLiteral("http://api.radioreference.com/soap2");
    m.params = {WriteRecordList(freqs, QStringLiteral("return"))};
    return soap::WriteEnvelope(m);
}

void RRSoapParse55K(benchmark::State& state) {
    const QString text = description();
    for (auto _ : state) {
        SoapDescription d;
        QDomDocument doc;
        benchmark::DoNotOptimize(ParseDescription(text, d, doc));
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(RRSoapParse55K)->Unit(benchmark::kMillisecond);

void BareDomParse55K(benchmark::State& state) {
    const QString text = description();
    for (auto _ : state) {
        QDomDocument doc;
        benchmark::DoNotOptimize(doc.setContent(text, false));
    }
    state.SetBytesProcessed(state.iterations() * text.size());
}
BENCHMARK(BareDomParse55K)->Unit(benchmark::kMillisecond);

void ReadFreqReply1000(benchmark::State& state) {
    const QByteArray bytes = freqReply();
    for (auto _ : state) {
        soap::SoapMessage m;
        soap::ReadEnvelope(bytes, m);
        QList<TypFreq> store;
        ReadRecordList(m.params.at(0), store);
        benchmark::DoNotOptimize(store.size());
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(ReadFreqReply1000)->Unit(benchmark::kMillisecond);

void BareStreamParse1000(benchmark::State& state) {
    const QByteArray bytes = freqReply();
    for (auto _ : state) {
        QXmlStreamReader r(bytes);
        qsizetype chars = 0;
        while (!r.atEnd())
            if (r.readNext() == QXmlStreamReader::Characters)
                chars += r.text().size();
        benchmark::DoNotOptimize(chars);
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BareStreamParse1000)->Unit(benchmark::kMillisecond);

void BareDomParse1000(benchmark::State& state) {
    const QByteArray bytes = freqReply();
    for (auto _ : state) {
        QDomDocument doc;
        benchmark::DoNotOptimize(doc.setContent(bytes, false));
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}
BENCHMARK(BareDomParse1000)->Unit(benchmark::kMillisecond);

} // namespace
