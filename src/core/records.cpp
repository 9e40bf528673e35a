// SPDX-License-Identifier: GPL-3.0-or-later
#include "records.h"

#include "freq.h"

namespace kestrel {

namespace {

// Factory frequencies of channels 1..150, MHz with four decimals.
constexpr const char* kFactoryMHz[150] = {
    "40.5000",  "52.5250",  "121.5000", "122.0000", "122.2000", "122.7000", "122.7500", "122.8000",
    "122.9000", "122.9500", "123.0000", "123.1000", "123.4500", "131.4500", "131.6750", "146.5200",
    "146.7600", "146.8800", "146.9400", "148.1500", "151.6250", "151.9550", "154.0100", "154.0700",
    "154.1300", "154.1450", "154.1600", "154.1750", "154.1900", "154.2050", "154.2200", "154.2350",
    "154.2500", "154.2650", "154.2800", "154.2950", "154.3100", "154.3250", "154.3400", "154.3550",
    "154.3700", "154.3850", "154.4000", "154.4150", "154.4300", "154.4450", "154.5700", "154.6000",
    "155.1600", "155.1750", "155.2050", "155.2200", "155.2350", "155.2650", "155.2800", "155.2950",
    "155.3250", "155.3400", "155.3550", "155.3700", "155.3850", "155.4000", "155.4750", "156.4250",
    "156.4500", "156.4750", "156.5750", "156.6250", "156.8000", "156.9250", "157.0500", "157.1000",
    "157.1250", "157.4250", "162.3000", "163.2000", "415.2000", "415.7000", "446.0000", "450.8000",
    "454.0000", "460.0250", "460.0500", "460.0750", "460.1000", "460.1250", "460.1500", "460.1750",
    "460.2000", "460.2250", "460.2500", "460.2750", "460.3000", "460.3250", "460.3500", "460.3750",
    "460.4000", "460.4250", "460.4500", "460.4750", "460.5000", "460.5250", "460.5500", "460.5750",
    "460.6000", "460.6250", "460.6500", "460.7000", "460.7500", "460.8000", "460.8500", "460.9000",
    "460.9250", "460.9500", "460.9750", "462.5500", "462.5625", "462.5750", "462.5875", "462.6000",
    "462.6125", "462.6250", "462.6375", "462.6500", "462.6625", "462.6750", "462.6875", "462.7000",
    "462.7125", "462.7250", "462.9500", "462.9750", "464.5000", "464.5500", "464.8750", "467.0625",
    "467.5625", "467.5875", "467.6125", "467.6375", "467.6625", "467.6875", "467.7125", "467.7625",
    "467.8125", "467.8500", "467.8750", "467.9000", "469.5000", "469.5500",
};

constexpr const char* kFactorySearch[SearchCount + 1] = {
    "000.000,000.000,Edit-Me",     "025.000,027.995,Search #1",   "028.000,029.695,Search #2",
    "029.700,049.995,Search #3",   "050.000,054.000,Search #4",   "137.000,143.995,Search #5",
    "144.000,147.995,Search #6",   "406.000,419.99375,Search #7", "420.000,449.99375,Search #8",
    "450.000,469.99375,Search #9", "806.000,956.000,Search #10",
};

const QChar kComma = QLatin1Char(',');

} // namespace

void SetDefChans(DefChansTable& table) {
    table[0] = QStringLiteral("0000.000,Edit-Me,False,False,True");
    for (int n = 1; n <= 150; ++n) {
        // Four integer digits: "0040.5000".
        const QString mhz = QString::fromLatin1(kFactoryMHz[n - 1]);
        table[n] = mhz.rightJustified(9, QLatin1Char('0')) + QStringLiteral(",Chan #") + Num3(n) +
                   QStringLiteral(",False,False,False");
    }
    for (int n = 151; n <= ChannelCount; ++n)
        table[n] =
            QStringLiteral("0000.000,Chan #") + Num3(n) + QStringLiteral(",False,False,True");
}

void SetDefSearch(DefSearchTable& table) {
    for (int i = 0; i <= SearchCount; ++i)
        table[i] = QString::fromLatin1(kFactorySearch[i]);
}

namespace {

// Splits a line at every comma into exactly N fields; false when the count differs.
template <int N> bool splitFields(QStringView line, std::array<QStringView, N>& f) {
    int count = 0;
    qsizetype from = 0;
    while (true) {
        const qsizetype comma = line.indexOf(kComma, from);
        if (count == N)
            return false;
        if (comma < 0) {
            f[count++] = line.sliced(from);
            return count == N;
        }
        f[count++] = line.sliced(from, comma - from);
        from = comma + 1;
    }
}

template <int N>
std::array<QStringView, N> fieldsOrFallback(QStringView line, QStringView fallback) {
    std::array<QStringView, N> f{};
    if (!splitFields<N>(line, f) && !splitFields<N>(fallback, f))
        f = {};
    return f;
}

} // namespace

void ParseChannelLine(ChannelRec& rec, QStringView line, QStringView fallback) {
    const auto f = fieldsOrFallback<5>(line, fallback);
    rec.Freq = FreqToDouble(f[0]);
    rec.Desc = f[1].toString();
    rec.Priority = Validate_Bool(f[2], false);
    rec.Delay = Validate_Bool(f[3], false);
    rec.Lockout = Validate_Bool(f[4], false);
    rec.Mark = 0;
}

void ParseSearchLine(SearchRec& rec, QStringView line, QStringView fallback) {
    const auto f = fieldsOrFallback<3>(line, fallback);
    rec.Lower = FreqToDouble(f[0]);
    rec.Upper = FreqToDouble(f[1]);
    rec.Desc = f[2].toString();
    rec.Mark = 0;
}

QString ChannelLine(const ChannelRec& rec) {
    return FreqToString(rec.Freq) + kComma + rec.Desc + kComma + BoolToString(rec.Priority) +
           kComma + BoolToString(rec.Delay) + kComma + BoolToString(rec.Lockout);
}

QString SearchLine(const SearchRec& rec) {
    return FreqToString(rec.Lower) + kComma + FreqToString(rec.Upper) + kComma + rec.Desc;
}

} // namespace kestrel
