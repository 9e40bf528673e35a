// SPDX-License-Identifier: GPL-3.0-or-later
// The profile list ("Profiles.ini") and the per-profile settings files: load and save sequences.
#pragma once

#include "appcontext.h"

namespace kestrel {

void Load_Profiles(AppContext& ctx);
void Save_Profiles(AppContext& ctx); // every profile whose Changed flag is set
void Load_Settings(AppContext& ctx, qint16 profile, const QString& path);
void Save_Settings(AppContext& ctx, qint16 profile, const QString& path);

// Default base names when the settings file names none.
QString DefaultSrchName(int profile);           // "SrchBank00"
QString DefaultBankName(int profile, int bank); // "Bank01" .. "Bank100"
QString DefaultProfileName(int profile);        // "Profile01"

// Resolves a profile given by index ("0".."9") or by name; -1 when unknown.
int FindProfile(const AppContext& ctx, const QString& indexOrName);

} // namespace kestrel
