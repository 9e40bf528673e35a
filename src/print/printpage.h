// SPDX-License-Identifier: GPL-3.0-or-later
// One printed page of a list (title, column captions, rows, date, time and page number), laid out
// the same way on the preview picture, the printer and a PDF, and the printing of a page range.
#pragma once

#include "cprintlv.h"

#include <QDateTime>
#include <QLocale>
#include <QPageLayout>
#include <QPageSize>
#include <functional>

class QIODevice;
class QPagedPaintDevice;

namespace kestrel {

inline constexpr qint16 kDefaultMaxRows = 58; // rows per page when the caller sets none
inline constexpr qint16 kListMaxRows = 50;    // what the main window's print commands ask for

// The paper of the user's country: Letter in the Americas that use it, A4 elsewhere.
QPageSize LocalePaper(const QLocale& locale);
// Portrait with quarter-inch margins on the given paper (the locale's when none is given).
QPageLayout DefaultPageLayout(const QPageSize& paper = QPageSize());
// The printable part of the locale's page in twips (1/1440 inch).
QSize PageSizeTwips();

QString PageNumberText(int page, int pageCount); // "Page: 2 of 4"
QString DateText(const QDate& date);             // "Date: 11-22-2026"
QString TimeText(const QTime& time);             // "Time: " + the system's time format

// Draws page `page` of the list: the painter's device is the page, positions are measured from
// its top left corner. Surfaces that are not paper are cleared to white first.
void DrawPage(QPainter& painter, cPrintLV& list, qint16 page, const QString& title,
              const QDateTime& now);

// Prints pages from..to (1-based, inclusive), one sheet each. onPage is told the page about to be
// printed. Throws KestrelError when the device cannot be drawn on.
void PrintPageRange(QPagedPaintDevice& device, cPrintLV& list, const QString& title, qint16 from,
                    qint16 to, const QDateTime& now,
                    const std::function<void(qint16)>& onPage = {});

// Writes pages from..to of a table into a PDF on `out` (already open for writing).
void WritePdf(QIODevice& out, ErrorReporter& errors, const PrintTable& table, const QString& title,
              qint16 rowsPerPage, qint16 from, qint16 to, const QDateTime& now);

} // namespace kestrel
