// SPDX-License-Identifier: GPL-3.0-or-later
#include "datalock.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <limits>

namespace kestrel {

namespace {
constexpr int kRetryMs = 50;
}

DataLock::DataLock(const QString& dataDir)
    : m_path(QDir(dataDir).filePath(QLatin1String(kLockFileName))), m_lock(m_path) {
    // A lock is stale when its holder has died. Age alone should not make it so (the window
    // holds it for as long as it runs), but no age at all would also turn off the dead-holder
    // check: the longest age there is.
    m_lock.setStaleLockTime(std::numeric_limits<int>::max());
}

bool DataLock::acquire(int waitMs) {
    if (m_lock.tryLock(0))
        return true;
    if (m_lock.error() != QLockFile::LockFailedError)
        return true; // no lock file can be made here; the writes will tell
    const QDeadlineTimer deadline(waitMs);
    QEventLoop loop;
    QTimer retry;
    QObject::connect(&retry, &QTimer::timeout, &loop, [&] {
        if (m_lock.tryLock(0) || deadline.hasExpired())
            loop.quit();
    });
    retry.start(kRetryMs);
    loop.exec();
    return m_lock.isLocked();
}

QString DataLock::holder() const {
    // The lock file holds the process id and the program's name on its first two lines.
    QFile f(m_path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = f.read(4096).split('\n');
    const QString pid = QString::fromUtf8(lines.value(0)).trimmed();
    QString name = QString::fromUtf8(lines.value(1)).trimmed();
    if (name.isEmpty())
        name = QStringLiteral("another program");
    return name + QStringLiteral(", process ") + pid;
}

QString InUseText(const QString& dataDir, const QString& holder) {
    return QDir::toNativeSeparators(dataDir) + QStringLiteral(" is in use by ") + holder;
}

} // namespace kestrel
