// SPDX-License-Identifier: GPL-3.0-or-later
#include "appcontext.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

namespace kestrel {

AppContext::AppContext(const QString& appDir, Prompts* prompts)
    : errors(QString(), nullptr), m_appDir(QDir(appDir).absolutePath()), m_silent(Answer::Yes),
      m_prompts(prompts ? prompts : &m_silent) {
    errors.setLogDir(m_appDir);
    errors.setPrompts(m_prompts);
    SetDefChans(DefChans);
    SetDefSearch(DefSearch);
}

void AppContext::setPrompts(Prompts* prompts) {
    m_prompts = prompts ? prompts : &m_silent;
    errors.setPrompts(m_prompts);
}

void AppContext::noteWriteFailure(const QString& path, const QString& reason) {
    failedWrites.append(path);
    m_writeReasons.insert(path, reason);
}

QString AppContext::writeFailureReason(const QString& path) const {
    return m_writeReasons.value(path);
}

QString AppContext::banksDir() const {
    return m_appDir + QStringLiteral("/Banks");
}

QString AppContext::settingsPath(const QString& name) const {
    return m_appDir + QLatin1Char('/') + name + QStringLiteral(".ini");
}

QString AppContext::bankPath(const QString& baseName) const {
    return banksDir() + QLatin1Char('/') + baseName + QStringLiteral(".BKE");
}

QString AppContext::searchPath(const QString& baseName) const {
    return banksDir() + QLatin1Char('/') + baseName + QStringLiteral(".SKE");
}

QString AppContext::profileListPath() const {
    return m_appDir + QStringLiteral("/Profiles.ini");
}

QString ResolveAppDir(const QString& overrideDir) {
    if (!overrideDir.isEmpty())
        return QDir(overrideDir).absolutePath();
    const QString exeDir = QCoreApplication::applicationDirPath();
    const QFileInfo info(exeDir);
    // A program installed under /usr (a package) never keeps data beside itself, even when run
    // by root, who may write there.
    const bool systemDir = exeDir.startsWith(QStringLiteral("/usr/"));
    if (!exeDir.isEmpty() && !systemDir && info.isDir() && info.isWritable())
        return exeDir;
    QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (data.isEmpty())
        data = QDir::homePath() + QStringLiteral("/.kestrel-manager");
    QDir().mkpath(data);
    return data;
}

void DetectNumberFormat(AppContext& ctx) {
    const QString text = QLocale::system().toString(1.1);
    ctx.decimalComma = text.contains(QLatin1Char(','));
    ctx.decimalSep = ctx.decimalComma ? QLatin1Char(',') : QLatin1Char('.');
    ctx.listSep = ctx.decimalComma ? QLatin1Char(';') : QLatin1Char(',');
}

} // namespace kestrel
