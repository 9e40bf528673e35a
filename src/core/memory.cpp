// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory.h"

namespace kestrel {

void Set_Channel(AppContext& ctx, qint16 profile, qint16 bank, quint8 slot, const QString& line) {
    Trap(ctx.errors, "ModKestrel -> Set_Channel", [&] {
        if (profile < 0 || profile >= ProfileCount || bank < 1 || bank > BankCount || slot < 1 ||
            slot > ChansPerBank)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        ParseChannelLine(ctx.Profiles[profile].Banks[bank].Chans[slot], line,
                         ctx.DefChans[ChannelNumber(bank, slot)]);
    });
}

void Set_Search(AppContext& ctx, qint16 profile, qint16 index, const QString& line) {
    Trap(ctx.errors, "ModKestrel -> Set_Search", [&] {
        if (profile < 0 || profile >= ProfileCount || index < 1 || index > SearchCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        ParseSearchLine(ctx.Profiles[profile].Searches[index], line, ctx.DefSearch[index]);
    });
}

void ClearBank(AppContext& ctx, qint16 profile, int bank) {
    for (int c = 1; c <= ChansPerBank; ++c)
        Set_Channel(ctx, profile, qint16(bank), quint8(c), ctx.DefChans[0]);
}

void FactoryBank(AppContext& ctx, qint16 profile, int bank) {
    for (int c = 1; c <= ChansPerBank; ++c)
        Set_Channel(ctx, profile, qint16(bank), quint8(c), ctx.DefChans[ChannelNumber(bank, c)]);
}

void ClearAllBanks(AppContext& ctx, qint16 profile) {
    for (int b = 1; b <= BankCount; ++b)
        ClearBank(ctx, profile, b);
}

void FactoryAllBanks(AppContext& ctx, qint16 profile) {
    for (int b = 1; b <= BankCount; ++b)
        FactoryBank(ctx, profile, b);
}

void ClearSearchLimits(AppContext& ctx, qint16 profile) {
    for (int i = 1; i <= SearchCount; ++i)
        Set_Search(ctx, profile, qint16(i), ctx.DefSearch[0]);
}

void DefaultSearchLimits(AppContext& ctx, qint16 profile) {
    for (int i = 1; i <= SearchCount; ++i)
        Set_Search(ctx, profile, qint16(i), ctx.DefSearch[i]);
}

} // namespace kestrel
