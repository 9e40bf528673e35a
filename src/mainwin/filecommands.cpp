// SPDX-License-Identifier: GPL-3.0-or-later
#include "filecommands.h"

#include "core/class_ini.h"
#include "core/files.h"
#include "core/freq.h"
#include "core/memory.h"
#include "core/profiles.h"
#include "history/history.h"

namespace kestrel {

ShownNames ShownNames::of(const AppContext& ctx) {
    const ProfileRec& p = ctx.cur();
    return {p.Name, ctx.settingsPath(p.Name), p.SrchName};
}

FileDialogOptions FileDialogFor(FileCommand command, const AppContext& ctx,
                                const ShownNames& shown) {
    const QString appDir = ctx.appDir() + QLatin1Char('/');
    const QString banks = ctx.banksDir() + QLatin1Char('/');
    switch (command) {
    case FileCommand::LoadProfile:
        return {QStringLiteral("Load Profile"), appDir, QStringLiteral("*.ini"),
                QStringLiteral("ini"), QStringLiteral("*.ini")};
    case FileCommand::SaveProfileAs:
        return {QStringLiteral("Save Profile As"), appDir, QStringLiteral("*.ini"),
                QStringLiteral("ini"), shown.profName + QStringLiteral(".ini")};
    case FileCommand::LoadBank:
        return {QStringLiteral("Load Bank"), banks, QStringLiteral("*.BKE"), QStringLiteral("BKE"),
                QStringLiteral("*.BKE")};
    case FileCommand::SaveBankAs:
        return {QStringLiteral("Save Bank As"), banks, QStringLiteral("*.BKE"),
                QStringLiteral("BKE"), QStringLiteral("Untitled.BKE")};
    case FileCommand::LoadSearch:
        return {QStringLiteral("Load Search"), banks, QStringLiteral("*.SKE"),
                QStringLiteral("SKE"), QStringLiteral("*.SKE")};
    case FileCommand::SaveSearchAs:
        return {QStringLiteral("Save Search As"), banks, QStringLiteral("*.SKE"),
                QStringLiteral("SKE"), QStringLiteral("*.SKE")};
    }
    return {};
}

bool IsOpenDialog(FileCommand command) {
    return command == FileCommand::LoadProfile || command == FileCommand::LoadBank ||
           command == FileCommand::LoadSearch;
}

void LoadProfileFrom(AppContext& ctx, qint16 p, ShownNames& shown, const QString& path) {
    ChangeStep step(ctx, QStringLiteral("Load Profile"), p, 1);
    ProfileRec& profile = ctx.Profiles[p];
    // Profile 0 is always "Main": its settings file carries the program-wide settings and is
    // the one read at start, so it takes the loaded contents but keeps its name.
    if (p != 0)
        profile.Name = FileBaseName(path);
    Load_Settings(ctx, p, path);
    shown = {profile.Name, ctx.settingsPath(profile.Name), profile.SrchName};
    // Closing writes the profile to its own settings file (for "Main" never the loaded one),
    // and a settings file names only the banks written with it: all of them, so that the next
    // start finds the banks just loaded.
    for (int b = 1; b <= BankCount; ++b)
        profile.Banks[b].Changed = true;
    profile.Changed = true;
    ctx.Profiles[0].Changed = true;
}

void SaveProfile(AppContext& ctx, const ShownNames& shown) {
    // The saves set and clear Changed flags outside any undo step.
    ++ctx.flagEpoch;
    const qint16 p = ctx.CurProfile;
    // Saving clears the Changed flag through which closing would record the profile's name in
    // the profile list; a renamed or loaded profile would then be looked for under its old name
    // at the next start. The entry is written with the profile instead.
    if (p > 0) {
        IniDocument list = IniDocument::load(ctx.profileListPath());
        const QString key = QStringLiteral("Profile") + Num2(p);
        if (list.ReadKey(u"Profiles", key) != ctx.Profiles[p].Name) {
            list.WriteKey(QStringLiteral("Profiles"), key, ctx.Profiles[p].Name);
            SaveIni(ctx, list, ctx.profileListPath());
        }
    }
    Save_Settings(ctx, p, ctx.settingsPath(shown.profName));
}

void SaveProfileAs(AppContext& ctx, ShownNames& shown, const QString& path) {
    ++ctx.flagEpoch;
    shown.profName = FileBaseName(path);
    shown.profPath = path;
    ctx.cur().Changed = true;
    Save_Settings(ctx, ctx.CurProfile, path);
}

void LoadBankFrom(AppContext& ctx, qint16 p, int b, const QString& path) {
    ChangeStep step(ctx, QStringLiteral("Load Bank"), p, quint8(b));
    Load_BankInfo(ctx, p, b, path);
    BankRec& bank = ctx.Profiles[p].Banks[b];
    bank.FileName = FileBaseName(path);
    bank.Changed = true;
    ctx.Profiles[p].Changed = true;
    ctx.Profiles[0].Changed = true;
}

void SaveBank(AppContext& ctx) {
    ++ctx.flagEpoch;
    const int b = ctx.CurBank;
    Save_BankInfo(ctx, ctx.CurProfile, b, ctx.bankPath(ctx.cur().Banks[b].FileName));
    ctx.cur().Changed = true;
    ctx.Profiles[0].Changed = true;
}

void SaveBankAs(AppContext& ctx, const QString& path) {
    ++ctx.flagEpoch;
    const int b = ctx.CurBank;
    BankRec& bank = ctx.cur().Banks[b];
    bank.FileName = FileBaseName(path);
    Save_BankInfo(ctx, ctx.CurProfile, b, path);
    bank.Changed = true;
    ctx.cur().Changed = true;
}

void LoadSearchFrom(AppContext& ctx, qint16 p, ShownNames& shown, const QString& path) {
    ChangeStep step(ctx, QStringLiteral("Load Search"), p, SearchTab);
    shown.srchName = FileBaseName(path);
    Load_SearchInfo(ctx, p, path);
    ctx.Profiles[p].Changed = true;
}

void SaveSearch(AppContext& ctx, const ShownNames& shown) {
    ++ctx.flagEpoch;
    Save_SearchInfo(ctx, ctx.CurProfile, ctx.searchPath(shown.srchName));
}

void SaveSearchAs(AppContext& ctx, ShownNames& shown, const QString& path) {
    ++ctx.flagEpoch;
    shown.srchName = FileBaseName(path);
    ctx.cur().SrchName = shown.srchName;
    ctx.cur().Changed = true;
    Save_SearchInfo(ctx, ctx.CurProfile, path);
}

QString EditCommandCaption(EditCommand command) {
    switch (command) {
    case EditCommand::ClearAllBanks:
        return QStringLiteral("Clear ALL Banks");
    case EditCommand::ClearCurrentBank:
        return QStringLiteral("Clear Current Bank");
    case EditCommand::ClearSearchLimits:
        return QStringLiteral("Clear Search Limits");
    case EditCommand::SetFactoryDefaults:
        return QStringLiteral("Set Factory Defaults");
    case EditCommand::SetDefaultBank:
        return QStringLiteral("Set Default Bank");
    case EditCommand::SetDefaultLimits:
        return QStringLiteral("Set Default Limits");
    }
    return {};
}

void ApplyEditCommand(AppContext& ctx, qint16 p, int bank, EditCommand command) {
    ChangeStep step(ctx, EditCommandCaption(command), p,
                    EditCommandTouchesSearch(command) ? SearchTab : quint8(bank));
    switch (command) {
    case EditCommand::ClearAllBanks:
        ClearAllBanks(ctx, p);
        break;
    case EditCommand::ClearCurrentBank:
        ClearBank(ctx, p, bank);
        break;
    case EditCommand::ClearSearchLimits:
        ClearSearchLimits(ctx, p);
        break;
    case EditCommand::SetFactoryDefaults:
        FactoryAllBanks(ctx, p);
        break;
    case EditCommand::SetDefaultBank:
        FactoryBank(ctx, p, bank);
        break;
    case EditCommand::SetDefaultLimits:
        DefaultSearchLimits(ctx, p);
        break;
    }
    ctx.Profiles[p].Changed = true;
}

bool EditCommandTouchesSearch(EditCommand command) {
    return command == EditCommand::ClearSearchLimits || command == EditCommand::SetDefaultLimits;
}

QString EraseConfirmText() {
    return QStringLiteral("This will ERASE Your Current Settings!\nAre You SURE You Want To "
                          "Proceed???");
}

static QString selectedStepName(bool toDefault) {
    return toDefault ? QStringLiteral("Set Selected Entries to Default")
                     : QStringLiteral("Clear Selected Entries");
}

void ClearChannels(AppContext& ctx, qint16 p, const QList<int>& channelNumbers, bool toDefault) {
    ChangeStep step(ctx, selectedStepName(toDefault), p,
                    quint8(channelNumbers.isEmpty() ? 1 : BankOfChannel(channelNumbers.first())));
    for (const int n : channelNumbers) {
        if (n < 1 || n > ChannelCount)
            continue;
        const int b = BankOfChannel(n);
        const int c = SlotOfChannel(n);
        Set_Channel(ctx, p, qint16(b), quint8(c), ctx.DefChans[toDefault ? n : 0]);
        // A cleared channel is an edit like any other: it must reach the bank file.
        ctx.Profiles[p].Banks[b].Changed = true;
    }
}

void ClearSearches(AppContext& ctx, qint16 p, const QList<int>& rangeNumbers, bool toDefault) {
    ChangeStep step(ctx, selectedStepName(toDefault), p, SearchTab);
    for (const int i : rangeNumbers) {
        if (i < 1 || i > SearchCount)
            continue;
        Set_Search(ctx, p, qint16(i), ctx.DefSearch[toDefault ? i : 0]);
        ctx.Profiles[p].Changed = true;
    }
}

} // namespace kestrel
