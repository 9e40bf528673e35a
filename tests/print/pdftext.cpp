// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdftext.h"

#include <QProcess>
#include <QRegularExpression>

namespace kestrel::test {

namespace {

QString run(const QStringList& args) {
    QProcess proc;
    proc.start(QStringLiteral("pdftotext"), args);
    if (!proc.waitForFinished(60000) || proc.exitCode() != 0)
        return {};
    return QString::fromUtf8(proc.readAllStandardOutput());
}

} // namespace

QString pdfText(const QString& path) {
    return run({QStringLiteral("-layout"), QStringLiteral("-enc"), QStringLiteral("UTF-8"), path,
                QStringLiteral("-")});
}

QStringList pdfPages(const QString& path) {
    QStringList pages = pdfText(path).split(QLatin1Char('\f'));
    // pdftotext ends the last page with a form feed as well.
    if (!pages.isEmpty() && pages.last().trimmed().isEmpty())
        pages.removeLast();
    return pages;
}

QList<PdfWord> pdfWords(const QString& path) {
    const QString html = run({QStringLiteral("-bbox"), QStringLiteral("-enc"),
                              QStringLiteral("UTF-8"), path, QStringLiteral("-")});
    static const QRegularExpression pageRe(QStringLiteral("<page |<word xMin=\"([\\d.]+)\" "
                                                          "yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" "
                                                          "yMax=\"([\\d.]+)\">([^<]*)</word>"));
    QList<PdfWord> words;
    int page = 0;
    for (auto it = pageRe.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        if (m.captured(0).startsWith(QStringLiteral("<page"))) {
            ++page;
            continue;
        }
        PdfWord w;
        w.page = page;
        w.box = QRectF(QPointF(m.captured(1).toDouble(), m.captured(2).toDouble()),
                       QPointF(m.captured(3).toDouble(), m.captured(4).toDouble()));
        w.text = m.captured(5)
                     .replace(QStringLiteral("&amp;"), QStringLiteral("&"))
                     .replace(QStringLiteral("&lt;"), QStringLiteral("<"))
                     .replace(QStringLiteral("&gt;"), QStringLiteral(">"))
                     .replace(QStringLiteral("&quot;"), QStringLiteral("\""));
        words.append(w);
    }
    return words;
}

} // namespace kestrel::test
