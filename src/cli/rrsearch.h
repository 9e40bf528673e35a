// SPDX-License-Identifier: GPL-3.0-or-later
// The frequency and tag searches as `rr search` and `rr import` read them from the command
// line and run them: which area or agency, the frequency and tone, the tag.
#pragma once

#include "rrsession.h"

namespace kestrel::cli {

struct FreqSearch {
    int scope = 0; // 0 state, 1 county, 2 metro
    qint32 id = 0;
    double freq = 0; // megahertz
    QString tone;
};
struct TagSearch {
    bool byCounty = true;
    qint32 id = 0; // ctid or aid
    qint32 tagId = 0;
};

// --state/--county/--metro ID (exactly one), --tone; `freqText` in megahertz.
FreqSearch readFreqSearch(const Args& args, const QString& freqText);
// --county/--agency ID (exactly one); `tagText` the tag's id.
TagSearch readTagSearch(const Args& args, const QString& tagText);

// Run the search; the results (empty when none or when the query failed).
QList<TypSearchFreq> runFreqSearch(RRClient& client, const FreqSearch& s);
QList<TypFreq> runTagSearch(RRClient& client, const TagSearch& s);

} // namespace kestrel::cli
