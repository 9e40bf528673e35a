// SPDX-License-Identifier: GPL-3.0-or-later
// One writer at a time in a data folder: a lock file that the window holds while it runs and a
// command that writes holds while it works. A lock left by a process that died is taken over.
#pragma once

#include <QLockFile>
#include <QString>

namespace kestrel {

inline constexpr const char* kLockFileName = "kestrel.lock";

class DataLock {
public:
    explicit DataLock(const QString& dataDir);

    // Takes the lock, waiting up to waitMs for another holder to let go (the event loop runs
    // meanwhile). True when held; also true when the folder cannot hold a lock file at all
    // (a read-only folder, where nothing can be written anyway).
    bool acquire(int waitMs);
    void release() { m_lock.unlock(); }
    bool held() const { return m_lock.isLocked(); }

    // Who holds it: "kestrel-manager, process 1234"; empty when nobody does.
    QString holder() const;

private:
    QString m_path;
    QLockFile m_lock;
};

// The message of a command that gave up waiting: "<folder> is in use by <holder>".
QString InUseText(const QString& dataDir, const QString& holder);

} // namespace kestrel
