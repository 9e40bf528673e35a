// SPDX-License-Identifier: GPL-3.0-or-later
// The File and Edit commands of the main window as operations on the memory image: which dialog
// each asks with, and what a chosen file or a confirmed fill does to the records, the names and
// the Changed flags. The window asks the user and repaints; these do the rest.
#pragma once

#include "core/appcontext.h"

#include <QString>

namespace kestrel {

// The names the main window shows for the profile in front. They start as the profile's own
// but some File commands change only these ("Save Profile As", "Load Search Limits").
struct ShownNames {
    QString profName;
    QString profPath; // the profile's settings file
    QString srchName; // base name of the search-limits file

    static ShownNames of(const AppContext& ctx); // the names of Profiles[CurProfile]
};

enum class FileCommand {
    LoadProfile,
    SaveProfileAs,
    LoadBank,
    SaveBankAs,
    LoadSearch,
    SaveSearchAs
};

FileDialogOptions FileDialogFor(FileCommand command, const AppContext& ctx,
                                const ShownNames& shown);
bool IsOpenDialog(FileCommand command);

// Each takes the path the user chose. The loads change the memory of the given profile (and
// bank) as one undoable step.
void LoadProfileFrom(AppContext& ctx, qint16 profile, ShownNames& shown, const QString& path);
void SaveProfile(AppContext& ctx, const ShownNames& shown);
void SaveProfileAs(AppContext& ctx, ShownNames& shown, const QString& path);
void LoadBankFrom(AppContext& ctx, qint16 profile, int bank, const QString& path);
void SaveBank(AppContext& ctx);
void SaveBankAs(AppContext& ctx, const QString& path);
void LoadSearchFrom(AppContext& ctx, qint16 profile, ShownNames& shown, const QString& path);
void SaveSearch(AppContext& ctx, const ShownNames& shown);
void SaveSearchAs(AppContext& ctx, ShownNames& shown, const QString& path);

// The Edit menu's fills, each one undoable step named by its menu caption. They change the
// memory of the given profile (bank: the one the "current bank" fills act on) and mark the
// profile, not its banks.
enum class EditCommand {
    ClearAllBanks,
    ClearCurrentBank,
    ClearSearchLimits,
    SetFactoryDefaults,
    SetDefaultBank,
    SetDefaultLimits
};
void ApplyEditCommand(AppContext& ctx, qint16 profile, int bank, EditCommand command);
QString EditCommandCaption(EditCommand command);
bool EditCommandTouchesSearch(EditCommand command);

// The question every Edit fill asks first (Yes/No, exclamation icon).
QString EraseConfirmText();

// The "Clear Selected Entries" and "Set Selected Entries to Default" of the lists' pop-up menu:
// channel numbers 1..200 or range numbers 1..10 of the given profile, one undoable step. No
// Changed flag is set.
void ClearChannels(AppContext& ctx, qint16 profile, const QList<int>& channelNumbers,
                   bool toDefault);
void ClearSearches(AppContext& ctx, qint16 profile, const QList<int>& rangeNumbers, bool toDefault);

} // namespace kestrel
