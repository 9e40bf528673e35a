// SPDX-License-Identifier: GPL-3.0-or-later
#include "debuglog.h"

namespace kestrel {

bool DebugLog::open(const QString& path) {
    close();
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    writeLine(QStringLiteral("[Debug]"));
    return true;
}

void DebugLog::close() {
    if (m_file.isOpen())
        m_file.close();
}

void DebugLog::writeLine(const QString& line) {
    if (!m_file.isOpen())
        return;
    // Frames carry single-byte characters; Latin-1 writes each back as the byte it was.
    m_file.write(line.toLatin1() + "\r\n");
    m_file.flush();
}

} // namespace kestrel
