// SPDX-License-Identifier: GPL-3.0-or-later
// The fixed reference of common service bands shown on the main window's third panel, as text
// lines whose ranges and steps line up in columns when shown in a fixed-pitch font.
#pragma once

#include <QStringList>

namespace kestrel {

struct ServiceBand {
    const char* label; // "Air:"; empty for a further range of the entry above
    double lowMHz;
    double highMHz; // 0 for a single frequency
    double stepKHz; // 0 when no step is given
};

// List 1: air, marine, ham and weather bands; list 2: police and fire.
const QList<ServiceBand>& ServiceBandList(int list);
// The lines as shown: a heading line naming the "Step" column, then one line per band.
QStringList ServiceBandLines(int list);

} // namespace kestrel
