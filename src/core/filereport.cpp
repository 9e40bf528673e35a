// SPDX-License-Identifier: GPL-3.0-or-later
#include "filereport.h"

#include "class_ini.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kestrel {

const char* const kDamagedFilesText =
    "Some files could not be read in full; the factory lines were used for what was lost. "
    "Each file is copied aside (\".damaged-\" and the date) before it is next saved.";
const char* const kWriteFailedText =
    "These files could not be saved; each still holds what it held before:";

namespace {

QString absolute(const QString& path) {
    return QFileInfo(path).absoluteFilePath();
}

} // namespace

void NoteDamage(AppContext& ctx, const QString& path, const QString& detail) {
    const QString abs = absolute(path);
    for (AppContext::Damage& d : ctx.loadProblems) {
        if (d.path == abs) {
            if (!d.details.contains(detail))
                d.details.append(detail);
            return;
        }
    }
    ctx.loadProblems.append({abs, {detail}});
    if (!ctx.keepBeforeWrite.contains(abs))
        ctx.keepBeforeWrite.append(abs);
}

void NoteDamagedLines(AppContext& ctx, const QString& path, const IniDocument& doc) {
    if (doc.readFailed())
        NoteDamage(ctx, path, QStringLiteral("the file could not be read"));
    if (doc.damagedLineCount() == 0)
        return;
    QStringList numbers;
    for (int n : doc.damagedLines())
        numbers.append(QString::number(n));
    QString detail = QStringLiteral("line ") + numbers.join(QStringLiteral(", "));
    if (doc.damagedLineCount() > doc.damagedLines().size())
        detail += QStringLiteral(" and ") +
                  QString::number(doc.damagedLineCount() - doc.damagedLines().size()) +
                  QStringLiteral(" more");
    NoteDamage(ctx, path, detail);
}

void ReportLoadProblems(AppContext& ctx, bool log) {
    if (ctx.loadProblems.isEmpty())
        return;
    QString text = QString::fromLatin1(kDamagedFilesText) + QStringLiteral("\n");
    for (const AppContext::Damage& d : ctx.loadProblems) {
        const QString details = d.details.join(QStringLiteral("; "));
        if (log)
            ctx.errors.LogError(d.path, err::BadFileFormat,
                                QStringLiteral("Damaged file: ") + details);
        text += QStringLiteral("\n") + QDir::toNativeSeparators(d.path) + QStringLiteral(": ") +
                details;
    }
    ctx.loadProblems.clear();
    ctx.prompts().message(text, QStringLiteral("Kestrel Manager"), Icon::Exclamation, Buttons::Ok);
}

void RemoveStaleSaves(AppContext& ctx) {
    RemoveStaleTemps(ctx.appDir());
    RemoveStaleTemps(ctx.banksDir());
}

QString DamagedCopyPath(const QString& path) {
    return path + QStringLiteral(".damaged-") +
           QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
}

bool SaveBytes(AppContext& ctx, const QByteArray& bytes, const QString& path) {
    const QString abs = absolute(path);
    if (ctx.keepBeforeWrite.contains(abs)) {
        if (QFileInfo::exists(abs)) {
            QString copy = DamagedCopyPath(abs);
            for (int n = 2; QFileInfo::exists(copy); ++n)
                copy = DamagedCopyPath(abs) + QLatin1Char('-') + QString::number(n);
            if (!QFile::copy(abs, copy)) {
                ctx.noteWriteFailure(path, QStringLiteral("a copy of the damaged file could "
                                                          "not be kept, so it is left as it was"));
                return false;
            }
        }
        ctx.keepBeforeWrite.removeAll(abs);
    }
    QString reason;
    if (ctx.writer().writeFile(path, bytes, &reason))
        return true;
    ctx.noteWriteFailure(path, reason);
    return false;
}

QStringList WriteFailureLines(const AppContext& ctx, qsizetype from) {
    QStringList lines;
    for (qsizetype i = from; i < ctx.failedWrites.size(); ++i) {
        const QString& path = ctx.failedWrites[i];
        const QString reason = ctx.writeFailureReason(path);
        lines.append(QDir::toNativeSeparators(path) + QStringLiteral(": ") +
                     (reason.isEmpty() ? QStringLiteral("could not be written") : reason));
    }
    return lines;
}

bool ReportWriteFailures(AppContext& ctx) {
    if (ctx.failedWrites.isEmpty())
        return true;
    const QStringList lines = WriteFailureLines(ctx);
    for (const QString& line : lines)
        ctx.errors.LogError(QStringLiteral("Save"), 75, line);
    ctx.failedWrites.clear();
    ctx.prompts().message(QString::fromLatin1(kWriteFailedText) + QStringLiteral("\n\n") +
                              lines.join(QLatin1Char('\n')),
                          QStringLiteral("Kestrel Manager"), Icon::Critical, Buttons::Ok);
    return false;
}

} // namespace kestrel
