// SPDX-License-Identifier: GPL-3.0-or-later
#include "files.h"

#include "class_ini.h"
#include "filereport.h"
#include "freq.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>

namespace kestrel {

const char* const kRenameExistsMessage = "Can NOT Rename File, Destination May Exist Already!!!";

namespace {

const QString kBankInfo = QStringLiteral("BankInfo");
const QString kChnlInfo = QStringLiteral("ChnlInfo");
const QString kSrchInfo = QStringLiteral("SrchInfo");
const QString kRevision = QStringLiteral("Revision");

// The keys are built once: loading looks each of them up in every bank and search file.
const QString& channelKey(int c) {
    static const auto keys = [] {
        std::array<QString, ChansPerBank + 1> k;
        for (int i = 1; i <= ChansPerBank; ++i)
            k[i] = QStringLiteral("Channel") + Num2(i);
        return k;
    }();
    return keys[c];
}

const QString& searchKey(int i) {
    static const auto keys = [] {
        std::array<QString, SearchCount + 1> k;
        for (int n = 1; n <= SearchCount; ++n)
            k[n] = QStringLiteral("Search") + Num2(n);
        return k;
    }();
    return keys[i];
}

void checkProfile(qint16 p) {
    if (p < 0 || p > ProfileCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

void checkBank(qint16 p, int b) {
    checkProfile(p);
    if (b < 1 || b > BankCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

// Whether a stored line splits into the number of fields its record has.
bool hasFields(QStringView line, int fields) {
    return line.count(QLatin1Char(',')) == fields - 1;
}

// Notes the keys of a data file that could not be used (the wrong number of fields) and its
// damaged lines. A missing key is not noted: the save that follows loses nothing of it.
void noteBadKeys(AppContext& ctx, const QString& path, const IniDocument& doc,
                 const QStringList& badKeys) {
    NoteDamagedLines(ctx, path, doc);
    if (!badKeys.isEmpty())
        NoteDamage(ctx, path, badKeys.join(QStringLiteral(", ")));
}

void writeBank(IniDocument& doc, const BankRec& bank) {
    doc.WriteKey(kBankInfo, kRevision, QStringLiteral("1"));
    for (int c = 1; c <= ChansPerBank; ++c)
        doc.WriteKey(kChnlInfo, channelKey(c), ChannelLine(bank.Chans[c]));
}

void writeSearch(IniDocument& doc, const ProfileRec& profile) {
    for (int i = 1; i <= SearchCount; ++i)
        doc.WriteKey(kSrchInfo, searchKey(i), SearchLine(profile.Searches[i]));
}

} // namespace

void Load_BankInfo(AppContext& ctx, qint16 p, int b, const QString& path) {
    Trap(ctx.errors, "ModMain -> Load_BankInfo", [&](Stmt& s) {
        s.at(1);
        checkBank(p, b);
        const IniDocument doc = IniDocument::load(path);
        BankRec& bank = ctx.Profiles[p].Banks[b];
        bank.Revision = Validate_Byte(doc.ReadKey(kBankInfo, kRevision), 0, 0, 255);
        s.at(2);
        QStringList bad;
        for (int c = 1; c <= ChansPerBank; ++c) {
            const QStringView def = ctx.DefChans[ChannelNumber(b, c)];
            const QStringView value = doc.readView(kChnlInfo, channelKey(c));
            if (!value.isEmpty() && !hasFields(value, 5))
                bad.append(channelKey(c));
            ParseChannelLine(bank.Chans[c], value.isEmpty() ? def : value, def);
        }
        s.at(3);
        noteBadKeys(ctx, path, doc, bad);
    });
}

void Save_BankInfo(AppContext& ctx, qint16 p, int b, const QString& path) {
    Trap(ctx.errors, "ModMain -> Save_BankInfo", [&](Stmt& s) {
        s.at(1);
        checkBank(p, b);
        BankRec& bank = ctx.Profiles[p].Banks[b];
        IniDocument doc = IniDocument::load(path); // other keys of the file stay
        writeBank(doc, bank);
        s.at(2);
        // A bank whose file could not be written stays changed, so the next save tries again.
        if (SaveIni(ctx, doc, path)) {
            bank.Changed = false;
            ++ctx.flagEpoch;
        }
    });
}

void Load_SearchInfo(AppContext& ctx, qint16 p, const QString& path) {
    Trap(ctx.errors, "ModMain -> Load_SearchInfo", [&](Stmt& s) {
        s.at(1);
        checkProfile(p);
        const IniDocument doc = IniDocument::load(path);
        ProfileRec& profile = ctx.Profiles[p];
        QStringList bad;
        for (int i = 1; i <= SearchCount; ++i) {
            const QStringView def = ctx.DefSearch[i];
            const QStringView value = doc.readView(kSrchInfo, searchKey(i));
            if (!value.isEmpty() && !hasFields(value, 3))
                bad.append(searchKey(i));
            ParseSearchLine(profile.Searches[i], value.isEmpty() ? def : value, def);
        }
        s.at(2);
        noteBadKeys(ctx, path, doc, bad);
    });
}

void Save_SearchInfo(AppContext& ctx, qint16 p, const QString& path) {
    Trap(ctx.errors, "ModMain -> Save_SearchInfo", [&](Stmt& s) {
        s.at(1);
        checkProfile(p);
        IniDocument doc = IniDocument::load(path);
        writeSearch(doc, ctx.Profiles[p]);
        s.at(2);
        if (SaveIni(ctx, doc, path))
            ++ctx.flagEpoch;
    });
}

QByteArray BankFileBytes(const BankRec& bank) {
    IniDocument doc;
    writeBank(doc, bank);
    return doc.serialize();
}

QByteArray SearchFileBytes(const ProfileRec& profile) {
    IniDocument doc;
    writeSearch(doc, profile);
    return doc.serialize();
}

bool SaveIni(AppContext& ctx, const IniDocument& doc, const QString& path) {
    if (doc.readFailed()) {
        ctx.noteWriteFailure(path, QStringLiteral("the file could not be read, so it is left "
                                                  "as it was"));
        return false;
    }
    return SaveBytes(ctx, doc.serialize(), path);
}

bool File_Exists(const QString& path, bool isFolder) {
    if (path.isEmpty() || path.contains(QLatin1String(".\\")) || path.contains(QLatin1String("./")))
        return false;
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    return isFolder || !info.isDir();
}

qint32 File_Size(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists() || info.isDir())
        return 0;
    return qint32(qMin<qint64>(info.size(), std::numeric_limits<qint32>::max()));
}

bool RenameFile(AppContext& ctx, const QString& newPath, const QString& oldPath) {
    return Trap(ctx.errors, "ModMain -> RenameFile", [&] {
        if (!File_Exists(oldPath))
            return false;
        if (File_Exists(newPath)) {
            ctx.prompts().message(QString::fromLatin1(kRenameExistsMessage),
                                  QStringLiteral("Kestrel Manager"), Icon::Exclamation,
                                  Buttons::Ok);
            return false;
        }
        return QFile::rename(oldPath, newPath);
    });
}

void MakeBanksDir(AppContext& ctx) {
    if (!File_Exists(ctx.banksDir(), true))
        QDir().mkpath(ctx.banksDir()); // a failure is ignored: files then fall back to factory
}

QString TrimFileName(const QString& path) {
    const qsizetype dot = path.indexOf(QLatin1Char('.'));
    const QString head = dot < 0 ? path : path.left(dot);
    const qsizetype sep =
        qMax(head.lastIndexOf(QLatin1Char('\\')), head.lastIndexOf(QLatin1Char('/')));
    return head.mid(sep + 1);
}

QString FileBaseName(const QString& path) {
    const qsizetype sep =
        qMax(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
    const QString title = path.mid(sep + 1);
    const qsizetype dot = title.indexOf(QLatin1Char('.'));
    return dot < 0 ? title : title.left(dot);
}

} // namespace kestrel
