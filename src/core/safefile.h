// SPDX-License-Identifier: GPL-3.0-or-later
// Whole-file writes that never leave a half-written file behind: a temporary file beside the
// target, every write and flush checked, file and folder synced, then a rename over the target.
// Also output that may be a stream ("-", a FIFO, a device), written in place.
#pragma once

#include <QByteArrayView>
#include <QString>

class QFileDevice;

namespace kestrel {

// Temporary files end in this; one left by a save that was killed is removed at the next start.
inline constexpr const char* kSaveTempSuffix = ".kestrel-save";

class FileWriter {
public:
    virtual ~FileWriter() = default;

    // Replaces the file at path with the bytes. On any failure the old file stays as it was, the
    // temporary file is removed, and false is returned with the system's reason.
    bool writeFile(const QString& path, QByteArrayView bytes, QString* reason);

    // Output chosen by the user: "-" is standard output, a FIFO or a device is written as a
    // stream (never replaced), anything else goes through writeFile.
    bool writeOutput(const QString& path, QByteArrayView bytes, QString* reason);

protected:
    // Writes one block to an open file; the number of bytes written, or -1. The seam through
    // which tests make writes fail as on a full disk.
    virtual qint64 writeBlock(QFileDevice& file, QByteArrayView bytes);

private:
    bool writeAll(QFileDevice& file, QByteArrayView bytes, QString* reason);
};

// Removes the temporary files of killed saves from a folder; returns how many.
int RemoveStaleTemps(const QString& folder);

} // namespace kestrel
