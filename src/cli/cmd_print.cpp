// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl print: lays out a bank, the search ranges or all channels of a profile into a PDF,
// page for page as the print preview shows them.
#include "cli.h"

#include "core/files.h"
#include "print/printpage.h"

#include <QBuffer>
#include <QRegularExpression>

namespace kestrel::cli {

namespace {

// "A-B" or "A", within 1..pages.
std::pair<qint16, qint16> parsePages(const QString& text, int pages) {
    static const QRegularExpression form(QStringLiteral("^\\s*(\\d+)\\s*(?:-\\s*(\\d+)\\s*)?$"));
    const QRegularExpressionMatch m = form.match(text);
    if (!m.hasMatch())
        throw UsageError("--pages takes a page range such as 2-3");
    const int from = m.captured(1).toInt();
    const int to = m.captured(2).isEmpty() ? from : m.captured(2).toInt();
    if (from < 1 || to < from || to > pages)
        throw UsageError(
            qPrintable(QStringLiteral("--pages must lie within 1-") + QString::number(pages)));
    return {qint16(from), qint16(to)};
}

int run(Env& env, const Args& args) {
    const QString output = args.value(QStringLiteral("o"));
    if (output.isEmpty())
        throw UsageError("give the PDF file to write with -o FILE.pdf");
    const auto [ctx, profile, target] = env.select(args, true);
    PrintTable table;
    QString title;
    switch (target.kind) {
    case ProfilePart::Bank:
        table = BankTable(profile, target.bank);
        title = profile.Banks[target.bank].FileName;
        break;
    case ProfilePart::Search:
        table = SearchTable(profile);
        title = profile.SrchName;
        break;
    case ProfilePart::AllBanks:
        table = AllChannelsTable(profile);
        title = QStringLiteral("All Channels For ") + profile.Name;
        break;
    }
    const int pages = cPrintLV::PageCountFor(qint32(table.rows.size()), kListMaxRows);
    auto [from, to] = args.has(QStringLiteral("pages"))
                          ? parsePages(args.value(QStringLiteral("pages")), pages)
                          : std::pair<qint16, qint16>{1, qint16(pages)};

    // Laid out in memory, then written: "-", a FIFO or a device as a stream, a file atomically.
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    WritePdf(pdf, ctx.errors, table, title, kListMaxRows, from, to, QDateTime::currentDateTime());
    QString reason;
    if (!ctx.writer().writeOutput(output, pdf.data(), &reason)) {
        err(QStringLiteral("kestrelctl print: cannot write ") + output + QStringLiteral(": ") +
            reason);
        return Failure;
    }
    if (output == QLatin1String("-"))
        return env.finish(); // standard output holds the PDF only
    out(QStringLiteral("printed pages ") + QString::number(from) + QLatin1Char('-') +
        QString::number(to) + QStringLiteral(" of ") + QString::number(pages) +
        QStringLiteral(" to ") + output);
    return env.finish();
}

const CommandRegistration reg({"print",
                               nullptr,
                               "Lay out a bank, the search ranges or every channel into a PDF",
                               targetOptions(true) +
                                   QList<Option>{{"o", "FILE.pdf", "The PDF file to write"},
                                                 {"pages", "A-B", "Only pages A to B"}},
                               {},
                               run,
                               true});

} // namespace
} // namespace kestrel::cli
