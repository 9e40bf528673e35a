// SPDX-License-Identifier: GPL-3.0-or-later
#include "printtable.h"

#include "core/freq.h"

namespace kestrel {

QFont PrintTable::DefaultListFont() {
    return QFont(QStringLiteral("MS Sans Serif"), 8);
}

void PrintTable::addRow(const QStringList& texts) {
    PrintRow row;
    row.reserve(texts.size());
    for (const QString& t : texts)
        row.append(PrintCell{t});
    rows.append(row);
}

QList<PrintColumn> ChannelColumns() {
    return {
        {QString(), 40, Qt::AlignLeft},
        {QStringLiteral("Frequency"), 90, Qt::AlignLeft},
        {QStringLiteral("Description"), 220, Qt::AlignLeft},
        {QStringLiteral("Delay"), 50, Qt::AlignLeft},
        {QStringLiteral("Priority"), 55, Qt::AlignLeft},
        {QStringLiteral("L/Out"), 50, Qt::AlignLeft},
    };
}

QList<PrintColumn> SearchColumns() {
    return {
        {QString(), 30, Qt::AlignLeft},
        {QStringLiteral("Lower Frequency"), 110, Qt::AlignLeft},
        {QStringLiteral("Upper Frequency"), 110, Qt::AlignLeft},
        {QStringLiteral("Description"), 220, Qt::AlignLeft},
    };
}

namespace {

QStringList channelRow(const ChannelRec& rec, int number) {
    return {Num3(number),
            FreqToString(rec.Freq),
            rec.Desc,
            BoolToString(rec.Delay),
            BoolToString(rec.Priority),
            BoolToString(rec.Lockout)};
}

QStringList searchRow(const SearchRec& rec, int number) {
    return {Num2(number), FreqToString(rec.Lower), FreqToString(rec.Upper), rec.Desc};
}

} // namespace

PrintTable BankTable(const ProfileRec& profile, int bank) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int slot = 1; slot <= ChansPerBank; ++slot)
        t.addRow(channelRow(profile.Banks[bank].Chans[slot], ChannelNumber(bank, slot)));
    return t;
}

PrintTable SearchTable(const ProfileRec& profile) {
    PrintTable t;
    t.columns = SearchColumns();
    for (int i = 1; i <= SearchCount; ++i)
        t.addRow(searchRow(profile.Searches[i], i));
    return t;
}

PrintTable AllChannelsTable(const ProfileRec& profile) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int n = 1; n <= ChannelCount; ++n)
        t.addRow(channelRow(profile.Banks[BankOfChannel(n)].Chans[SlotOfChannel(n)], n));
    return t;
}

} // namespace kestrel
