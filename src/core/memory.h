// SPDX-License-Identifier: GPL-3.0-or-later
// Setting channels and search ranges of the shown profile from their text forms, and the Edit
// fills built on them.
#pragma once

#include "appcontext.h"

namespace kestrel {

// Both act on Profiles[profile]; a malformed line takes the slot's factory line.
void Set_Channel(AppContext& ctx, qint16 profile, qint16 bank, quint8 slot, const QString& line);
void Set_Search(AppContext& ctx, qint16 profile, qint16 index, const QString& line);

// The Edit fills of one profile (memory only; no Changed flag is set here).
void ClearBank(AppContext& ctx, qint16 profile, int bank);   // every slot from DefChans(0)
void FactoryBank(AppContext& ctx, qint16 profile, int bank); // every slot from its factory line
void ClearAllBanks(AppContext& ctx, qint16 profile);
void FactoryAllBanks(AppContext& ctx, qint16 profile);
void ClearSearchLimits(AppContext& ctx, qint16 profile);   // every range from DefSearch(0)
void DefaultSearchLimits(AppContext& ctx, qint16 profile); // every range from DefSearch(i)

} // namespace kestrel
