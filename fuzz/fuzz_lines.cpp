// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary text to the channel and search line parsers and the validators.
#include "core/freq.h"
#include "core/records.h"

#include <cstddef>
#include <cstdint>

using namespace kestrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    static DefChansTable chans = [] {
        DefChansTable t;
        SetDefChans(t);
        return t;
    }();
    ChannelRec ch;
    ParseChannelLine(ch, text, chans[7]);
    if (ch.Freq != 0 && (ch.Freq < kBandLowHz || ch.Freq > kBandHighHz))
        __builtin_trap();
    // A parsed channel written and read again is the same channel, unless its description
    // holds a comma (then the line no longer splits into five fields).
    if (!ch.Desc.contains(QLatin1Char(','))) {
        ChannelRec again;
        ParseChannelLine(again, ChannelLine(ch), chans[7]);
        if (again.Desc != ch.Desc || again.Priority != ch.Priority || again.Delay != ch.Delay ||
            again.Lockout != ch.Lockout)
            __builtin_trap();
    }
    SearchRec sr;
    ParseSearchLine(sr, text, QStringLiteral("025.000,027.995,Search #1"));
    (void)FreqToString(FreqToDouble(text));
    const qint16 v = Validate_Int(text, 7, -5, 10);
    if (v < -5 || v > 10)
        __builtin_trap();
    (void)Validate_Long(text, 0, -1000000, 1000000);
    (void)Validate_Byte(text, 0, 0, 255);
    (void)Validate_Dbl(text, 0, -1, 1);
    (void)ValidateFName(text);
    return 0;
}
