// SPDX-License-Identifier: GPL-3.0-or-later
#include "csvreader.h"

#include "class_ini.h"

#include <QBuffer>
#include <QFile>

namespace kestrel {

namespace {

constexpr qint64 kChunk = 64 * 1024;

// Control characters that text never holds (tabs, line and page breaks aside).
template <typename C> bool isBinary(C c) {
    const unsigned u = unsigned(c) & 0xFFFF;
    return u < 0x09 || (u >= 0x0E && u < 0x20);
}

template <typename Buf> qsizetype findLineEnd(const Buf& buf, qsizetype from) {
    for (qsizetype i = from; i < buf.size(); ++i) {
        if (buf[i] == u'\n' || buf[i] == u'\r')
            return i;
    }
    return -1;
}

struct Bom {
    const char* bytes;
    int size;
    QStringConverter::Encoding encoding;
};
// UTF-32 first: its little-endian mark begins like UTF-16's.
constexpr Bom kBoms[] = {
    {"\xFF\xFE\x00\x00", 4, QStringConverter::Utf32LE},
    {"\x00\x00\xFE\xFF", 4, QStringConverter::Utf32BE},
    {"\xFF\xFE", 2, QStringConverter::Utf16LE},
    {"\xFE\xFF", 2, QStringConverter::Utf16BE},
    {"\xEF\xBB\xBF", 3, QStringConverter::Utf8},
};

} // namespace

CsvReader::CsvReader() = default;
CsvReader::~CsvReader() = default;

void CsvReader::reset() {
    m_device.reset();
    m_encoding = Encoding::Unknown;
    m_decoder = QStringDecoder();
    m_raw.clear();
    m_text.clear();
    m_pos = 0;
    m_eof = false;
    m_skipLf = false;
    m_line = 0;
    m_recordLine = 0;
    m_error.clear();
}

bool CsvReader::open(const QString& path) {
    reset();
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return fail(path + QStringLiteral(" cannot be read: ") + file->errorString());
    m_device = std::move(file);
    return true;
}

void CsvReader::setData(const QByteArray& bytes) {
    reset();
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    m_device = std::move(buffer);
}

bool CsvReader::fail(const QString& text) {
    m_error = text;
    return false;
}

bool CsvReader::fill() {
    const QByteArray chunk = m_device ? m_device->read(kChunk) : QByteArray();
    if (chunk.isEmpty())
        m_eof = true;
    if (m_encoding != Encoding::Wide) {
        m_raw += chunk;
        return true;
    }
    m_text += m_decoder.decode(chunk);
    if (m_decoder.hasError() ||
        (m_eof && m_decoder.isValid() && !m_text.isEmpty() && m_text.back().isHighSurrogate()))
        return fail(QStringLiteral("the file is not text in the encoding its byte-order mark "
                                   "names"));
    return true;
}

void CsvReader::detect() {
    while (m_raw.size() < 4 && !m_eof)
        fill();
    m_encoding = Encoding::Bytes;
    for (const Bom& bom : kBoms) {
        if (!m_raw.startsWith(QByteArrayView(bom.bytes, bom.size)))
            continue;
        m_raw.remove(0, bom.size);
        if (bom.encoding != QStringConverter::Utf8) {
            m_encoding = Encoding::Wide;
            m_decoder = QStringDecoder(bom.encoding, QStringConverter::Flag::Stateless);
            m_text = m_decoder.decode(m_raw);
            m_raw.clear();
        }
        break;
    }
}

template <typename Buf> CsvReader::Step CsvReader::take(Buf& buf, qsizetype& pos, Buf& line) {
    while (true) {
        if (m_skipLf && pos < buf.size()) {
            // The LF of a CRLF that arrived with the next block.
            if (buf[pos] == u'\n')
                ++pos;
            m_skipLf = false;
        }
        const qsizetype end = findLineEnd(buf, pos);
        if ((end < 0 ? buf.size() : end) - pos > kCsvMaxLine) {
            fail(QStringLiteral("line ") + QString::number(m_line + 1) +
                 QStringLiteral(" is longer than ") + QString::number(kCsvMaxLine) +
                 QStringLiteral(" characters: the file is not a list of channels"));
            return Step::Fail;
        }
        if (end >= 0) {
            line = buf.mid(pos, end - pos);
            pos = end + 1;
            m_skipLf = buf[end] == u'\r';
            return Step::Line;
        }
        if (m_eof) {
            if (pos >= buf.size())
                return Step::End;
            line = buf.mid(pos);
            pos = buf.size();
            return Step::Line;
        }
        buf.remove(0, pos);
        pos = 0;
        if (!fill())
            return Step::Fail;
    }
}

namespace {

// Whether a field in double quotes is still open at the end of `line`, given whether one was
// open at its start; read by the same rules as SplitCsvFields.
bool quoteOpenAfter(QStringView line, bool open) {
    bool fieldStart = true;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (open) {
            if (c == u'"' && i + 1 < line.size() && line[i + 1] == u'"')
                ++i;
            else if (c == u'"')
                open = fieldStart = false;
        } else if (c == u',') {
            fieldStart = true;
        } else {
            open = c == u'"' && fieldStart;
            fieldStart = false;
        }
    }
    return open;
}

} // namespace

