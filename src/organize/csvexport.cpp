// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvexport.h"

#include "core/csvreader.h"
#include "core/freq.h"

namespace kestrel {

namespace {

QString field(const QString& text) {
    return CsvQuote(text);
}

QString mhz(double hz) {
    // Six decimals, as the files write frequencies.
    const double f = ValidateFreq(hz);
    return f == 0 ? FreqToString(0) : QString::number(qRound64(f) / 1e6, 'f', 6);
}

} // namespace

QByteArray BankCsv(const BankRec& bank) {
    QString text = QString::fromLatin1(kCsvBankHeader) + QLatin1Char('\n');
    for (int c = 1; c <= ChansPerBank; ++c) {
        const ChannelRec& ch = bank.Chans[c];
        text += field(ch.Desc) + QLatin1Char(',') + mhz(ch.Freq) + QLatin1Char(',') +
                BoolToString(ch.Delay) + QLatin1Char(',') + BoolToString(ch.Lockout) +
                QLatin1Char(',') + BoolToString(ch.Priority) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

QByteArray SearchCsv(const ProfileRec& profile) {
    QString text = QString::fromLatin1(kCsvSearchHeader) + QLatin1Char('\n');
    for (int i = 1; i <= SearchCount; ++i) {
        const SearchRec& r = profile.Searches[i];
        text += field(r.Desc) + QLatin1Char(',') + mhz(r.Lower) + QLatin1Char(',') + mhz(r.Upper) +
                QLatin1Char('\n');
    }
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
