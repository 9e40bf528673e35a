// SPDX-License-Identifier: GPL-3.0-or-later
#include "verifyrules.h"

#include <QtGlobal>

namespace kestrel {

bool DescKeyAllowed(QChar c) {
    const char16_t code = c.unicode();
    return code == 8 || code == 32 || code == 33 || (code >= 35 && code <= 43) ||
           (code >= 45 && code <= 126);
}

int ImportedSlots(const BankRec& bank) {
    return qBound(0, int(bank.ImportCount), ChansPerBank);
}

int FirstLongDesc(const BankRec& bank) {
    const int count = ImportedSlots(bank);
    for (int i = 1; i <= count; ++i)
        if (bank.Chans[size_t(i)].Desc.size() > MaxDescLen)
            return i;
    return 0;
}

QString ImportedModeText(const ChannelRec& ch) {
    // ModeAux is set with the mode by the import of a frequency record, never for a site.
    if (ch.ModeAux == 0)
        return {};
    switch (ch.Mode) {
    case 0:
        return QStringLiteral("P25");
    case 2:
        return QStringLiteral("AM");
    case 5:
        return QStringLiteral("FM");
    default:
        return QString::number(ch.Mode);
    }
}

} // namespace kestrel
