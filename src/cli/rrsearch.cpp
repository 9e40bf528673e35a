// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrsearch.h"

#include <limits>

namespace kestrel::cli {

namespace {

// The one area option given among `names`, as (position, id).
QPair<int, qint32> oneOf(const Args& args, const QStringList& names) {
    int found = -1;
    for (int i = 0; i < names.size(); ++i)
        if (args.has(names[i])) {
            if (found >= 0)
                found = -2;
            else if (found == -1)
                found = i;
        }
    if (found < 0) {
        QStringList spelt;
        for (const QString& n : names)
            spelt << optionSpelling(n) + QStringLiteral(" ID");
        throw UsageError(
            qPrintable(QStringLiteral("give one of ") + spelt.join(QStringLiteral(", "))));
    }
    return {found, qint32(args.intValue(names[found], 1, std::numeric_limits<qint32>::max()))};
}

} // namespace

FreqSearch readFreqSearch(const Args& args, const QString& freqText) {
    FreqSearch s;
    bool ok = false;
    s.freq = freqText.toDouble(&ok);
    if (!ok || s.freq < 0)
        throw UsageError(qPrintable(QStringLiteral("the frequency must be megahertz, not '") +
                                    freqText + u'\''));
    const auto [scope, id] =
        oneOf(args, {QStringLiteral("state"), QStringLiteral("county"), QStringLiteral("metro")});
    s.scope = scope;
    s.id = id;
    s.tone = args.value(QStringLiteral("tone"));
    return s;
}

TagSearch readTagSearch(const Args& args, const QString& tagText) {
    TagSearch s;
    bool ok = false;
    s.tagId = tagText.toInt(&ok);
    if (!ok || s.tagId < 1)
        throw UsageError(qPrintable(
            QStringLiteral("the tag must be a whole number above 0, not '") + tagText + u'\''));
    const auto [by, id] = oneOf(args, {QStringLiteral("county"), QStringLiteral("agency")});
    s.byCounty = by == 0;
    s.id = id;
    return s;
}

QList<TypSearchFreq> runFreqSearch(RRClient& client, const FreqSearch& s) {
    switch (s.scope) {
    case 0:
        return client.searchStateFreq(s.id, s.freq, s.tone) ? client.StateFreqSearch
                                                            : QList<TypSearchFreq>{};
    case 1:
        return client.searchCountyFreq(s.id, s.freq, s.tone) ? client.CountyFreqSearch
                                                             : QList<TypSearchFreq>{};
    default:
        return client.searchMetroFreq(s.id, s.freq, s.tone) ? client.MetroFreqSearch
                                                            : QList<TypSearchFreq>{};
    }
}

QList<TypFreq> runTagSearch(RRClient& client, const TagSearch& s) {
    if (s.byCounty)
        return client.getCountyFreqsByTag(s.id, s.tagId) ? client.CountyFreqsByTag
                                                         : QList<TypFreq>{};
    return client.getAgencyFreqsByTag(s.id, s.tagId) ? client.AgencyFreqsByTag : QList<TypFreq>{};
}

} // namespace kestrel::cli
