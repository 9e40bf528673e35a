// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvimport.h"

#include "core/entry.h"
#include "core/filereport.h"
#include "core/freq.h"
#include "core/prompts.h"
#include "history/history.h"

#include <QDir>

namespace kestrel {

const char* const kCsvOverwriteText = "Overwrite *ALL* Data in the Current Bank?";
const char* const kCsvSearchTmpFile = "SeachBankTmp.SKE";

namespace {

[[noreturn]] void subscriptOutOfRange() {
    throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

[[noreturn]] void badLine(int number, const QString& what) {
    throw KestrelError(err::BadFileFormat, QStringLiteral("line ") + QString::number(number) +
                                               QStringLiteral(": ") + what +
                                               QStringLiteral("; nothing was imported"));
}

// The text of one field for one line, checked as the field's kind requires.
QString fieldText(const CsvTargetField& target, const QStringList& fields, int choice, int number) {
    if (choice == 0)
        return QString::fromLatin1(target.def);
    if (choice < 0 || choice > fields.size())
        badLine(number, QStringLiteral("there is no column ") + QString::number(choice));
    const QString& text = fields[choice - 1];
    QString reason;
    if (target.kind != CsvValue::Text)
        return text;
    if (!CheckDescLength(text, &reason))
        badLine(number, reason);
    return ImportedDesc(text);
}

QList<QString> values(CsvMode mode, const QStringList& fields, const QList<int>& choices,
                      int number) {
    const QList<CsvTargetField>& targets = CsvFields(mode);
    if (choices.size() != targets.size())
        subscriptOutOfRange();
    QList<QString> out;
    for (qsizetype i = 0; i < targets.size(); ++i)
        out.append(fieldText(targets[i], fields, choices[i], number));
    return out;
}

} // namespace

namespace {

// A frequency in megahertz with six decimals, as the files write them.
QString mhz(double hz) {
    const double f = ValidateFreq(hz);
    return f == 0 ? FreqToString(0) : QString::number(qRound64(f) / 1e6, 'f', 6);
}

} // namespace

const QList<CsvTargetField>& CsvFields(CsvMode mode) {
    static const QList<CsvTargetField> bank = {
        {"Description", "UnKnown", CsvValue::Text, [](const ChannelRec& c) { return c.Desc; },
         nullptr},
        {"Frequency", "102.100000", CsvValue::Freq, [](const ChannelRec& c) { return mhz(c.Freq); },
         nullptr},
        {"Delay", "False", CsvValue::Flag,
         [](const ChannelRec& c) { return BoolToString(c.Delay); }, nullptr},
        {"Lock-Out", "False", CsvValue::Flag,
         [](const ChannelRec& c) { return BoolToString(c.Lockout); }, nullptr},
        {"Priority", "False", CsvValue::Flag,
         [](const ChannelRec& c) { return BoolToString(c.Priority); }, nullptr},
    };
    static const QList<CsvTargetField> search = {
        {"Description", "UnKnown", CsvValue::Text, nullptr,
         [](const SearchRec& r) { return r.Desc; }},
        {"Lower Frequency", "25.000000", CsvValue::Freq, nullptr,
         [](const SearchRec& r) { return mhz(r.Lower); }},
        {"Upper Frequency", "956.000000", CsvValue::Freq, nullptr,
         [](const SearchRec& r) { return mhz(r.Upper); }},
    };
    return mode == CsvMode::Bank ? bank : search;
}

QString CsvHeader(CsvMode mode) {
    QStringList names;
    for (const CsvTargetField& f : CsvFields(mode))
        names.append(QString::fromLatin1(f.header));
    return names.join(QLatin1Char(','));
}

QString CsvColumnName(int k) {
    if (k == 0)
        return QStringLiteral("> Default <");
    return QStringLiteral("Column ") + QString::number(k);
}

namespace {
QStringList defaults(CsvMode mode) {
    QStringList out;
    for (const CsvTargetField& f : CsvFields(mode))
        out.append(QString::fromLatin1(f.def));
    return out;
}
} // namespace

QStringList CsvBankDefaults() {
    return defaults(CsvMode::Bank);
}

QStringList CsvSearchDefaults() {
    return defaults(CsvMode::Search);
}

QStringList CsvSplit(const QString& line) {
    QStringList fields;
    if (!SplitCsvFields(line, fields))
        fields = line.split(QLatin1Char(','));
    return fields;
}

int CsvColumnCount(const QString& firstLine) {
    const QStringList fields = CsvSplit(firstLine);
    qsizetype count = fields.size();
    if (fields.last().isEmpty())
        --count;
    return int(qMin<qsizetype>(count, kCsvMaxColumns));
}

QList<int> CsvHeaderChoices(const QString& firstLine, CsvMode mode) {
    const QStringList names = CsvSplit(firstLine);
    QList<int> choices;
    for (const CsvTargetField& f : CsvFields(mode)) {
        int column = 0;
        for (qsizetype k = 0; k < names.size() && k < kCsvChoosable && !column; ++k) {
            if (names[k].trimmed().compare(QLatin1String(f.header), Qt::CaseInsensitive) == 0)
                column = int(k) + 1;
        }
        if (!column)
            return {};
        choices.append(column);
    }
    return choices;
}

double CsvFrequency(const QString& text) {
    return FreqToDouble(text);
}

void CsvShowLine(const QString& line, std::array<QString, kCsvTextBoxes>& boxes) {
    const QStringList fields = CsvSplit(line);
    for (int k = 0; k < kCsvTextBoxes; ++k)
        boxes[k] = k < fields.size() ? fields[k] : QString();
    if (fields.size() > kCsvTextBoxes)
        subscriptOutOfRange();
}

bool CsvImport::open(const QString& path) {
    close();
    m_error.clear();
    if (!m_reader.open(path)) {
        m_error = m_reader.error();
        return false;
    }
    const std::optional<QString> first = m_reader.readLine();
    if (!first && !m_reader.error().isEmpty()) {
        m_error = QDir::toNativeSeparators(path) + QStringLiteral(": ") + m_reader.error();
        return false;
    }
    m_first = first.value_or(QString());
    m_firstPending = first.has_value();
    m_path = path;
    m_columns = CsvColumnCount(m_first);
    m_open = true;
    return true;
}

void CsvImport::close() {
    m_open = false;
    m_reader.close();
    m_first.clear();
    m_firstPending = false;
}

QString CsvImport::nextLine() {
    if (!m_open)
        throw KestrelError(52, QStringLiteral("Bad file name or number"));
    if (m_firstPending) {
        m_firstPending = false;
        return m_first;
    }
    if (std::optional<QString> line = m_reader.readLine())
        return *line;
    if (!m_reader.error().isEmpty())
        throw KestrelError(err::BadFileFormat, m_reader.error());
    throw KestrelError(62, QStringLiteral("Input past end of file"));
}

QList<CsvImport::DataLine> CsvImport::readDataLines(int max) const {
    // The import reads the file afresh, skipping its header line, and stops at the last line
    // it can use.
    CsvReader reader;
    if (!reader.open(m_path))
        throw KestrelError(err::FileNotFound, reader.error());
    QList<DataLine> lines;
    bool header = true;
    while (lines.size() < max) {
        const std::optional<QString> line = reader.readLine();
        if (!line) {
            if (!reader.error().isEmpty())
                throw KestrelError(err::BadFileFormat,
                                   reader.error() + QStringLiteral("; nothing was imported"));
            break;
        }
        if (std::exchange(header, false) || line->trimmed().isEmpty())
            continue;
        DataLine data{reader.lineNumber(), {}};
        QString reason;
        if (!SplitCsvFields(*line, data.fields, &reason))
            badLine(data.number, reason);
        lines.append(data);
    }
    return lines;
}

QString CsvImport::problem(CsvMode mode, const QList<int>& choices) const {
    try {
        const int max = mode == CsvMode::Bank ? kCsvBankLines : kCsvSearchLines;
        for (const DataLine& line : readDataLines(max))
            values(mode, line.fields, choices, line.number);
    } catch (const KestrelError& e) {
        return e.description();
    }
    return {};
}

int CsvImport::importToBank(qint16 p, int b, const QList<int>& choices) {
    int imported = 0;
    Trap(m_ctx.errors, "FrmCsvImport -> BankBtn", [&](Stmt& s) {
        s.at(1);
        if (m_ctx.prompts().message(QString::fromLatin1(kCsvOverwriteText), QString(),
                                    Icon::Question, Buttons::YesNo) != Answer::Yes) {
            imported = -1;
            return;
        }
        s.at(2);
        if (p < 0 || p >= ProfileCount || b < 1 || b > BankCount)
            subscriptOutOfRange();
        const QList<DataLine> lines = readDataLines(kCsvBankLines);
        ProfileRec& profile = m_ctx.Profiles[p];
        BankRec& bank = profile.Banks[b];
        // Built aside first: the bank changes only when every line could be used.
        auto staged = bank.Chans;
        int slot = 0;
        for (const DataLine& line : lines) {
            s.at(3);
            const QList<QString> v = values(CsvMode::Bank, line.fields, choices, line.number);
            ChannelRec& ch = staged[++slot];
            ch.Desc = v[0];
            ch.Freq = CsvFrequency(v[1]);
            ch.Delay = Validate_Bool(v[2], false);
            ch.Lockout = Validate_Bool(v[3], false);
            ch.Priority = Validate_Bool(v[4], false);
        }
        s.at(4);
        ChangeStep step(m_ctx, QStringLiteral("CSV Import"), p, quint8(b));
        bank.Chans = staged;
        if (slot > 0) {
            bank.Changed = true;
            profile.Changed = true;
        }
        imported = slot;
    });
    return imported;
}

int CsvImport::importToSearch(qint16 p, const QList<int>& choices) {
    int imported = 0;
    Trap(m_ctx.errors, "FrmCsvImport -> SearchBtn", [&](Stmt& s) {
        s.at(1);
        if (p < 0 || p >= ProfileCount)
            subscriptOutOfRange();
        const QList<DataLine> lines = readDataLines(kCsvSearchLines);
        ProfileRec& profile = m_ctx.Profiles[p];
        auto staged = profile.Searches;
        QByteArray tmp = "[SrchInfo]\r\n";
        int i = 0;
        for (const DataLine& line : lines) {
            s.at(2);
            const QList<QString> v = values(CsvMode::Search, line.fields, choices, line.number);
            SearchRec& range = staged[++i];
            range.Mark = 0;
            range.Desc = v[0];
            range.Lower = CsvFrequency(v[1]);
            range.Upper = CsvFrequency(v[2]);
            tmp += "Search" + Num2(i).toLatin1() + "=\r\n";
        }
        s.at(3);
        {
            ChangeStep step(m_ctx, QStringLiteral("CSV Import"), p, SearchTab);
            profile.Searches = staged;
            profile.Changed = true;
        }
        imported = i;
        QDir().mkpath(m_ctx.banksDir());
        SaveBytes(m_ctx, tmp,
                  m_ctx.banksDir() + QLatin1Char('/') + QString::fromLatin1(kCsvSearchTmpFile));
    });
    return imported;
}

} // namespace kestrel
