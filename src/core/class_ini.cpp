// SPDX-License-Identifier: GPL-3.0-or-later
#include "class_ini.h"

#include "safefile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

namespace kestrel {

namespace {

// Windows-1252 code points for bytes 0x80..0x9F; the other bytes map as Latin-1.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

// Trimmed range [begin, begin+len) of text within [from, to).
void trimRange(QStringView text, qint32 from, qint32 to, qint32& begin, qint32& len) {
    while (from < to && isBlank(text[from]))
        ++from;
    while (to > from && isBlank(text[to - 1]))
        --to;
    begin = from;
    len = to - from;
}

// Case-insensitive equality; lengths are compared first since most candidates differ there.
bool sameName(QStringView a, QStringView b) {
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

constexpr int kDamagedLinesKept = 10;

// A line no INI writer makes: text that is neither a section, a key, a comment nor blank, or
// that holds control characters (a file overwritten with binary data, zeros after a crash).
bool isDamaged(QStringView text, int kind) {
    for (const QChar c : text) {
        if (c.unicode() < 0x20 && c != QLatin1Char('\t'))
            return true;
    }
    if (kind != 0) // Kind::Other
        return false;
    const QStringView t = text.trimmed();
    return !t.isEmpty() && t[0] != QLatin1Char(';');
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

void IniDocument::scanLine(QStringView t, Line& line) {
    const qint32 n = qint32(t.size());
    qint32 b = 0;
    while (b < n && isBlank(t[b]))
        ++b;
    line.kind = Kind::Other;
    if (b >= n || t[b] == QLatin1Char(';'))
        return;
    if (t[b] == QLatin1Char('[')) {
        qint32 close = qint32(t.indexOf(QLatin1Char(']'), b + 1));
        if (close < 0)
            close = n;
        trimRange(t, b + 1, close, line.nameBegin, line.nameLen);
        line.kind = Kind::Header;
        return;
    }
    const qint32 eq = qint32(t.indexOf(QLatin1Char('='), b));
    if (eq < 0)
        return;
    trimRange(t, b, eq, line.nameBegin, line.nameLen);
    if (line.nameLen == 0)
        return;
    trimRange(t, eq + 1, n, line.valueBegin, line.valueLen);
    line.kind = Kind::Key;
}

IniDocument IniDocument::parse(const QByteArray& bytes) {
    IniDocument doc;
    doc.m_text = DecodeText(bytes);
    const QStringView text(doc.m_text);
    const qsizetype n = text.size();
    const qsizetype firstLf = text.indexOf(QLatin1Char('\n'));
    doc.m_eol = firstLf > 0 && text[firstLf - 1] == QLatin1Char('\r') ? Eol::CrLf : Eol::Lf;
    qsizetype start = 0;
    int number = 0;
    while (start < n) {
        ++number;
        qsizetype end = text.indexOf(QLatin1Char('\n'), start);
        Line line;
        line.eol = Eol::Lf;
        if (end < 0) {
            end = n;
            line.eol = Eol::None;
        }
        qsizetype stop = end;
        if (line.eol == Eol::Lf && stop > start && text[stop - 1] == QLatin1Char('\r')) {
            --stop;
            line.eol = Eol::CrLf;
        }
        line.begin = qint32(start);
        line.len = qint32(stop - start);
        const QStringView lineText = text.sliced(start, stop - start);
        scanLine(lineText, line);
        if (isDamaged(lineText, int(line.kind))) {
            if (doc.m_damaged.size() < kDamagedLinesKept)
                doc.m_damaged.append(number);
            ++doc.m_damagedCount;
        }
        if (line.kind == Kind::Other && !doc.m_lines.empty() &&
            doc.m_lines.back().kind == Kind::Other) {
            // Join the run: its inner line ends become part of its text, kept as they were.
            Line& run = doc.m_lines.back();
            run.len = qint32(stop - run.begin);
            run.eol = line.eol;
        } else {
            doc.m_lines.push_back(line);
        }
        start = end + 1;
    }
    return doc;
}

IniDocument IniDocument::load(const QString& path) {
    QFile f(path);
    const bool opened = f.open(QIODevice::ReadOnly);
    if (!opened && !QFileInfo::exists(path))
        return {}; // a missing file is an empty one (looked at only when opening failed)
    if (!opened || f.size() > kIniFileMax) {
        IniDocument doc;
        doc.m_readFailed = true;
        return doc;
    }
    return parse(f.readAll());
}

QStringView IniDocument::name(const Line& line) const {
    return QStringView(m_text).sliced(line.begin + line.nameBegin, line.nameLen);
}

qsizetype IniDocument::find(QStringView section, QStringView key) const {
    // Only the first block of a section counts, as with the platform's reader.
    bool inBlock = false;
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const Line& line = m_lines[i];
        if (line.kind == Kind::Header) {
            if (inBlock)
                return -1;
            inBlock = sameName(name(line), section);
        } else if (inBlock && line.kind == Kind::Key && sameName(name(line), key)) {
            return qsizetype(i);
        }
    }
    return -1;
}

QStringView IniDocument::readView(QStringView section, QStringView key) const {
    const qsizetype i = find(section, key);
    if (i < 0)
        return {};
    const Line& line = m_lines[size_t(i)];
    return QStringView(m_text).sliced(line.begin + line.valueBegin,
                                      qMin(line.valueLen, qint32(kIniValueMax)));
}

QString IniDocument::ReadKey(QStringView section, QStringView key) const {
    return readView(section, key).toString();
}

IniDocument::Line IniDocument::appendLine(const QString& text, Eol eol) {
    Line line;
    line.begin = qint32(m_text.size());
    line.len = qint32(text.size());
    line.eol = eol;
    m_text += text;
    scanLine(QStringView(m_text).sliced(line.begin, line.len), line);
    return line;
}

void IniDocument::WriteKey(const QString& section, const QString& key, const QString& value) {
    // A line end inside a value would split the line and corrupt the file.
    QString clean = value;
    clean.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const qsizetype found = find(section, key);
    if (found >= 0) {
        Line& line = m_lines[size_t(found)];
        const QString keyText = name(line).toString(); // the file's own spelling stays
        line = appendLine(keyText + QLatin1Char('=') + clean, line.eol);
        return;
    }
    const QString text = key + QLatin1Char('=') + clean;
    size_t header = m_lines.size();
    for (size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].kind == Kind::Header && sameName(name(m_lines[i]), section)) {
            header = i;
            break;
        }
    }
    if (header == m_lines.size()) {
        m_lines.push_back(appendLine(QLatin1Char('[') + section + QLatin1Char(']'), m_eol));
        m_lines.push_back(appendLine(text, m_eol));
        return;
    }
    // After the section's last key (or its header), so comments below the section stay below.
    size_t insertAt = header + 1;
    for (size_t i = header + 1; i < m_lines.size() && m_lines[i].kind != Kind::Header; ++i) {
        if (m_lines[i].kind == Kind::Key)
            insertAt = i + 1;
    }
    const Line line = appendLine(text, m_eol);
    m_lines.insert(m_lines.begin() + std::ptrdiff_t(insertAt), line);
}

QByteArray IniDocument::serialize() const {
    QString out;
    qsizetype total = 0;
    for (const Line& l : m_lines)
        total += l.len + 2;
    out.reserve(total);
    const QStringView text(m_text);
    for (size_t i = 0; i < m_lines.size(); ++i) {
        const Line& l = m_lines[i];
        out += text.sliced(l.begin, l.len);
        Eol eol = l.eol;
        if (eol == Eol::None && i + 1 < m_lines.size())
            eol = m_eol; // a line that was last in the file and now has lines after it
        if (eol == Eol::CrLf)
            out += QLatin1String("\r\n");
        else if (eol == Eol::Lf)
            out += QLatin1Char('\n');
    }
    return out.toUtf8();
}

bool IniDocument::save(const QString& path) const {
    FileWriter writer;
    return save(path, writer, nullptr);
}

bool IniDocument::save(const QString& path, FileWriter& writer, QString* reason) const {
    if (m_readFailed) {
        if (reason)
            *reason = QStringLiteral("the file could not be read, so it is left as it was");
        return false;
    }
    return writer.writeFile(path, serialize(), reason);
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
