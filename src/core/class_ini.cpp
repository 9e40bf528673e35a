// SPDX-License-Identifier: GPL-3.0-or-later
#include "class_ini.h"

#include <QFile>
#include <QSaveFile>
#include <QStringDecoder>

namespace kestrel {

namespace {

// Windows-1252 code points for bytes 0x80..0x9F; the other bytes map as Latin-1.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool isBlank(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); }

// Trimmed range [begin, begin+len) of text within [from, to).
void trimRange(const QString& text, int from, int to, int& begin, int& len) {
    while (from < to && isBlank(text[from]))
        ++from;
    while (to > from && isBlank(text[to - 1]))
        --to;
    begin = from;
    len = to - from;
}

} // namespace

QString DecodeText(const QByteArray& bytes) {
    QByteArrayView view(bytes);
    if (view.startsWith("\xEF\xBB\xBF"))
        view = view.sliced(3);
    QStringDecoder utf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    QString text = utf8.decode(view);
    if (!utf8.hasError())
        return text;
    text.resize(view.size());
    QChar* out = text.data();
    for (qsizetype i = 0; i < view.size(); ++i) {
        const uchar b = uchar(view[i]);
        out[i] = (b >= 0x80 && b <= 0x9F) ? QChar(kCp1252High[b - 0x80]) : QChar(b);
    }
    return text;
}

IniDocument::Line IniDocument::parseLine(QString text, const QString& section) {
    Line line;
    line.text = std::move(text);
    line.section = section;
    const QString& t = line.text;
    int b = 0;
    while (b < t.size() && isBlank(t[b]))
        ++b;
    if (b >= t.size() || t[b] == QLatin1Char(';'))
        return line;
    if (t[b] == QLatin1Char('[')) {
        line.isHeader = true;
        int close = int(t.indexOf(QLatin1Char(']'), b + 1));
        if (close < 0)
            close = int(t.size());
        int nb, nl;
        trimRange(t, b + 1, close, nb, nl);
        line.section = t.mid(nb, nl);
        return line;
    }
    const int eq = int(t.indexOf(QLatin1Char('='), b));
    if (eq < 0)
        return line;
    trimRange(t, b, eq, line.keyBegin, line.keyLen);
    if (line.keyLen == 0) {
        line.keyBegin = -1;
        return line;
    }
    trimRange(t, eq + 1, int(t.size()), line.valueBegin, line.valueLen);
    return line;
}

IniDocument IniDocument::parse(const QByteArray& bytes) {
    IniDocument doc;
    const QString text = DecodeText(bytes);
    doc.m_crlf = text.contains(QLatin1String("\r\n"));
    QString section;
    qsizetype start = 0;
    const qsizetype n = text.size();
    doc.m_lines.reserve(size_t(text.count(QLatin1Char('\n')) + 1));
    while (start < n) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), start);
        if (end < 0)
            end = n;
        qsizetype stop = end;
        if (stop > start && text[stop - 1] == QLatin1Char('\r'))
            --stop;
        Line line = parseLine(text.mid(start, stop - start), section);
        if (line.isHeader)
            section = line.section;
        doc.m_lines.push_back(std::move(line));
        start = end + 1;
    }
    return doc;
}

IniDocument IniDocument::load(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return parse(f.readAll());
}

const IniDocument::Line* IniDocument::find(QStringView section, QStringView key) const {
    // Only the first block of a section counts, as with the platform's reader.
    bool inBlock = false;
    for (const Line& line : m_lines) {
        if (line.isHeader) {
            if (inBlock)
                return nullptr;
            inBlock = line.section.compare(section, Qt::CaseInsensitive) == 0;
        } else if (inBlock && line.isKey() &&
                   QStringView(line.text).mid(line.keyBegin, line.keyLen)
                           .compare(key, Qt::CaseInsensitive) == 0) {
            return &line;
        }
    }
    return nullptr;
}

QString IniDocument::ReadKey(QStringView section, QStringView key) const {
    const Line* line = find(section, key);
    if (!line)
        return {};
    return line->text.mid(line->valueBegin, qMin(line->valueLen, kIniValueMax));
}

void IniDocument::WriteKey(const QString& section, const QString& key, const QString& value) {
    QString clean = value;
    clean.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    if (const Line* found = find(section, key)) {
        Line& line = m_lines[size_t(found - m_lines.data())];
        const QString keyText = line.text.mid(line.keyBegin, line.keyLen);
        line = parseLine(keyText + QLatin1Char('=') + clean, line.section);
        return;
    }
    // Find the section's first block; insert after its last key (or its header).
    size_t header = m_lines.size();
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].isHeader &&
            m_lines[i].section.compare(section, Qt::CaseInsensitive) == 0) {
            header = i;
            break;
        }
    }
    if (header == m_lines.size()) {
        Line h;
        h.text = QLatin1Char('[') + section + QLatin1Char(']');
        h.section = section;
        h.isHeader = true;
        m_lines.push_back(std::move(h));
        m_lines.push_back(parseLine(key + QLatin1Char('=') + clean, section));
        return;
    }
    size_t insertAt = header + 1;
    for (size_t i = header + 1; i < m_lines.size() && !m_lines[i].isHeader; ++i) {
        if (m_lines[i].isKey())
            insertAt = i + 1;
    }
    const QString sectionName = m_lines[header].section;
    m_lines.insert(m_lines.begin() + std::ptrdiff_t(insertAt),
                   parseLine(key + QLatin1Char('=') + clean, sectionName));
}

QByteArray IniDocument::serialize() const {
    QString out;
    qsizetype total = 0;
    for (const Line& l : m_lines)
        total += l.text.size() + 2;
    out.reserve(total);
    const QLatin1String eol(m_crlf ? "\r\n" : "\n");
    for (const Line& l : m_lines) {
        out += l.text;
        out += eol;
    }
    return out.toUtf8();
}

bool IniDocument::save(const QString& path) const {
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    f.write(serialize());
    return f.commit();
}

QString Class_INI::ReadKey(const QString& section, const QString& key) {
    const QString v = IniDocument::load(FileName).ReadKey(section, key);
    m_lastRead = qint32(v.size());
    return v;
}

void Class_INI::WriteKey(const QString& section, const QString& key, const QString& value) {
    IniDocument doc = IniDocument::load(FileName);
    doc.WriteKey(section, key, value);
    m_lastWrite = doc.save(FileName) ? 1 : 0;
}

} // namespace kestrel
