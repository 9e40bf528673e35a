// SPDX-License-Identifier: GPL-3.0-or-later
// Shared by the link tests: a memory image worth uploading, a quick simulated scanner, and a port
// table that answers COMAvailable without touching the system.
#pragma once

#include "link/linkport.h"
#include "link/scannersim.h"

#include "core/appcontext.h"

#include <QMap>

namespace kestrel::test {

// Fills every channel and range of the current profile with distinct values: frequencies on
// the 6.25 kHz raster (so rounding matters), the three switches cycling through all eight
// combinations.
inline void fillProfile(AppContext& ctx) {
    ProfileRec& p = ctx.cur();
    for (int b = 1; b <= BankCount; ++b) {
        for (int c = 1; c <= ChansPerBank; ++c) {
            const int n = ChannelNumber(b, c);
            ChannelRec& rec = p.Banks[b].Chans[c];
            rec.Freq = n % 17 == 0 ? 0.0 : 136'000'000.0 + n * 1'006'250.0;
            rec.Desc = QStringLiteral("Ch %1").arg(n);
            rec.Delay = n & 1;
            rec.Priority = n & 2;
            rec.Lockout = n & 4;
        }
    }
    for (int r = 1; r <= SearchCount; ++r) {
        p.Searches[r].Lower = r == 4 ? 0.0 : 25'000'000.0 + r * 10'000'000.0;
        p.Searches[r].Upper = r == 4 ? 0.0 : 30'000'000.0 + r * 10'000'000.0;
        p.Searches[r].Desc = QStringLiteral("Search %1").arg(r);
    }
}

// A simulated scanner whose bytes take no time on the line.
inline ScannerSimulator::Options instantScanner(int cable = 3, int stopAfter = -1) {
    ScannerSimulator::Options o;
    o.cable = cable;
    o.stopAfter = stopAfter;
    o.wireScale = 0;
    return o;
}

// A fixed table of devices and what a probe of each finds.
class TablePortProbe : public PortProbe {
public:
    explicit TablePortProbe(QMap<QString, PortFailure> table) : m_table(std::move(table)) {}
    PortState probe(const QString& device) override {
        PortState s;
        s.failure = m_table.value(device, PortFailure::Missing);
        if (s.ok()) {
            s.baudRate = 4800;
            s.byteSize = 7;
            s.parity = 'e';
            s.flags = 0x1011;
        }
        ++probes;
        return s;
    }
    int probes = 0;

private:
    QMap<QString, PortFailure> m_table;
};

} // namespace kestrel::test
