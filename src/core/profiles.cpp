// SPDX-License-Identifier: GPL-3.0-or-later
#include "profiles.h"

#include "class_ini.h"
#include "filereport.h"
#include "files.h"
#include "freq.h"

#include <QFileInfo>

namespace kestrel {

namespace {

const QString kProfilesSec = QStringLiteral("Profiles");
const QString kSettingsSec = QStringLiteral("Settings");
const QString kScanBanksSec = QStringLiteral("ScanBanks");

QString profileKey(int p) {
    return QStringLiteral("Profile") + Num2(p);
}
QString bankKey(int b) {
    return QStringLiteral("Bank") + Num2(b);
}

void checkProfile(qint16 p) {
    if (p < 0 || p >= ProfileCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

} // namespace

QString DefaultSrchName(int p) {
    return QStringLiteral("SrchBank") + Num2(p);
}
QString DefaultBankName(int p, int b) {
    return QStringLiteral("Bank") + Num2(p * 10 + b);
}
QString DefaultProfileName(int p) {
    return profileKey(p);
}

void Load_Profiles(AppContext& ctx) {
    Trap(ctx.errors, "ModMain -> Load_Profiles", [&](Stmt& s) {
        s.at(1);
        const IniDocument list = IniDocument::load(ctx.profileListPath());
        NoteDamagedLines(ctx, ctx.profileListPath(), list);
        const bool listExists = QFileInfo::exists(ctx.profileListPath());
        for (int p = 0; p < ProfileCount; ++p) {
            s.at(2);
            ProfileRec& profile = ctx.Profiles[p];
            profile.Changed = false;
            if (p == 0) {
                profile.Name = QStringLiteral("Main");
            } else {
                profile.Name = list.ReadKey(kProfilesSec, profileKey(p));
                if (profile.Name.isEmpty()) {
                    // A list that is there but lacks the entry has lost the profile's name.
                    if (listExists && !list.readFailed())
                        NoteDamage(ctx, ctx.profileListPath(),
                                   profileKey(p) + QStringLiteral(" missing"));
                    profile.Name = profileKey(p);
                    profile.Changed = true;
                }
            }
            s.at(3);
            Load_Settings(ctx, qint16(p), ctx.settingsPath(profile.Name));
        }
    });
}

void Load_Settings(AppContext& ctx, qint16 p, const QString& givenPath) {
    Trap(ctx.errors, "ModMain -> Load_Settings", [&](Stmt& s) {
        s.at(1);
        checkProfile(p);
        const QString path =
            givenPath.isEmpty() ? ctx.settingsPath(QStringLiteral("kestrel-manager")) : givenPath;
        const IniDocument doc = IniDocument::load(path);
        NoteDamagedLines(ctx, path, doc);
        s.at(2);
        if (p == 0)
            ReadProgramSettings(ctx.settings, doc, ctx.screenTwips);
        s.at(3);
        ProfileRec& profile = ctx.Profiles[p];
        QString srch = doc.ReadKey(kSettingsSec, u"SrchName");
        if (srch.isEmpty())
            srch = DefaultSrchName(p);
        profile.SrchName = ValidateFName(srch);
        Load_SearchInfo(ctx, p, ctx.searchPath(profile.SrchName));
        s.at(4);
        for (int b = 1; b <= BankCount; ++b) {
            BankRec& bank = profile.Banks[b];
            bank.Changed = false;
            QString name = doc.ReadKey(kScanBanksSec, bankKey(b));
            if (name.isEmpty()) {
                name = DefaultBankName(p, b);
                bank.Changed = true;
            }
            bank.FileName = ValidateFName(name);
            Load_BankInfo(ctx, p, b, ctx.bankPath(bank.FileName));
        }
    });
}

void Save_Profiles(AppContext& ctx) {
    Trap(ctx.errors, "ModMain -> Save_Profiles", [&](Stmt& s) {
        s.at(1);
        // The profile list is written once, with the entries of every changed profile.
        IniDocument list;
        bool listChanged = false;
        for (int p = 1; p < ProfileCount; ++p) {
            if (!ctx.Profiles[p].Changed)
                continue;
            if (!listChanged)
                list = IniDocument::load(ctx.profileListPath());
            list.WriteKey(kProfilesSec, profileKey(p), ctx.Profiles[p].Name);
            listChanged = true;
        }
        s.at(2);
        if (listChanged)
            SaveIni(ctx, list, ctx.profileListPath());
        s.at(3);
        for (int p = 0; p < ProfileCount; ++p) {
            if (ctx.Profiles[p].Changed)
                Save_Settings(ctx, qint16(p), ctx.settingsPath(ctx.Profiles[p].Name));
        }
    });
}

void Save_Settings(AppContext& ctx, qint16 p, const QString& path) {
    Trap(ctx.errors, "ModMain -> Save_Settings", [&](Stmt& s) {
        s.at(1);
        checkProfile(p);
        ProfileRec& profile = ctx.Profiles[p];
        IniDocument doc = IniDocument::load(path);
        s.at(2);
        if (p == 0)
            WriteProgramSettings(ctx.settings, doc);
        s.at(3);
        doc.WriteKey(kSettingsSec, QStringLiteral("SrchName"), profile.SrchName);
        Save_SearchInfo(ctx, p, ctx.searchPath(profile.SrchName));
        s.at(4);
        // Every name is written: a bank renamed and then saved on its own is no longer
        // Changed, yet its new name must reach the settings file.
        for (int b = 1; b <= BankCount; ++b) {
            BankRec& bank = profile.Banks[b];
            doc.WriteKey(kScanBanksSec, bankKey(b), bank.FileName);
            if (bank.Changed)
                Save_BankInfo(ctx, p, b, ctx.bankPath(bank.FileName));
        }
        s.at(5);
        // The data files are in place before the settings file names them.
        if (SaveIni(ctx, doc, path)) {
            profile.Changed = false;
            ++ctx.flagEpoch;
        }
    });
}

int FindProfile(const AppContext& ctx, const QString& indexOrName) {
    bool isNumber = false;
    const int index = indexOrName.toInt(&isNumber);
    if (isNumber)
        return (index >= 0 && index < ProfileCount) ? index : -1;
    for (int p = 0; p < ProfileCount; ++p)
        if (ctx.Profiles[p].Name == indexOrName)
            return p;
    for (int p = 0; p < ProfileCount; ++p)
        if (ctx.Profiles[p].Name.compare(indexOrName, Qt::CaseInsensitive) == 0)
            return p;
    return -1;
}

} // namespace kestrel
