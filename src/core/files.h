// SPDX-License-Identifier: GPL-3.0-or-later
// Bank (.BKE) and search-limit (.SKE) files, and the small file utilities.
#pragma once

#include "appcontext.h"

namespace kestrel {

void Load_BankInfo(AppContext& ctx, qint16 profile, int bank, const QString& path);
void Save_BankInfo(AppContext& ctx, qint16 profile, int bank, const QString& path);
void Load_SearchInfo(AppContext& ctx, qint16 profile, const QString& path);
void Save_SearchInfo(AppContext& ctx, qint16 profile, const QString& path);

// The bytes a bank or search-limit file holds when written from scratch.
QByteArray BankFileBytes(const BankRec& bank);
QByteArray SearchFileBytes(const ProfileRec& profile);

// Writes a whole INI document atomically (a damaged file is first copied aside); a failure is
// noted with its reason in ctx (ctx.failedWrites).
class IniDocument;
bool SaveIni(AppContext& ctx, const IniDocument& doc, const QString& path);

bool File_Exists(const QString& path, bool isFolder = false);
qint32 File_Size(const QString& path);
// Renames old to new when old exists and new does not; when both exist, tells the user.
bool RenameFile(AppContext& ctx, const QString& newPath, const QString& oldPath);
void MakeBanksDir(AppContext& ctx);

// "Can NOT Rename File, Destination May Exist Already!!!"
extern const char* const kRenameExistsMessage;

// The path cut before its first ".", then what follows the last folder separator.
QString TrimFileName(const QString& path);
// A chosen file's title (name without folder) cut before its first "." ("Air.Band.BKE" -> "Air").
QString FileBaseName(const QString& path);

} // namespace kestrel
