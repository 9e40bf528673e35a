// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvexport.h"

#include "core/freq.h"

#include <QSaveFile>

namespace kestrel {

namespace {

QString field(QString text) {
    return text.replace(QLatin1Char(','), QLatin1Char(';'));
}

QString mhz(double hz) {
    // Always six decimals: the import reads the digits without the point as hertz.
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
    QSaveFile f(path);
    if (f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size() && f.commit())
        return true;
    ctx.failedWrites.append(path);
    return false;
}

} // namespace kestrel