std::optional<QString> CsvReader::readLine() {
    std::optional<QString> record = readPhysicalLine();
    if (!record)
        return record;
    const int first = m_line;
    // A line break inside quotes belongs to the field, as spreadsheets write it.
    for (bool open = quoteOpenAfter(*record, false); open;) {
        const std::optional<QString> more = readPhysicalLine();
        if (!more) {
            if (!m_error.isEmpty())
                return std::nullopt;
            break; // the end of the input: the split reports the open quote
        }
        if (record->size() + 1 + more->size() > kCsvMaxLine) {
            fail(QStringLiteral("the quoted field of line ") + QString::number(first) +
                 QStringLiteral(" is not closed within ") + QString::number(kCsvMaxLine) +
                 QStringLiteral(" characters: the file is not a list of channels"));
            return std::nullopt;
        }
        open = quoteOpenAfter(*more, true);
        *record += QLatin1Char('\n') + *more;
    }
    m_recordLine = first;
    return record;
}

std::optional<QString> CsvReader::readPhysicalLine() {
    if (!m_error.isEmpty())
        return std::nullopt;
    if (m_encoding == Encoding::Unknown)
        detect();
    QString text;
    Step step;
    if (m_encoding == Encoding::Wide) {
        step = take(m_text, m_pos, text);
    } else {
        QByteArray bytes;
        step = take(m_raw, m_pos, bytes);
        if (step == Step::Line)
            text = DecodeText(bytes); // control bytes keep their code points
    }
    if (step != Step::Line)
        return std::nullopt;
    for (const QChar c : text) {
        if (isBinary(c.unicode())) {
            fail(QStringLiteral("the file is not text: line ") + QString::number(m_line + 1) +
                 QStringLiteral(" holds binary data"));
            return std::nullopt;
        }
    }
    ++m_line;
    return text;
}

bool SplitCsvFields(QStringView line, QStringList& fields, QString* reason) {
    fields.clear();
    qsizetype i = 0;
    const qsizetype n = line.size();
    while (true) {
        QString field;
        if (i < n && line[i] == u'"') {
            ++i;
            while (true) {
                if (i >= n) {
                    if (reason)
                        *reason = QStringLiteral("a quote is not closed");
                    return false;
                }
                if (line[i] == u'"') {
                    if (i + 1 < n && line[i + 1] == u'"') {
                        field += QLatin1Char('"');
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field += line[i++];
            }
            while (i < n && line[i] == u' ')
                ++i;
            if (i < n && line[i] != u',') {
                if (reason)
                    *reason = QStringLiteral("text follows a closing quote");
                return false;
            }
        } else {
            const qsizetype comma = line.indexOf(u',', i);
            const qsizetype end = comma < 0 ? n : comma;
            field = line.sliced(i, end - i).toString();
            i = end;
        }
        fields.append(field);
        if (i >= n)
            return true;
        ++i; // the comma
    }
}

QString CsvQuote(const QString& field) {
    const bool plain = !field.contains(u',') && !field.contains(u'"') && !field.contains(u'\n') &&
                       !field.contains(u'\r') && field.trimmed().size() == field.size();
    if (plain)
        return field;
    QString inner = field;
    inner.replace(QStringLiteral("\""), QStringLiteral("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

} // namespace kestrel
