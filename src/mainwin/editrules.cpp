// SPDX-License-Identifier: GPL-3.0-or-later
#include "editrules.h"

#include "core/freq.h"

namespace kestrel {

QStringList ChannelHeaders() {
    return {QString(),
            QStringLiteral("Frequency"),
            QStringLiteral("Description"),
            QStringLiteral("Delay"),
            QStringLiteral("Priority"),
            QStringLiteral("L/Out")};
}

QStringList SearchHeaders() {
    return {QString(), QStringLiteral("Lower Frequency"), QStringLiteral("Upper Frequency"),
            QStringLiteral("Description")};
}

QString CellStepName(bool searchList, int column, int number) {
    const QString header = (searchList ? SearchHeaders() : ChannelHeaders()).value(column);
    return QStringLiteral("Edit ") + header +
           (searchList ? QStringLiteral(" of Search ") : QStringLiteral(" of Channel ")) +
           QString::number(number);
}

QStringList ChannelRowTexts(int channelNumber, const ChannelRec& rec) {
    return {Num3(channelNumber),     FreqToString(rec.Freq),     rec.Desc,
            BoolToString(rec.Delay), BoolToString(rec.Priority), BoolToString(rec.Lockout)};
}

QStringList SearchRowTexts(int index, const SearchRec& rec) {
    return {Num2(index), FreqToString(rec.Lower), FreqToString(rec.Upper), rec.Desc};
}

QString CommitChannelFreq(ChannelRec& rec, const QString& typed) {
    const double f = FreqToDouble(typed);
    rec.Freq = f;
    if (f > 0 && rec.Lockout) {
        rec.Lockout = false;
        rec.Delay = true;
    } else if (f <= 0) {
        rec.Lockout = true;
        rec.Delay = false;
    }
    return FreqToString(f);
}

QString CommitSearchFreq(SearchRec& rec, int column, const QString& typed) {
    const double f = FreqToDouble(typed);
    if (column == ColLower)
        rec.Lower = f;
    else if (column == ColUpper)
        rec.Upper = f;
    return FreqToString(f);
}

bool ToggleChannelFlag(ChannelRec& rec, int column) {
    switch (column) {
    case ColDelay:
        rec.Delay = !rec.Delay;
        return true;
    case ColPriority:
        rec.Priority = !rec.Priority;
        return true;
    case ColLockout:
        rec.Lockout = !rec.Lockout;
        // A channel with a frequency that is scanned again should pause on it, and one that is
        // locked out has no use for a pause; an empty channel keeps what it had.
        if (rec.Freq > 0)
            rec.Delay = !rec.Lockout;
        return true;
    default:
        return false;
    }
}

QString StoredCellText(const ChannelRec& rec, int column) {
    return column == ColFreq ? FreqToString(rec.Freq) : rec.Desc;
}

QString StoredSearchCellText(const SearchRec& rec, int column) {
    switch (column) {
    case ColLower:
        return FreqToString(rec.Lower);
    case ColUpper:
        return FreqToString(rec.Upper);
    default:
        return rec.Desc;
    }
}

bool IsTextColumn(bool searchList, int column) {
    if (searchList)
        return column == ColLower || column == ColUpper || column == ColSrchDesc;
    return column == ColFreq || column == ColDesc;
}

bool IsFrequencyColumn(bool searchList, int column) {
    return searchList ? (column == ColLower || column == ColUpper) : column == ColFreq;
}

bool IsUsableBaseName(const QString& name) {
    if (name.trimmed().isEmpty())
        return false;
    for (const QChar c : name) {
        if (QStringView(u"./\\:,*?|<>\"").contains(c))
            return false;
    }
    return true;
}

} // namespace kestrel
