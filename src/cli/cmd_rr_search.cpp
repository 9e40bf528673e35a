// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr search freq|tag|callsigns: the import window's advanced searches, one result a
// line. An empty result says so on standard error and is no failure.
#include "rrsearch.h"

#include "import/searchtree.h"

#include <limits>

namespace kestrel::cli {

namespace {

void noResults() {
    err(searchtree::kNoResults);
}

double coordArgument(const QString& text, const char* what, double limit) {
    if (text.isEmpty())
        return 0; // an empty coordinate searches around 0
    bool ok = false;
    const double v = text.toDouble(&ok);
    if (!ok || v < -limit || v > limit)
        throw UsageError(qPrintable(QString::fromLatin1(what) +
                                    QStringLiteral(" must be degrees, not '") + text + u'\''));
    return v;
}

int run(Env& env, const Args& args) {
    const QStringList pos = args.positional();
    const QString kind = pos.value(0);
    const auto need = [&](int count, const char* usage) {
        if (pos.size() != count)
            throw UsageError(usage);
    };
    RRSession rr(env, args);
    if (kind == u"freq") {
        need(2, "usage: rr search freq (--state STID | --county CTID | --metro MID) FREQ "
                "[--tone TONE]");
        const FreqSearch s = readFreqSearch(args, pos[1]);
        if (!rr.open())
            return rr.finish();
        const QList<TypSearchFreq> found = runFreqSearch(rr.client(), s);
        printRecords(found);
        if (found.isEmpty() && !rr.failed())
            noResults();
    } else if (kind == u"tag") {
        need(2, "usage: rr search tag (--county CTID | --agency AID) TAGID");
        const TagSearch s = readTagSearch(args, pos[1]);
        if (!rr.open())
            return rr.finish();
        const QList<TypFreq> found = runTagSearch(rr.client(), s);
        printRecords(found);
        if (found.isEmpty() && !rr.failed())
            noResults();
    } else if (kind == u"callsigns") {
        need(3, "usage: rr search callsigns [--range 1|2|3] [--unit m|n|k] LAT LON");
        const double lat = coordArgument(pos[1], "LAT", 90);
        const double lon = coordArgument(pos[2], "LON", 180);
        const int range =
            args.has(QStringLiteral("range")) ? args.intValue(QStringLiteral("range"), 1, 3) : 1;
        const QString unit = args.value(QStringLiteral("unit"), QStringLiteral("m"));
        if (unit != u"m" && unit != u"n" && unit != u"k")
            throw UsageError("--unit is m (statute miles), n (nautical miles) or k (kilometers)");
        if (!rr.open())
            return rr.finish();
        if (rr.client().fccGetProxCallsigns(lat, lon, range, unit))
            printRecords(rr.client().ProxCallsigns);
        else if (!rr.failed())
            noResults();
    } else {
        throw UsageError(
            qPrintable(QStringLiteral("search freq, tag or callsigns, not '") + kind + u'\''));
    }
    return rr.finish();
}

const CommandRegistration
    reg({"rr",
         "search",
         "Search the database: 'freq' for frequencies near FREQ (megahertz) in a state, county "
         "or metro area; 'tag' for a county's or an agency's frequencies of tag TAGID; "
         "'callsigns' for FCC call signs around LAT LON. One "
         "result a line",
         {{"state", "STID", "freq: search this state"},
          {"county", "CTID", "freq, tag: search this county"},
          {"metro", "MID", "freq: search this metro area"},
          {"agency", "AID", "tag: search this agency"},
          {"tone", "TONE", "freq: only this tone (empty: any)"},
          {"range", "N", "callsigns: the distance, 1, 2 or 3 (default 1)"},
          {"unit", "U", "callsigns: m statute miles (default), n nautical miles, k kilometers"}},
         {{"KIND", "freq, tag or callsigns"},
          {"[FREQ|TAGID|LAT]", "The frequency, the tag's id or the latitude"},
          {"[LON]", "callsigns: the longitude"}},
         run});

} // namespace
} // namespace kestrel::cli
