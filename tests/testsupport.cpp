// SPDX-License-Identifier: GPL-3.0-or-later
#include "testsupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTest>

namespace kestrel::test {

QByteArray readFile(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

void writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(path));
    f.write(bytes);
}

QList<int> ints(const QString& list) {
    QList<int> out;
    for (const QString& p : list.split(QLatin1Char(','), Qt::SkipEmptyParts))
        out.append(p.toInt());
    return out;
}

QString dataPath(const QString& relative) {
    return qEnvironmentVariable("KESTREL_TEST_DATA") + QLatin1Char('/') + relative;
}

ProcessResult runKestrelctl(const QStringList& args, int timeoutMs, const QByteArray& input) {
    QProcess proc;
    proc.start(qEnvironmentVariable("KESTRELCTL"), args);
    ProcessResult r;
    if (!proc.waitForStarted(timeoutMs))
        return r;
    proc.write(input);
    proc.closeWriteChannel();
    if (!proc.waitForFinished(timeoutMs)) {
        proc.kill();
        proc.waitForFinished();
        return r;
    }
    r.exitCode = proc.exitStatus() == QProcess::NormalExit ? proc.exitCode() : -1;
    r.out = proc.readAllStandardOutput();
    r.err = proc.readAllStandardError();
    return r;
}

ProcessResult runKestrelctlIn(const QString& dataDir, const QStringList& args) {
    return runKestrelctl(QStringList{QStringLiteral("--data-dir"), dataDir} + args);
}

QStringList outputLines(const QByteArray& out) {
    return QString::fromUtf8(out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QMap<QString, QByteArray> snapshotTree(const QString& root) {
    QMap<QString, QByteArray> files;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    const QDir base(root);
    while (it.hasNext()) {
        const QString path = it.next();
        files.insert(base.relativeFilePath(path), readFile(path));
    }
    return files;
}

QStringList changedFiles(const QMap<QString, QByteArray>& before,
                         const QMap<QString, QByteArray>& after) {
    QStringList changed;
    for (auto it = after.begin(); it != after.end(); ++it)
        if (!before.contains(it.key()) || before.value(it.key()) != it.value())
            changed << it.key();
    return changed;
}

} // namespace kestrel::test
