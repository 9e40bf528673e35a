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
const QString kRadioRefSec = QStringLiteral("RadioRef");
const QString kScanBanksSec = QStringLiteral("ScanBanks");
const QString kPortsSec = QStringLiteral("Ports");

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

void readProgramSettings(AppContext& ctx, const IniDocument& doc) {
    ProgramSettings& s = ctx.settings;
    for (int w = 0; w < kWindowCount; ++w) {
        const WindowInfo& info = windowInfo(WindowId(w));
        s.positions[w] = Set_FormPos(doc.ReadKey(kSettingsSec, QString::fromLatin1(info.key)),
                                     ctx.screenTwips, info.designHeight, info.designWidth);
    }
    s.KestrelCable = Validate_Int(doc.ReadKey(kSettingsSec, u"KestrelCable"), 2, 2, 3);
    s.CommPort = Validate_Int(doc.ReadKey(kSettingsSec, u"CommPort"), 1, 1, 16);
    s.DBaseVersion = Validate_Int(doc.ReadKey(kRadioRefSec, u"DBaseVersion"), 8, 1, 999);
    s.DBaseIndex = Validate_Int(doc.ReadKey(kRadioRefSec, u"DBaseIndex"), 0, 0, 1);
    s.DBaseEndUsr = doc.ReadKey(kRadioRefSec, u"DBaseEndUsr");
    if (s.DBaseEndUsr.isEmpty())
        s.DBaseEndUsr = DefaultEndpoint();
    s.DBaseLocUsr = doc.ReadKey(kRadioRefSec, u"DBaseLocUsr");
    if (s.DBaseLocUsr.isEmpty())
        s.DBaseLocUsr = DefaultLocalEndpoint();
    s.DBaseProxyUse = Validate_Bool(doc.ReadKey(kRadioRefSec, u"DBaseProxyUse"), false);
    s.DBaseProxyAdr = doc.ReadKey(kRadioRefSec, u"DBaseProxyAdr");
    if (s.DBaseProxyAdr.isEmpty())
        s.DBaseProxyAdr = QStringLiteral("127.0.0.1");
    s.DBaseProxyPrt = Validate_Int(doc.ReadKey(kRadioRefSec, u"DBaseProxyPrt"), 8080, 80, 32767);
    s.AppKey = doc.ReadKey(kRadioRefSec, u"AppKey").trimmed();
    s.ServiceAddress = DeriveServiceAddress(s);
    s.PortOverrides.clear();
    for (int n = 1; n <= 16; ++n) {
        const QString dev = doc.ReadKey(kPortsSec, QStringLiteral("COM") + QString::number(n));
        if (!dev.isEmpty())
            s.PortOverrides.insert(n, dev);
    }
}

void writeProgramSettings(const AppContext& ctx, IniDocument& doc) {
    const ProgramSettings& s = ctx.settings;
    doc.WriteKey(kSettingsSec, QStringLiteral("Version"), QStringLiteral(KESTREL_VERSION));
    for (int w = 0; w < kWindowCount; ++w) {
        const WindowPos& pos = s.positions[w];
        doc.WriteKey(kSettingsSec, QString::fromLatin1(windowInfo(WindowId(w)).key),
                     QString::number(pos.top) + QLatin1Char(',') + QString::number(pos.left));
    }
    doc.WriteKey(kSettingsSec, QStringLiteral("KestrelCable"), QString::number(s.KestrelCable));
    doc.WriteKey(kSettingsSec, QStringLiteral("CommPort"), QString::number(s.CommPort));
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseVersion"), QString::number(s.DBaseVersion));
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseIndex"), QString::number(s.DBaseIndex));
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseEndUsr"), s.DBaseEndUsr);
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseLocUsr"), s.DBaseLocUsr);
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseProxyUse"), BoolToString(s.DBaseProxyUse));
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseProxyAdr"), s.DBaseProxyAdr);
    doc.WriteKey(kRadioRefSec, QStringLiteral("DBaseProxyPrt"), QString::number(s.DBaseProxyPrt));
    // Only a key the user or a distribution put there is kept; none is added.
    if (!s.AppKey.isEmpty())
        doc.WriteKey(kRadioRefSec, QStringLiteral("AppKey"), s.AppKey);
    // Devices chosen in the port window; an entry given up is emptied, none is added blank.
    for (int n = 1; n <= 16; ++n) {
        const QString key = QStringLiteral("COM") + QString::number(n);
        const QString dev = s.PortOverrides.value(n);
        if (!dev.isEmpty() || !doc.ReadKey(kPortsSec, key).isEmpty())
            doc.WriteKey(kPortsSec, key, dev);
    }
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
            readProgramSettings(ctx, doc);
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
            writeProgramSettings(ctx, doc);
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
