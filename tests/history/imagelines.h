// SPDX-License-Identifier: GPL-3.0-or-later
// The memory image as one line per record (names and Changed flags included), for comparing
// whole images in the undo tests.
#pragma once

#include "core/records.h"

#include <QStringList>
#include <array>

inline QStringList imageLines(const std::array<kestrel::ProfileRec, 11>& image) {
    using namespace kestrel;
    QStringList lines;
    for (int p = 0; p < ProfileCount; ++p) {
        const ProfileRec& r = image[p];
        lines << QStringLiteral("%1 %2 %3 %4").arg(p).arg(r.Name, r.SrchName).arg(r.Changed);
        for (int s = 1; s <= SearchCount; ++s)
            lines << SearchLine(r.Searches[s]) + QString::number(r.Searches[s].Mark);
        for (const BankRec& k : r.Banks) {
            lines << QStringList{k.FileName, k.ImportName}.join(u' ') + QStringLiteral(" %1 %2 %3")
                                                                            .arg(k.ImportCount)
                                                                            .arg(k.Revision)
                                                                            .arg(k.Changed);
            for (const ChannelRec& c : k.Chans)
                lines << ChannelLine(c) + QStringLiteral(" %1 %2 %3 %4")
                                              .arg(c.Mark)
                                              .arg(c.Imported)
                                              .arg(c.Mode)
                                              .arg(c.ModeAux);
        }
    }
    return lines;
}
