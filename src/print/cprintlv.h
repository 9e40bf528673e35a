// SPDX-License-Identifier: GPL-3.0-or-later
// cPrintLV: draws a list as a paginated table (column captions, then the rows of one page) on
// whatever surface the painter is open on: the preview picture, a printer, a PDF, a test image.
#pragma once

#include "printtable.h"

#include <QPen>

class QPainter;

namespace kestrel {

class ErrorReporter;

class cPrintLV {
public:
    explicit cPrintLV(ErrorReporter& errors);

    void ListViewName(const PrintTable& table);
    // Computes the page count and goes back to the first page. rows must be at least 1.
    void Set_Pages(qint32 count, qint16 rows);
    // Selects the items of page p (1-based).
    void Set_Page(qint16 page);
    void PrintHead(QPainter& painter);
    void PrintBody(QPainter& painter);
    // Line width in screen pixels, scaled to the surface's resolution.
    void SetLine(QPainter& painter, int width, Qt::PenStyle style);

    qint16 pageCount() const { return m_pages; }
    qint16 rowsPerPage() const { return m_rows; }
    qint32 itemCount() const { return m_count; }
    qint32 firstItem() const { return m_first; } // 1-based
    qint32 lastItem() const { return m_last; }
    qint32 nextItem() const { return m_next; }
    const PrintTable& table() const { return m_table; }

    // Table geometry in twips from the page's top left corner.
    static constexpr int kLeftTwips = 360;
    static constexpr int kTopTwips = 480;

    static qint16 PageCountFor(qint32 count, qint16 rows);

private:
    QList<double> columnWidths(const QPainter& painter) const;
    void drawCell(QPainter& painter, const QRectF& cell, const QString& text, Qt::Alignment align);

    ErrorReporter& m_errors;
    PrintTable m_table;
    qint32 m_count = 0;
    qint16 m_rows = 10;
    qint16 m_pages = 1;
    qint32 m_first = 1;
    qint32 m_last = 0;
    qint32 m_next = 1;
    double m_y = 0; // where the next table row starts, in the surface's pixels
    QPen m_pen;
};

} // namespace kestrel
