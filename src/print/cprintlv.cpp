// SPDX-License-Identifier: GPL-3.0-or-later
#include "cprintlv.h"

#include "core/errors.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <algorithm>

namespace kestrel {

namespace {

// Column widths come from the screen, where a pixel is 1/96 inch.
constexpr double kScreenDpi = 96.0;
constexpr double kTwipsPerInch = 1440.0;
// Inner spacing between a cell's border and its text, in screen pixels.
constexpr double kPadX = 3.0;
constexpr double kPadY = 1.0;
const QColor kLineColor(128, 128, 128);

double dpiX(const QPainter& p) {
    return p.device()->logicalDpiX();
}
double dpiY(const QPainter& p) {
    return p.device()->logicalDpiY();
}

bool isPaged(const QPainter& p) {
    return dynamic_cast<const QPagedPaintDevice*>(p.device()) != nullptr;
}

} // namespace

QList<double> cPrintLV::columnWidths(const QPainter& painter) const {
    const double sx = dpiX(painter) / kScreenDpi;
    QList<double> widths;
    double total = 0;
    for (const PrintColumn& col : m_table.columns) {
        widths.append(qMax(0, col.width) * sx);
        total += widths.last();
    }
    // A list stretched wide on the screen would run off the sheet: its widest columns give way
    // (all cut to one common width) until the table fits between equal margins, so the narrow
    // flag columns stay readable.
    const double available =
        painter.device()->width() - 2 * kLeftTwips * dpiX(painter) / kTwipsPerInch;
    if (total <= available || available <= 0)
        return widths;
    QList<double> sorted = widths;
    std::sort(sorted.begin(), sorted.end());
    double remaining = available;
    double cap = 0;
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        const double left = double(sorted.size() - i);
        if (sorted[i] * left > remaining) {
            cap = remaining / left;
            break;
        }
        remaining -= sorted[i];
    }
    for (double& w : widths)
        w = qMin(w, cap);
    return widths;
}

cPrintLV::cPrintLV(ErrorReporter& errors) : m_errors(errors) {
    Trap(m_errors, "cPrintLV -> Initialize", [&] {
        m_pen = QPen(kLineColor);
        m_pen.setWidthF(1.0);
        m_pen.setStyle(Qt::SolidLine);
    });
}

void cPrintLV::ListViewName(const PrintTable& table) {
    Trap(m_errors, "cPrintLV -> ListViewName", [&] { m_table = table; });
}

qint16 cPrintLV::PageCountFor(qint32 count, qint16 rows) {
    if (rows <= 0)
        throw KestrelError(11, QStringLiteral("Division by zero"));
    qint32 pages = count / rows;
    if (count % rows != 0 || pages == 0)
        ++pages;
    return qint16(qMin<qint32>(pages, 32767));
}

void cPrintLV::Set_Pages(qint32 count, qint16 rows) {
    Trap(m_errors, "cPrintLV -> Set_Pages", [&](Stmt& s) {
        s.at(1);
        m_pages = PageCountFor(count, rows);
        s.at(2);
        m_count = qMax<qint32>(count, 0);
        m_rows = rows;
        Set_Page(1);
    });
}

void cPrintLV::Set_Page(qint16 page) {
    Trap(m_errors, "cPrintLV -> Set_Page", [&] {
        m_first = (qint32(page) - 1) * m_rows + 1;
        m_last = qMin(m_first + m_rows - 1, m_count);
        m_next = m_last + 1;
    });
}

void cPrintLV::SetLine(QPainter& painter, int width, Qt::PenStyle style) {
    Trap(m_errors, "cPrintLV -> SetLine", [&] {
        // On the screen a line is one pixel wide; paper keeps the same physical width.
        const double scale = isPaged(painter) ? dpiX(painter) / kScreenDpi : 1.0;
        m_pen.setWidthF(qMax(1.0, width * scale));
        m_pen.setStyle(style);
        m_pen.setColor(kLineColor);
    });
}

void cPrintLV::drawCell(QPainter& painter, const QRectF& cell, const QString& text,
                        Qt::Alignment align) {
    const double padX = kPadX * dpiX(painter) / kScreenDpi;
    const QRectF inner = cell.adjusted(padX, 0, -padX, 0);
    const QString shown =
        painter.fontMetrics().elidedText(text, Qt::ElideRight, qMax(0, int(inner.width())));
    painter.drawText(inner, int(align | Qt::AlignVCenter | Qt::TextSingleLine), shown);
    const QPen textPen = painter.pen();
    painter.setPen(m_pen);
    painter.drawRect(cell);
    painter.setPen(textPen);
}

void cPrintLV::PrintHead(QPainter& painter) {
    Trap(m_errors, "cPrintLV -> PrintHead", [&](Stmt& s) {
        s.at(1);
        const QList<double> widths = columnWidths(painter);
        const double padY = kPadY * dpiY(painter) / kScreenDpi;
        const double height = painter.fontMetrics().height() + 2 * padY;
        double x = kLeftTwips * dpiX(painter) / kTwipsPerInch;
        const double y = kTopTwips * dpiY(painter) / kTwipsPerInch;
        s.at(2);
        for (qsizetype c = 0; c < m_table.columns.size(); ++c) {
            const PrintColumn& col = m_table.columns[c];
            const QRectF cell(x, y, widths[c], height);
            drawCell(painter, cell, col.caption, col.align);
            x += cell.width();
        }
        m_y = y + height;
    });
}

void cPrintLV::PrintBody(QPainter& painter) {
    Trap(m_errors, "cPrintLV -> PrintBody", [&](Stmt& s) {
        s.at(1);
        painter.save();
        QFont font = painter.font();
        font.setFamily(m_table.font.family());
        font.setPointSizeF(m_table.font.pointSizeF() > 0 ? m_table.font.pointSizeF() : 8.0);
        painter.setFont(font);
        const QList<double> widths = columnWidths(painter);
        const double padY = kPadY * dpiY(painter) / kScreenDpi;
        const double height = painter.fontMetrics().height() + 2 * padY;
        if (m_y <= 0)
            m_y = kTopTwips * dpiY(painter) / kTwipsPerInch;
        // Paper starts the rows one empty line below the captions.
        if (isPaged(painter))
            m_y += height;
        s.at(2);
        const qint32 last = qMin<qint32>(m_last, qint32(m_table.rows.size()));
        for (qint32 item = m_first; item <= last; ++item) {
            const PrintRow& row = m_table.rows[item - 1];
            double x = kLeftTwips * dpiX(painter) / kTwipsPerInch;
            for (qsizetype c = 0; c < m_table.columns.size(); ++c) {
                const PrintColumn& col = m_table.columns[c];
                const QRectF cell(x, m_y, widths[c], height);
                const PrintCell blank;
                const PrintCell& data = c < row.size() ? row[c] : blank;
                QFont cellFont = font;
                cellFont.setBold(data.bold);
                painter.setFont(cellFont);
                painter.setPen(data.color);
                drawCell(painter, cell, data.text, col.align);
                x += cell.width();
            }
            m_y += height;
        }
        painter.restore();
    });
}

} // namespace kestrel
