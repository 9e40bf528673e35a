// SPDX-License-Identifier: GPL-3.0-or-later
// Reading PDFs back in the printing tests: their text, word positions and page count, through
// poppler's command-line tools.
#pragma once

#include <QList>
#include <QRectF>
#include <QString>
#include <QStringList>

namespace kestrel::test {

// The text of every page in reading order; pages are separated by form feeds.
QString pdfText(const QString& path);
// The text of each page.
QStringList pdfPages(const QString& path);

struct PdfWord {
    int page = 0; // 1-based
    QRectF box;   // in points from the page's top left corner
    QString text;
};
QList<PdfWord> pdfWords(const QString& path);

} // namespace kestrel::test
