// SPDX-License-Identifier: GPL-3.0-or-later
// What the Compare command shows of the talk groups it collected: the list's columns and rows,
// the text copied to the clipboard and the CSV file saved from it.
#pragma once

#include "import/rrconvert.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace kestrel {

// "Decimal ID", "Description", "Alpha Tag", "Tag", "Mode".
QStringList TalkgroupColumns();
// One row per collected talk group, in the columns' order.
QList<QStringList> TalkgroupRows(const GroupIdList& list);
// The columns' names, then each row: tab-separated lines, as a spreadsheet takes a paste.
QString TalkgroupText(const QList<QStringList>& rows);
// The same as CSV: the header line, then each row, fields quoted where needed, LF line ends.
QByteArray TalkgroupCsv(const QList<QStringList>& rows);

} // namespace kestrel
