// SPDX-License-Identifier: GPL-3.0-or-later
#include "columns.h"

#include "freq.h"

namespace kestrel {

namespace {

QStringList captions(const QList<ListColumn>& table) {
    QStringList out;
    for (const ListColumn& c : table)
        out.append(QString::fromLatin1(c.caption));
    return out;
}

} // namespace

const QList<ListColumn>& ChannelColumnTable() {
    static const QList<ListColumn> table = {
        {"", "000", 40},        {"Frequency", "000.000000", 90}, {"Description", nullptr, 220},
        {"Delay", "False", 50}, {"Priority", "False", 55},       {"L/Out", "False", 50},
    };
    return table;
}

const QList<ListColumn>& SearchColumnTable() {
    static const QList<ListColumn> table = {
        {"", "00", 30},
        {"Lower Frequency", "000.000000", 110},
        {"Upper Frequency", "000.000000", 110},
        {"Description", nullptr, 220},
    };
    return table;
}

QStringList ChannelHeaders() {
    return captions(ChannelColumnTable());
}

QStringList SearchHeaders() {
    return captions(SearchColumnTable());
}

QStringList ChannelRowTexts(int channelNumber, const ChannelRec& rec) {
    return {Num3(channelNumber),     FreqToString(rec.Freq),     rec.Desc,
            BoolToString(rec.Delay), BoolToString(rec.Priority), BoolToString(rec.Lockout)};
}

QStringList SearchRowTexts(int index, const SearchRec& rec) {
    return {Num2(index), FreqToString(rec.Lower), FreqToString(rec.Upper), rec.Desc};
}

} // namespace kestrel
