// SPDX-License-Identifier: GPL-3.0-or-later
// Shared by the printing tests: a channel list of numbered rows, and a PDF's text read back
// through poppler's pdftotext.
#pragma once

#include "core/freq.h"
#include "print/printtable.h"

#include <QProcess>
#include <QStringList>

namespace kestrel::test {

// Rows "001".."count" with the descriptions "Row 001".. in the channel list's columns.
inline PrintTable numberedTable(int count) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int n = 1; n <= count; ++n)
        t.addRow({Num3(n), QStringLiteral("146.520000"), QStringLiteral("Row ") + Num3(n),
                  QStringLiteral("False"), QStringLiteral("False"), QStringLiteral("False")});
    return t;
}

// The text of each page, laid out as on the sheet; empty when the file cannot be read.
inline QStringList pdfPages(const QString& path) {
    QProcess proc;
    proc.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-enc"),
                                             QStringLiteral("UTF-8"), path, QStringLiteral("-")});
    if (!proc.waitForFinished(60000) || proc.exitCode() != 0)
        return {};
    QStringList pages = QString::fromUtf8(proc.readAllStandardOutput()).split(QLatin1Char('\f'));
    pages.removeLast(); // pdftotext ends the last page with a form feed as well
    return pages;
}

} // namespace kestrel::test
