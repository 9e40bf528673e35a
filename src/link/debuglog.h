// SPDX-License-Identifier: GPL-3.0-or-later
// The communications trace file ("Debug.log"): opened by the debug window, written by the link
// one line per frame and answer.
#pragma once

#include <QFile>
#include <QString>

namespace kestrel {

class DebugLog {
public:
    // Replaces any earlier file and writes the "[Debug]" heading. False (with errorString())
    // when the file cannot be opened; logging then stays off.
    bool open(const QString& path);
    void close();
    bool isOpen() const { return m_file.isOpen(); }
    QString errorString() const { return m_file.errorString(); }
    QString path() const { return m_file.fileName(); }
    // Each line is flushed at once so that a trace survives a crash or a pulled cable.
    void writeLine(const QString& line);

private:
    QFile m_file;
};

} // namespace kestrel
