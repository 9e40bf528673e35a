// SPDX-License-Identifier: GPL-3.0-or-later
#include "chirpcsv.h"

#include "core/csvreader.h"
#include "core/entry.h"
#include "core/freq.h"
#include "core/prompts.h"
#include "csvimport.h"
#include "history/history.h"

#include <QList>
#include <bitset>

namespace kestrel {

namespace {

// What one row of a CHIRP file says about a channel, as its columns are read.
struct ChirpRow {
    int location = -1; // -1 when the text is not a number from 0
    double freq = 0;   // Hz, 0 when out of band
    QString name;
    QString comment;
    bool lockout = false;
    bool priority = false;
};

// Reads a column's text into the row; the reason when the text cannot be used.
using ChirpReader = QString (*)(ChirpRow&, const QString&);
// The text a column holds for a channel at a location.
using ChirpWriter = QString (*)(const ChannelRec&, int location);

struct ChirpColumn {
    const char* name;
    ChirpReader read;  // null: the import ignores the column
    ChirpWriter write; // null: the export writes `fixed`
    const char* fixed;
};

QString readLocation(ChirpRow& row, const QString& text) {
    bool ok = false;
    const int n = text.trimmed().toInt(&ok);
    row.location = ok && n >= 0 ? n : -1;
    return {};
}

QString readName(ChirpRow& row, const QString& text) {
    QString reason;
    row.name = text;
    return CheckDescLength(text, &reason) ? QString() : reason;
}

QString readFrequency(ChirpRow& row, const QString& text) {
    bool number = false;
    text.trimmed().toDouble(&number);
    if (!number)
        return QStringLiteral("the frequency \"") + text + QStringLiteral("\" is not a number");
    row.freq = FreqToDouble(text); // megahertz with any number of decimals
    return {};
}

QString readSkip(ChirpRow& row, const QString& text) {
    row.lockout = text.trimmed() == u"S";
    row.priority = text.trimmed() == u"P";
    return {};
}

QString readComment(ChirpRow& row, const QString& text) {
    row.comment = text;
    return {};
}

QString writeLocation(const ChannelRec&, int location) {
    return QString::number(location);
}

QString writeName(const ChannelRec& ch, int) {
    return ch.Desc;
}

QString writeFrequency(const ChannelRec& ch, int) {
    return QString::number(qRound64(ValidateFreq(ch.Freq)) / 1e6, 'f', 6);
}

QString writeMode(const ChannelRec& ch, int) {
    const bool air = ch.Freq >= 108e6 && ch.Freq <= 137e6;
    return air ? QStringLiteral("AM") : QStringLiteral("FM");
}

QString writeSkip(const ChannelRec& ch, int) {
    // One column holds both switches; a locked-out channel is not scanned at all.
    return ch.Lockout ? QStringLiteral("S") : ch.Priority ? QStringLiteral("P") : QString();
}

// The export writes these columns in this order; the import reads the ones with a reader,
// wherever the file's header puts them.
const ChirpColumn kColumns[] = {
    {"Location", readLocation, writeLocation, nullptr},
    {"Name", readName, writeName, nullptr},
    {"Frequency", readFrequency, writeFrequency, nullptr},
    {"Duplex", nullptr, nullptr, ""},
    {"Offset", nullptr, nullptr, "0.000000"},
    {"Tone", nullptr, nullptr, ""},
    {"rToneFreq", nullptr, nullptr, "88.5"},
    {"cToneFreq", nullptr, nullptr, "88.5"},
    {"DtcsCode", nullptr, nullptr, "023"},
    {"DtcsPolarity", nullptr, nullptr, "NN"},
    {"Mode", nullptr, writeMode, nullptr},
    {"TStep", nullptr, nullptr, "5.00"},
    {"Skip", readSkip, writeSkip, nullptr},
    {"Comment", readComment, nullptr, ""},
    {"URCALL", nullptr, nullptr, ""},
    {"RPT1CALL", nullptr, nullptr, ""},
    {"RPT2CALL", nullptr, nullptr, ""},
    {"DVCODE", nullptr, nullptr, ""},
};

[[noreturn]] void badRow(int line, const QString& why) {
    throw KestrelError(err::BadFileFormat, QStringLiteral("line ") + QString::number(line) +
                                               QStringLiteral(": ") + why +
                                               QStringLiteral("; nothing was imported"));
}

// The description: the name, with the comment after " - " when the whole still fits, made fit
// for the bank file.
QString description(const ChirpRow& row) {
    const QString both = row.name + QStringLiteral(" - ") + row.comment;
    return ImportedDesc(row.comment.isEmpty() || both.size() > kDescMax ? row.name : both);
}

} // namespace

bool IsChirpHeader(const QString& firstLine) {
    return firstLine.startsWith(QLatin1String(kChirpHeaderStart));
}

QString ChirpReport::text() const {
    return QString::number(imported) + QStringLiteral(" imported, ") + QString::number(outOfBand) +
           QStringLiteral(" skipped (out of band), ") + QString::number(leftOver) +
           QStringLiteral(" left over (bank full)");
}

namespace {

using Banks = decltype(ProfileRec::Banks);

// Reads the whole file into `staged` (the current profile's banks); throws, with the file's
// line and why, on the first row that cannot be used.
ChirpReport stage(int shownBank, const QString& path, ChirpPlacement placement, Banks& staged) {
    const bool byLocation = placement == ChirpPlacement::ByLocation;
    if (!byLocation && (shownBank < 1 || shownBank > BankCount))
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    CsvReader reader;
    if (!reader.open(path))
        throw KestrelError(err::FileNotFound, reader.error());
    const std::optional<QString> header = reader.readLine();
    if (!header || !IsChirpHeader(*header))
        throw KestrelError(err::BadFileFormat,
                           reader.error().isEmpty()
                               ? QStringLiteral("the file does not begin with CHIRP's header")
                               : reader.error());
    // Where each column the import reads stands in this file (-1: absent).
    const QStringList names = CsvSplit(*header);
    QList<qsizetype> at;
    for (const ChirpColumn& column : kColumns) {
        qsizetype k = -1;
        for (qsizetype i = 0; i < names.size() && k < 0; ++i)
            if (names[i].trimmed().compare(QLatin1String(column.name), Qt::CaseInsensitive) == 0)
                k = i;
        at.append(column.read ? k : -1);
    }

    std::bitset<ChannelCount> placed;
    ChirpReport report;
    int slot = 0;
    while (const std::optional<QString> line = reader.readLine()) {
        if (line->trimmed().isEmpty())
            continue;
        const int number = reader.lineNumber();
        QStringList fields;
        QString reason;
        if (!SplitCsvFields(*line, fields, &reason))
            badRow(number, reason);
        ChirpRow row;
        for (qsizetype c = 0; c < at.size(); ++c) {
            if (at[c] < 0)
                continue;
            reason = kColumns[c].read(row, fields.value(at[c]));
            if (!reason.isEmpty())
                badRow(number, reason);
        }
        if (byLocation && row.location < 0)
            badRow(number, QStringLiteral("the Location is not a number from 0"));
        if (row.freq == 0) {
            ++report.outOfBand;
            continue;
        }
        int bank = shownBank;
        int c = slot + 1;
        if (byLocation) {
            if (row.location >= ChannelCount) {
                ++report.leftOver;
                continue;
            }
            if (placed.test(size_t(row.location)))
                badRow(number, QStringLiteral("Location ") + QString::number(row.location) +
                                   QStringLiteral(" is given twice"));
            placed.set(size_t(row.location));
            bank = BankOfChannel(row.location + 1);
            c = row.location % ChansPerBank + 1;
        } else if (slot == ChansPerBank) {
            ++report.leftOver;
            continue;
        } else {
            ++slot;
        }
        ChannelRec& ch = staged[bank].Chans[c];
        ch.Freq = row.freq;
        ch.Desc = description(row);
        ch.Delay = false;
        ch.Lockout = row.lockout;
        ch.Priority = row.priority;
        ch.Mark = 0;
        staged[bank].Changed = true;
        ++report.imported;
    }
    if (!reader.error().isEmpty())
        throw KestrelError(err::BadFileFormat,
                           reader.error() + QStringLiteral("; nothing was imported"));
    return report;
}

} // namespace

std::optional<ChirpReport> ImportChirp(AppContext& ctx, qint16 p, int bank, const QString& path,
                                       ChirpPlacement placement) {
    return Trap(ctx.errors, "CsvImport -> ImportChirp", [&](Stmt& s) -> std::optional<ChirpReport> {
        s.at(1);
        const QString question = placement == ChirpPlacement::ByLocation
                                     ? QStringLiteral("Overwrite the channels the file's "
                                                      "Locations name, in every bank?")
                                     : QString::fromLatin1(kCsvOverwriteText);
        if (ctx.prompts().message(question, QString(), Icon::Question, Buttons::YesNo) !=
            Answer::Yes)
            return std::nullopt;
        s.at(2);
        // Built aside first: the profile changes only when every row could be used.
        if (p < 0 || p >= ProfileCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        ProfileRec& profile = ctx.Profiles[p];
        auto staged = profile.Banks;
        const ChirpReport report = stage(bank, path, placement, staged);
        s.at(3);
        ChangeStep step(ctx, QStringLiteral("CHIRP Import"), p,
                        quint8(placement == ChirpPlacement::ByLocation ? 1 : bank));
        profile.Banks = staged;
        if (report.imported > 0)
            profile.Changed = true;
        return report;
    });
}

QString ChirpProblem(const AppContext& ctx, qint16 p, int bank, const QString& path,
                     ChirpPlacement placement) {
    auto staged = ctx.Profiles[size_t(qBound(0, int(p), ProfileCount - 1))].Banks;
    try {
        stage(bank, path, placement, staged);
    } catch (const KestrelError& e) {
        return e.description();
    }
    return {};
}

QByteArray ChirpCsv(const BankRec& bank, int bankNumber) {
    QString text = QString::fromLatin1(kChirpHeader) + QLatin1Char('\n');
    for (int c = 1; c <= ChansPerBank; ++c) {
        const ChannelRec& ch = bank.Chans[c];
        if (ValidateFreq(ch.Freq) == 0)
            continue; // an empty channel is no memory of another radio
        const int location = ChannelNumber(bankNumber, c) - 1;
        QStringList fields;
        for (const ChirpColumn& column : kColumns)
            fields.append(CsvQuote(column.write ? column.write(ch, location)
                                                : QString::fromLatin1(column.fixed)));
        text += fields.join(QLatin1Char(',')) + QLatin1Char('\n');
    }
    return text.toUtf8();
}

} // namespace kestrel
