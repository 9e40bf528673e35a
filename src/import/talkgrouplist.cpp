// SPDX-License-Identifier: GPL-3.0-or-later
#include "talkgrouplist.h"

#include "core/csvreader.h"

namespace kestrel {

QStringList TalkgroupColumns() {
    return {QStringLiteral("Decimal ID"), QStringLiteral("Description"),
            QStringLiteral("Alpha Tag"), QStringLiteral("Tag"), QStringLiteral("Mode")};
}

QList<QStringList> TalkgroupRows(const GroupIdList& list) {
    QList<QStringList> rows;
    // Entry 0 is never filled.
    for (qsizetype i = 1; i < list.GroupIds.size(); ++i) {
        const TypGroupId& g = list.GroupIds[i];
        rows.append({QString::number(g.TgDec), g.Desc, g.Alpha, g.Tag, g.Mode});
    }
    return rows;
}

QString TalkgroupText(const QList<QStringList>& rows) {
    QString text = TalkgroupColumns().join(u'\t') + u'\n';
    for (const QStringList& row : rows)
        text += row.join(u'\t') + u'\n';
    return text;
}

QByteArray TalkgroupCsv(const QList<QStringList>& rows) {
    QByteArray bytes;
    for (const QStringList& row : QList<QStringList>{TalkgroupColumns()} + rows) {
        QStringList fields;
        for (const QString& f : row)
            fields.append(CsvQuote(f));
        bytes += fields.join(u',').toUtf8() + '\n';
    }
    return bytes;
}

} // namespace kestrel
