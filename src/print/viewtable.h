// SPDX-License-Identifier: GPL-3.0-or-later
// Takes what a list on screen shows (captions, column widths and alignment, cell texts with their
// colour and boldness, the list's font) into the plain table the list printer draws.
#pragma once

#include "printtable.h"

class QAbstractItemView;

namespace kestrel {

// Works with tree views (report-style lists) and table views; hidden columns are left out.
PrintTable TableFromView(const QAbstractItemView& view);

} // namespace kestrel
