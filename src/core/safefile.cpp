// SPDX-License-Identifier: GPL-3.0-or-later
#include "safefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kestrel {

namespace {

constexpr qsizetype kBlock = 64 * 1024;

QString systemReason(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

// Makes the data reach the disk; the folder too, so that the rename itself survives a crash.
bool syncFile(QFileDevice& file) {
#ifdef Q_OS_UNIX
    return ::fsync(file.handle()) == 0;
#else
    Q_UNUSED(file);
    return true;
#endif
}

void syncFolder(const QString& folder) {
#ifdef Q_OS_UNIX
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#else
    Q_UNUSED(folder);
#endif
}

} // namespace

qint64 FileWriter::writeBlock(QFileDevice& file, QByteArrayView bytes) {
    return file.write(bytes.data(), bytes.size());
}

bool FileWriter::writeAll(QFileDevice& file, QByteArrayView bytes, QString* reason) {
    for (qsizetype at = 0; at < bytes.size();) {
        const qint64 n = writeBlock(file, bytes.sliced(at, qMin(kBlock, bytes.size() - at)));
        if (n <= 0) {
            // A write that stops short without an error of its own is a full disk.
            *reason =
                file.error() == QFileDevice::NoError ? systemReason(ENOSPC) : file.errorString();
            return false;
        }
        at += n;
    }
    if (!file.flush()) {
        *reason = file.errorString();
        return false;
    }
    return true;
}

bool FileWriter::writeFile(const QString& path, QByteArrayView bytes, QString* reason) {
    QString ignored;
    if (!reason)
        reason = &ignored;
    const QFileInfo target(path);
    // A link is followed: the file it names is replaced, the link stays.
    const QString real = target.isSymLink() ? target.symLinkTarget() : target.absoluteFilePath();
    const QFileInfo info(real);
    if (info.isDir()) {
        *reason = QStringLiteral("it is a folder");
        return false;
    }
    QTemporaryFile tmp(info.absolutePath() + QLatin1Char('/') + info.fileName() +
                       QStringLiteral("~XXXXXX") + QLatin1String(kSaveTempSuffix));
    if (!tmp.open()) {
        *reason = tmp.errorString();
        return false;
    }
    const QFileDevice::Permissions perms =
        info.exists() ? info.permissions()
                      : QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup |
                            QFileDevice::ReadOther;
    bool ok = writeAll(tmp, bytes, reason);
    if (ok && !syncFile(tmp)) {
        *reason = systemReason(errno);
        ok = false;
    }
    tmp.setPermissions(perms);
    tmp.close();
    if (ok && tmp.error() != QFileDevice::NoError) {
        *reason = tmp.errorString();
        ok = false;
    }
    if (ok) {
        std::error_code ec;
        std::filesystem::rename(QFile::encodeName(tmp.fileName()).toStdString(),
                                QFile::encodeName(real).toStdString(), ec);
        if (ec) {
            *reason = QString::fromLocal8Bit(ec.message().c_str());
            ok = false;
        }
    }
    if (!ok) {
        tmp.remove();
        return false;
    }
    tmp.setAutoRemove(false); // it is the file now
    syncFolder(info.absolutePath());
    return true;
}

bool FileWriter::writeOutput(const QString& path, QByteArrayView bytes, QString* reason) {
    QString ignored;
    if (!reason)
        reason = &ignored;
    if (path == QLatin1String("-")) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly, QFileDevice::DontCloseHandle)) {
            *reason = out.errorString();
            return false;
        }
        std::fflush(stdout);
        if (!writeAll(out, bytes, reason))
            return false;
        if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
            *reason = systemReason(errno);
            return false;
        }
        return true;
    }
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir()) {
        // A FIFO, a terminal or a device: written into, never replaced by a regular file.
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
            *reason = out.errorString();
            return false;
        }
        return writeAll(out, bytes, reason);
    }
    return writeFile(path, bytes, reason);
}

int RemoveStaleTemps(const QString& folder) {
    int removed = 0;
    const QStringList names = QDir(folder).entryList(
        {QStringLiteral("*~*") + QLatin1String(kSaveTempSuffix)}, QDir::Files | QDir::Hidden);
    for (const QString& name : names)
        removed += QFile::remove(folder + QLatin1Char('/') + name) ? 1 : 0;
    return removed;
}

} // namespace kestrel
