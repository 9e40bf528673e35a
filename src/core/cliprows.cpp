// SPDX-License-Identifier: GPL-3.0-or-later
#include "cliprows.h"

#include "entry.h"
#include "freq.h"

#include <QStringList>

#include <cmath>

namespace kestrel {

namespace {

const QChar kTab = QLatin1Char('\t');

bool refuse(QString* reason, int line, const QString& why) {
    if (reason)
        *reason = QStringLiteral("Line %1: %2").arg(line).arg(why);
    return false;
}

// The fields of one line: split at tabs when it has any (spreadsheets), else at commas. A
// spreadsheet of a decimal-comma locale writes "146,52": with tabs as separators that comma
// can only be the decimal one.
QStringList fieldsOf(QStringView line, bool tabs) {
    QStringList fields;
    for (QStringView f : line.split(tabs ? kTab : QLatin1Char(','))) {
        QString field = f.trimmed().toString();
        if (field.size() >= 2 && field.startsWith(QLatin1Char('"')) &&
            field.endsWith(QLatin1Char('"')))
            field = field.mid(1, field.size() - 2)
                        .replace(QStringLiteral("\"\""), QStringLiteral("\""));
        fields << field;
    }
    return fields;
}

std::optional<double> freqField(QString text, bool tabs, QString* why) {
    if (tabs && text.count(QLatin1Char(',')) == 1 && !text.contains(QLatin1Char('.')))
        text.replace(QLatin1Char(','), QLatin1Char('.'));
    // Whole hertz, as the files keep them: "146.537500" is 146537500 Hz, not a hair off it.
    const std::optional<double> hz = TypedFreq(text, why);
    return hz ? std::optional<double>(std::round(*hz)) : std::nullopt;
}

std::optional<bool> flagField(const QString& text, const char* name, QString* why) {
    const QString t = text.toLower();
    if (t == u"true" || t == u"t" || t == u"1" || t == u"yes")
        return true;
    if (t == u"false" || t == u"f" || t == u"0" || t == u"no")
        return false;
    if (why)
        *why = QString::fromLatin1(name) + QStringLiteral(" must be True or False, not \"") + text +
               QLatin1Char('"');
    return std::nullopt;
}

// The non-blank lines with their numbers (1-based, as the user counts them).
QList<std::pair<int, QStringView>> linesOf(QStringView text) {
    QList<std::pair<int, QStringView>> lines;
    int number = 0;
    for (QStringView line : text.split(QLatin1Char('\n'))) {
        ++number;
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        if (!line.trimmed().isEmpty())
            lines.append({number, line});
    }
    return lines;
}

bool isCaption(const QString& field, std::initializer_list<const char*> captions) {
    for (const char* c : captions)
        if (field.compare(QLatin1StringView(c), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

} // namespace

QString ChannelRowsText(const QList<ChannelRec>& rows) {
    QString text;
    for (const ChannelRec& r : rows)
        text += QStringList{FreqToString(r.Freq), r.Desc, BoolToString(r.Delay),
                            BoolToString(r.Priority), BoolToString(r.Lockout)}
                    .join(kTab) +
                QLatin1Char('\n');
    return text;
}

QString SearchRowsText(const QList<SearchRec>& rows) {
    QString text;
    for (const SearchRec& r : rows)
        text += QStringList{FreqToString(r.Lower), FreqToString(r.Upper), r.Desc}.join(kTab) +
                QLatin1Char('\n');
    return text;
}

std::optional<QList<ChannelRow>> ParseChannelRows(QStringView text, QString* reason) {
    QList<ChannelRow> rows;
    const auto lines = linesOf(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto& [number, line] = lines[i];
        const bool tabs = line.contains(kTab);
        const QStringList f = fieldsOf(line, tabs);
        if (i == 0 && isCaption(f[0], {"Frequency", "Freq"}))
            continue;
        if (f.size() > 5)
            return refuse(reason, number,
                          QStringLiteral("a channel row has at most 5 fields (frequency, "
                                         "description, Delay, Priority, L/Out), this one %1")
                              .arg(f.size())),
                   std::nullopt;
        QString why;
        ChannelRow row;
        const std::optional<double> freq = freqField(f[0], tabs, &why);
        if (!freq)
            return refuse(reason, number, why), std::nullopt;
        row.freq = *freq;
        if (f.size() > 1) {
            if (!CheckTypedDesc(f[1], &why))
                return refuse(reason, number, why), std::nullopt;
            row.desc = f[1];
        }
        std::optional<bool>* flags[] = {&row.delay, &row.priority, &row.lockout};
        const char* names[] = {"Delay", "Priority", "L/Out"};
        for (int k = 0; k < 3 && k + 2 < f.size(); ++k) {
            *flags[k] = flagField(f[k + 2], names[k], &why);
            if (!*flags[k])
                return refuse(reason, number, why), std::nullopt;
        }
        rows << row;
    }
    if (rows.isEmpty()) {
        if (reason)
            *reason = QStringLiteral("The clipboard holds no channel rows.");
        return std::nullopt;
    }
    return rows;
}

std::optional<QList<SearchRow>> ParseSearchRows(QStringView text, QString* reason) {
    QList<SearchRow> rows;
    const auto lines = linesOf(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto& [number, line] = lines[i];
        const bool tabs = line.contains(kTab);
        const QStringList f = fieldsOf(line, tabs);
        if (i == 0 && isCaption(f[0], {"Lower Frequency", "Lower"}))
            continue;
        if (f.size() > 3)
            return refuse(reason, number,
                          QStringLiteral("a search row has at most 3 fields (lower, upper, "
                                         "description), this one %1")
                              .arg(f.size())),
                   std::nullopt;
        QString why;
        SearchRow row;
        const std::optional<double> lower = freqField(f[0], tabs, &why);
        if (!lower)
            return refuse(reason, number, why), std::nullopt;
        row.lower = *lower;
        if (f.size() > 1) {
            row.upper = freqField(f[1], tabs, &why);
            if (!row.upper)
                return refuse(reason, number, why), std::nullopt;
        }
        if (f.size() > 2) {
            if (!CheckTypedDesc(f[2], &why))
                return refuse(reason, number, why), std::nullopt;
            row.desc = f[2];
        }
        rows << row;
    }
    if (rows.isEmpty()) {
        if (reason)
            *reason = QStringLiteral("The clipboard holds no search rows.");
        return std::nullopt;
    }
    return rows;
}

void ApplyChannelRow(ChannelRec& rec, const ChannelRow& row) {
    rec.Freq = row.freq;
    if (row.desc)
        rec.Desc = *row.desc;
    if (row.freq > 0 && rec.Lockout) {
        rec.Lockout = false;
        rec.Delay = true;
    } else if (row.freq == 0) {
        rec.Lockout = true;
        rec.Delay = false;
    }
    if (row.delay)
        rec.Delay = *row.delay;
    if (row.priority)
        rec.Priority = *row.priority;
    if (row.lockout)
        rec.Lockout = *row.lockout;
    rec.Mark = 0;
    rec.Imported = false;
    rec.Mode = 0;
    rec.ModeAux = 0;
}

void ApplySearchRow(SearchRec& rec, const SearchRow& row) {
    rec.Lower = row.lower;
    if (row.upper)
        rec.Upper = *row.upper;
    if (row.desc)
        rec.Desc = *row.desc;
    rec.Mark = 0;
}

} // namespace kestrel
