// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvimport.h"

#include "core/class_ini.h"
#include "core/files.h"
#include "core/freq.h"
#include "core/prompts.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace kestrel {

const char* const kCsvOverwriteText = "OverWrite *ALL* Data in the Current Bank?";
const char* const kCsvSearchTmpFile = "SeachBankTmp.SKE";

namespace {

const QChar kComma = QLatin1Char(',');

[[noreturn]] void subscriptOutOfRange() {
    throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
}

QByteArray readAll(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        throw KestrelError(err::FileNotFound, QStringLiteral("File not found"));
    return f.readAll();
}

} // namespace

QString CsvColumnName(int k) {
    if (k == 0)
        return QStringLiteral("> Default <");
    return QStringLiteral("Column ") + QString::number(k);
}

QStringList CsvBankDefaults() {
    // The default channel line, in the window's field order.
    const QStringList line = QStringLiteral("102.100000,UnKnown,False,False,False").split(kComma);
    return {line[1], line[0], line[2], line[3], line[4]};
}

QStringList CsvSearchDefaults() {
    return QStringLiteral("UnKnown,25.000000,956.000000").split(kComma);
}

QStringList CsvLines(const QByteArray& bytes) {
    const QString text = DecodeText(bytes);
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            continue;
        lines.append(text.mid(start, i - start));
        if (c == QLatin1Char('\r') && i + 1 < n && text[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < n)
        lines.append(text.mid(start));
    return lines;
}

int CsvColumnCount(const QString& firstLine) {
    const QStringList fields = firstLine.split(kComma);
    qsizetype count = fields.size();
    if (fields.last().isEmpty())
        --count;
    return int(qMin<qsizetype>(count, kCsvMaxColumns));
}

double CsvFrequency(const QString& text) {
    QString digits = text;
    digits.remove(QLatin1Char('.'));
    return Validate_Dbl(digits, kBandLowHz, kBandLowHz, kBandHighHz);
}

QString CsvFieldValue(const QStringList& fields, int choice, const QString& def) {
    if (choice == 0)
        return def;
    if (choice < 0 || choice > fields.size())
        subscriptOutOfRange();
    return fields[choice - 1];
}

void CsvShowLine(const QString& line, std::array<QString, kCsvTextBoxes>& boxes) {
    const QStringList fields = line.split(kComma);
    for (int k = 0; k < kCsvTextBoxes; ++k)
        boxes[k] = k < fields.size() ? fields[k] : QString();
    if (fields.size() > kCsvTextBoxes)
        subscriptOutOfRange();
}

bool CsvImport::open(const QString& path) {
    close();
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    m_lines = CsvLines(f.readAll());
    m_path = path;
    m_next = 0;
    m_columns = CsvColumnCount(m_lines.value(0));
    m_open = true;
    return true;
}

void CsvImport::close() {
    m_open = false;
    m_lines.clear();
    m_next = 0;
}

QString CsvImport::nextLine() {
    if (!m_open)
        throw KestrelError(52, QStringLiteral("Bad file name or number"));
    if (m_next >= m_lines.size())
        throw KestrelError(62, QStringLiteral("Input past end of file"));
    return m_lines[m_next++];
}

QStringList CsvImport::readDataLines(int max) const {
    // The import reads the file afresh, skipping its header line.
    QStringList lines = CsvLines(readAll(m_path));
    if (!lines.isEmpty())
        lines.removeFirst();
    return lines.mid(0, max);
}

int CsvImport::importToBank(const QList<int>& choices) {
    int imported = 0;
    Trap(m_ctx.errors, "FrmCsvImport -> BankBtn", [&](Stmt& s) {
        s.at(1);
        if (m_ctx.prompts().message(QString::fromLatin1(kCsvOverwriteText), QString(),
                                    Icon::Question, Buttons::YesNo) != Answer::Yes) {
            imported = -1;
            return;
        }
        s.at(2);
        const QStringList lines = readDataLines(kCsvBankLines);
        const QStringList defs = CsvBankDefaults();
        if (choices.size() != kCsvBankFields)
            subscriptOutOfRange();
        if (m_ctx.CurBank < 1 || m_ctx.CurBank > BankCount)
            subscriptOutOfRange();
        ProfileRec& profile = m_ctx.cur();
        BankRec& bank = profile.Banks[m_ctx.CurBank];
        int slot = 1;
        for (const QString& line : lines) {
            s.at(3);
            const QStringList fields = line.split(kComma);
            ChannelRec& ch = bank.Chans[slot];
            auto value = [&](int field) {
                return CsvFieldValue(fields, choices[field], defs[field]);
            };
            auto touched = [&] {
                bank.Changed = true;
                profile.Changed = true;
            };
            ch.Desc = value(0);
            touched();
            ch.Freq = CsvFrequency(value(1));
            touched();
            ch.Delay = Validate_Bool(value(2), false);
            touched();
            ch.Lockout = Validate_Bool(value(3), false);
            touched();
            ch.Priority = Validate_Bool(value(4), false);
            touched();
            ++slot;
            ++imported;
        }
    });
    return imported;
}

int CsvImport::importToSearch(const QList<int>& choices) {
    int imported = 0;
    QByteArray tmp;
    bool tmpStarted = false;
    const bool ok = Trap(m_ctx.errors, "FrmCsvImport -> SearchBtn", [&](Stmt& s) {
        s.at(1);
        const QStringList lines = readDataLines(kCsvSearchLines);
        tmpStarted = true;
        tmp = "[SrchInfo]\r\n";
        const QStringList defs = CsvSearchDefaults();
        if (choices.size() != kCsvSearchFields)
            subscriptOutOfRange();
        ProfileRec& profile = m_ctx.cur();
        int i = 1;
        for (const QString& line : lines) {
            s.at(2);
            const QStringList fields = line.split(kComma);
            SearchRec& range = profile.Searches[i];
            range.Mark = 0;
            range.Desc = CsvFieldValue(fields, choices[0], defs[0]);
            range.Lower = CsvFrequency(CsvFieldValue(fields, choices[1], defs[1]));
            range.Upper = CsvFrequency(CsvFieldValue(fields, choices[2], defs[2]));
            tmp += "Search" + Num2(i).toLatin1() + "=\r\n";
            ++i;
            ++imported;
        }
        s.at(3);
        profile.Changed = true;
        return true;
    });
    if (tmpStarted) {
        // What was started is kept, as far as it got.
        Trap(m_ctx.errors, "FrmCsvImport -> SearchBtn", [&] {
            QDir().mkpath(m_ctx.banksDir());
            const QString path =
                m_ctx.banksDir() + QLatin1Char('/') + QString::fromLatin1(kCsvSearchTmpFile);
            QSaveFile f(path);
            if (!f.open(QIODevice::WriteOnly) || f.write(tmp) != tmp.size() || !f.commit())
                m_ctx.failedWrites.append(path);
        });
    }
    Q_UNUSED(ok);
    return imported;
}

} // namespace kestrel
