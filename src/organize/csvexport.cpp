// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvexport.h"

#include "core/csvreader.h"
#include "csvimport.h"

namespace kestrel {

namespace {

// One line per record: each field's text, a description quoted where spreadsheets need it.
template <typename Rec, typename Text>
QString csvLine(const QList<CsvTargetField>& fields, const Rec& rec, Text text) {
    QStringList cells;
    for (const CsvTargetField& f : fields)
        cells.append(CsvQuote((f.*text)(rec)));
    return cells.join(QLatin1Char(',')) + QLatin1Char('\n');
}

} // namespace

QByteArray BankCsv(const BankRec& bank) {
    const QList<CsvTargetField>& fields = CsvFields(CsvMode::Bank);
    QString text = CsvHeader(CsvMode::Bank) + QLatin1Char('\n');
    for (int c = 1; c <= ChansPerBank; ++c)
        text += csvLine(fields, bank.Chans[c], &CsvTargetField::channelText);
    return text.toUtf8();
}

QByteArray SearchCsv(const ProfileRec& profile) {
    const QList<CsvTargetField>& fields = CsvFields(CsvMode::Search);
    QString text = CsvHeader(CsvMode::Search) + QLatin1Char('\n');
    for (int i = 1; i <= SearchCount; ++i)
        text += csvLine(fields, profile.Searches[i], &CsvTargetField::rangeText);
    return text.toUtf8();
}

bool SaveCsvFile(AppContext& ctx, const QByteArray& bytes, const QString& path) {
    QString reason;
    if (ctx.writer().writeOutput(path, bytes, &reason))
        return true;
    ctx.noteWriteFailure(path, reason);
    return false;
}

} // namespace kestrel
