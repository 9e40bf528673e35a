// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory.h"

namespace kestrel {

void Set_Channel(AppContext& ctx, qint16 bank, quint8 slot, const QString& line) {
    Trap(ctx.errors, "ModKestrel -> Set_Channel", [&] {
        if (bank < 1 || bank > BankCount || slot < 1 || slot > ChansPerBank)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        ParseChannelLine(ctx.cur().Banks[bank].Chans[slot], line,
                         ctx.DefChans[ChannelNumber(bank, slot)]);
    });
}

void Set_Search(AppContext& ctx, qint16 index, const QString& line) {
    Trap(ctx.errors, "ModKestrel -> Set_Search", [&] {
        if (index < 1 || index > SearchCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        ParseSearchLine(ctx.cur().Searches[index], line, ctx.DefSearch[index]);
    });
}

void ClearBank(AppContext& ctx, int bank) {
    for (int c = 1; c <= ChansPerBank; ++c)
        Set_Channel(ctx, qint16(bank), quint8(c), ctx.DefChans[0]);
}

void FactoryBank(AppContext& ctx, int bank) {
    for (int c = 1; c <= ChansPerBank; ++c)
        Set_Channel(ctx, qint16(bank), quint8(c), ctx.DefChans[ChannelNumber(bank, c)]);
}

void ClearAllBanks(AppContext& ctx) {
    for (int b = 1; b <= BankCount; ++b)
        ClearBank(ctx, b);
}

void FactoryAllBanks(AppContext& ctx) {
    for (int b = 1; b <= BankCount; ++b)
        FactoryBank(ctx, b);
}

void ClearSearchLimits(AppContext& ctx) {
    for (int i = 1; i <= SearchCount; ++i)
        Set_Search(ctx, qint16(i), ctx.DefSearch[0]);
}

void DefaultSearchLimits(AppContext& ctx) {
    for (int i = 1; i <= SearchCount; ++i)
        Set_Search(ctx, qint16(i), ctx.DefSearch[i]);
}

} // namespace kestrel
