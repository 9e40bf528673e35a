// SPDX-License-Identifier: GPL-3.0-or-later
// A data folder whose ten banks, named "A".."J" and saved to their files, hold channels named
// after bank and slot ("B3"), so that any rearrangement can be read off the names.
#pragma once

#include "core/files.h"
#include "core/profiles.h"

#include <QTemporaryDir>

namespace kestrel::test {

inline ChannelRec chan(double hz, const QString& desc) {
    ChannelRec c;
    c.Freq = hz;
    c.Desc = desc;
    return c;
}

struct LetterBanks {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    LetterBanks() {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
        for (int b = 1; b <= BankCount; ++b) {
            BankRec& bank = ctx.cur().Banks[b];
            bank.FileName = QChar(u'A' + b - 1);
            for (int c = 1; c <= ChansPerBank; ++c)
                bank.Chans[c] =
                    chan((100 + b) * 1e6 + c * 12500, bank.FileName + QString::number(c));
            Save_BankInfo(ctx, ctx.CurProfile, b, ctx.bankPath(bank.FileName));
        }
        ctx.cur().Changed = false;
    }
};

// The names of a pattern such as "E1-4 B3-5 _": bank letter and slot or slot range, "_" for an
// empty channel; joined by blanks.
inline QString names(const QString& pattern) {
    QStringList out;
    for (const QString& t : pattern.split(u' ')) {
        const QStringList r = t.mid(1).split(u'-');
        for (int i = r[0].toInt(); t != u"_" && i <= r.last().toInt(); ++i)
            out.append(t.left(1) + QString::number(i));
        if (t == u"_")
            out.append(QString());
    }
    return out.join(u' ');
}

} // namespace kestrel::test
