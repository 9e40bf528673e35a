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

namespace {

// What the two kinds of row share: a caption line first is skipped, a row with too many fields
// is refused, each row is read by `read` (false with `why` refuses it, naming its line) and no
// rows at all is refused.
struct RowKind {
    const char* caption;      // the first line's first field when it is a caption line,
    const char* shortCaption; // or this
    qsizetype maxFields;
    const char* fieldNames; // for the too-many-fields message
    const char* noun;       // "channel" or "search"
};

template <typename Row, typename Read>
std::optional<QList<Row>> parseRows(QStringView text, const RowKind& kind, QString* reason,
                                    Read read) {
    QList<Row> rows;
    const auto lines = linesOf(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto& [number, line] = lines[i];
        const bool tabs = line.contains(kTab);
        const QStringList f = fieldsOf(line, tabs);
        if (i == 0 && isCaption(f[0], {kind.caption, kind.shortCaption}))
            continue;
        if (f.size() > kind.maxFields)
            return refuse(reason, number,
                          QStringLiteral("a %1 row has at most %2 fields (%3), this one %4")
                              .arg(QLatin1StringView(kind.noun))
                              .arg(kind.maxFields)
                              .arg(QLatin1StringView(kind.fieldNames))
                              .arg(f.size())),
                   std::nullopt;
        QString why;
        Row row;
        if (!read(f, tabs, row, why))
            return refuse(reason, number, why), std::nullopt;
        rows << row;
    }
    if (rows.isEmpty()) {
        if (reason)
            *reason =
                QStringLiteral("The clipboard holds no %1 rows.").arg(QLatin1StringView(kind.noun));
        return std::nullopt;
    }
    return rows;
}

} // namespace

std::optional<QList<ChannelRow>> ParseChannelRows(QStringView text, QString* reason) {
    static const RowKind kind{"Frequency", "Freq", 5,
                              "frequency, description, Delay, Priority, L/Out", "channel"};
    return parseRows<ChannelRow>(
        text, kind, reason, [](const QStringList& f, bool tabs, ChannelRow& row, QString& why) {
            const std::optional<double> freq = freqField(f[0], tabs, &why);
            if (!freq)
                return false;
            row.freq = *freq;
            if (f.size() > 1) {
                if (!CheckTypedDesc(f[1], &why))
                    return false;
                row.desc = f[1];
            }
            std::optional<bool>* flags[] = {&row.delay, &row.priority, &row.lockout};
            const char* names[] = {"Delay", "Priority", "L/Out"};
            for (int k = 0; k < 3 && k + 2 < f.size(); ++k) {
                *flags[k] = flagField(f[k + 2], names[k], &why);
                if (!*flags[k])
                    return false;
            }
            return true;
        });
}

std::optional<QList<SearchRow>> ParseSearchRows(QStringView text, QString* reason) {
    static const RowKind kind{"Lower Frequency", "Lower", 3, "lower, upper, description", "search"};
    return parseRows<SearchRow>(text, kind, reason,
                                [](const QStringList& f, bool tabs, SearchRow& row, QString& why) {
                                    const std::optional<double> lower = freqField(f[0], tabs, &why);
                                    if (!lower)
                                        return false;
                                    row.lower = *lower;
                                    if (f.size() > 1) {
                                        row.upper = freqField(f[1], tabs, &why);
                                        if (!row.upper)
                                            return false;
                                    }
                                    if (f.size() > 2) {
                                        if (!CheckTypedDesc(f[2], &why))
                                            return false;
                                        row.desc = f[2];
                                    }
                                    return true;
                                });
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
    rec.Tone.clear();
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
