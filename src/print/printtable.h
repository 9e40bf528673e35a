// SPDX-License-Identifier: GPL-3.0-or-later
// The table a list printer draws: column captions, widths and alignment, and the rows of cell
// texts with their colours, as a plain value. Windows fill it from their list views, the command
// line from the records.
#pragma once

#include "core/records.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QString>

namespace kestrel {

struct PrintColumn {
    QString caption;
    int width = 80; // screen pixels at 96 dots per inch, as the list shows the column
    Qt::Alignment align = Qt::AlignLeft;
};

struct PrintCell {
    QString text;
    QColor color = Qt::black;
    bool bold = false;
};

using PrintRow = QList<PrintCell>;

struct PrintTable {
    QList<PrintColumn> columns;
    QList<PrintRow> rows;
    QFont font = DefaultListFont(); // the list's own font; the body is drawn in it

    static QFont DefaultListFont();
    void addRow(const QStringList& texts);
};

// The same rows as the main window's lists: a bank's 20 channels, the 10 search ranges, and all
// 200 channels of a profile.
PrintTable BankTable(const ProfileRec& profile, int bank);
PrintTable SearchTable(const ProfileRec& profile);
PrintTable AllChannelsTable(const ProfileRec& profile);

// Column captions and widths of the channel and search lists as the main window shows them (the
// number column has no caption, every text is left-aligned).
QList<PrintColumn> ChannelColumns();
QList<PrintColumn> SearchColumns();

} // namespace kestrel
