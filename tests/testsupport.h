// SPDX-License-Identifier: GPL-3.0-or-later
// Small helpers shared by the tests: temporary data folders, file bytes, golden files, and
// running kestrelctl as a process.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace kestrel::test {

QByteArray readFile(const QString& path);
void writeFile(const QString& path, const QByteArray& bytes);
// The bytes of a literal, NUL characters included.
template <size_t N> QByteArray bytesOf(const char (&s)[N]) {
    return QByteArray(s, qsizetype(N - 1));
}

// The numbers of a comma-separated list such as "3,4,20" (empty: none).
QList<int> ints(const QString& list);

// A file under tests/data.
QString dataPath(const QString& relative);

struct ProcessResult {
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};
// Runs kestrelctl with the given arguments (and optional standard input); waits up to timeoutMs.
ProcessResult runKestrelctl(const QStringList& args, int timeoutMs = 60000,
                            const QByteArray& input = {});
// Runs kestrelctl on the data folder `dataDir`.
ProcessResult runKestrelctlIn(const QString& dataDir, const QStringList& args);
// The non-empty lines of a program's output.
QStringList outputLines(const QByteArray& out);

// Every file under a folder, as relative path -> bytes.
QMap<QString, QByteArray> snapshotTree(const QString& root);
// The files of `after` that are new or differ from `before`, sorted.
QStringList changedFiles(const QMap<QString, QByteArray>& before,
                         const QMap<QString, QByteArray>& after);

} // namespace kestrel::test
