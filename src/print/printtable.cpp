// SPDX-License-Identifier: GPL-3.0-or-later
#include "printtable.h"

#include "core/columns.h"

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

namespace {

QList<PrintColumn> printColumns(const QList<ListColumn>& table) {
    QList<PrintColumn> out;
    for (const ListColumn& c : table)
        out.append({QString::fromLatin1(c.caption), c.printWidth, Qt::AlignLeft});
    return out;
}

} // namespace

QList<PrintColumn> ChannelColumns() {
    return printColumns(ChannelColumnTable());
}

QList<PrintColumn> SearchColumns() {
    return printColumns(SearchColumnTable());
}

PrintTable BankTable(const ProfileRec& profile, int bank) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int slot = 1; slot <= ChansPerBank; ++slot)
        t.addRow(ChannelRowTexts(ChannelNumber(bank, slot), profile.Banks[bank].Chans[slot]));
    return t;
}

PrintTable SearchTable(const ProfileRec& profile) {
    PrintTable t;
    t.columns = SearchColumns();
    for (int i = 1; i <= SearchCount; ++i)
        t.addRow(SearchRowTexts(i, profile.Searches[i]));
    return t;
}

PrintTable AllChannelsTable(const ProfileRec& profile) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int n = 1; n <= ChannelCount; ++n)
        t.addRow(ChannelRowTexts(n, profile.Banks[BankOfChannel(n)].Chans[SlotOfChannel(n)]));
    return t;
}

} // namespace kestrel
