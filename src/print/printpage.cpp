// SPDX-License-Identifier: GPL-3.0-or-later
#include "printpage.h"

#include "core/errors.h"

#include <QLocale>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>

namespace kestrel {

namespace {

constexpr double kTwipsPerInch = 1440.0;

int twipsX(const QPainter& p, int twips) {
    return qRound(twips * p.device()->logicalDpiX() / kTwipsPerInch);
}
int twipsY(const QPainter& p, int twips) {
    return qRound(twips * p.device()->logicalDpiY() / kTwipsPerInch);
}

// Text whose top left corner sits at (x, y) twips.
void textAt(QPainter& p, int x, int y, const QString& text) {
    const QPoint at(twipsX(p, x), twipsY(p, y));
    p.drawText(at + QPoint(0, p.fontMetrics().ascent()), text);
}

} // namespace

QPageSize LocalePaper(const QLocale& locale) {
    // The countries where Letter is the paper in the shops; everywhere else it is A4.
    static const QLocale::Territory letter[] = {
        QLocale::UnitedStates, QLocale::Canada,    QLocale::Mexico,     QLocale::Philippines,
        QLocale::Chile,        QLocale::Colombia,  QLocale::Venezuela,  QLocale::CostaRica,
        QLocale::Guatemala,    QLocale::Panama,    QLocale::PuertoRico, QLocale::DominicanRepublic,
        QLocale::ElSalvador,   QLocale::Nicaragua, QLocale::Belize};
    for (const QLocale::Territory t : letter)
        if (locale.territory() == t)
            return QPageSize(QPageSize::Letter);
    return QPageSize(QPageSize::A4);
}

QPageLayout DefaultPageLayout(const QPageSize& paper) {
    return QPageLayout(paper.isValid() ? paper : LocalePaper(QLocale::system()),
                       QPageLayout::Portrait, QMarginsF(0.25, 0.25, 0.25, 0.25), QPageLayout::Inch);
}

QSize PageSizeTwips() {
    const QRectF inches = DefaultPageLayout().paintRect(QPageLayout::Inch);
    return QSize(qRound(inches.width() * kTwipsPerInch), qRound(inches.height() * kTwipsPerInch));
}

QString PageNumberText(int page, int pageCount) {
    return QStringLiteral("Page: ") + QString::number(page) + QStringLiteral(" of ") +
           QString::number(pageCount);
}

QString DateText(const QDate& date) {
    return QStringLiteral("Date: ") + date.toString(QStringLiteral("MM-dd-yyyy"));
}

QString TimeText(const QTime& time) {
    // The long form carries the seconds; a time-zone name has no place on the page.
    QString format = QLocale::system().timeFormat(QLocale::LongFormat);
    format.remove(QRegularExpression(QStringLiteral("\\s*t+")));
    return QStringLiteral("Time: ") + QLocale::system().toString(time, format.trimmed());
}

void DrawPage(QPainter& painter, cPrintLV& list, qint16 page, const QString& title,
              const QDateTime& now) {
    list.Set_Page(page);
    if (dynamic_cast<QPagedPaintDevice*>(painter.device()) == nullptr)
        painter.fillRect(QRect(0, 0, painter.device()->width(), painter.device()->height()),
                         Qt::white);

    painter.setPen(QColor(0, 0, 255));
    painter.setFont(QFont(QStringLiteral("Times New Roman"), 12));
    textAt(painter, 360, 80, title);

    painter.setPen(Qt::black);
    QFont head(QStringLiteral("MS SANS SERIF"), 10);
    painter.setFont(head);
    list.SetLine(painter, 1, Qt::SolidLine);
    list.PrintHead(painter);
    head.setPointSize(9);
    painter.setFont(head);
    list.PrintBody(painter);

    // Date, time and page number in the list's own font, as the body left the surface.
    painter.setPen(Qt::black);
    QFont body = head;
    body.setFamily(list.table().font.family());
    if (list.table().font.pointSizeF() > 0)
        body.setPointSizeF(list.table().font.pointSizeF());
    painter.setFont(body);
    textAt(painter, 5200, 100, DateText(now.date()));
    textAt(painter, 6900, 100, TimeText(now.time()));
    textAt(painter, 9800, 100, PageNumberText(page, list.pageCount()));
}

void PrintPageRange(QPagedPaintDevice& device, cPrintLV& list, const QString& title, qint16 from,
                    qint16 to, const QDateTime& now, const std::function<void(qint16)>& onPage) {
    QPainter painter;
    if (!painter.begin(&device))
        throw KestrelError(err::FileIO, QStringLiteral("Printer not ready"));
    for (qint16 page = from; page <= to; ++page) {
        if (onPage)
            onPage(page);
        if (page > from && !device.newPage())
            throw KestrelError(err::FileIO, QStringLiteral("Cannot start a new page"));
        DrawPage(painter, list, page, title, now);
    }
    if (!painter.end())
        throw KestrelError(err::FileIO, QStringLiteral("Printer error"));
}

void WritePdf(QIODevice& out, ErrorReporter& errors, const PrintTable& table, const QString& title,
              qint16 rowsPerPage, qint16 from, qint16 to, const QDateTime& now) {
    cPrintLV list(errors);
    list.ListViewName(table);
    list.Set_Pages(qint32(table.rows.size()), rowsPerPage);
    QPdfWriter pdf(&out);
    pdf.setPageLayout(DefaultPageLayout());
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("Kestrel Manager"));
    PrintPageRange(pdf, list, title, from, to, now);
}

} // namespace kestrel
