// SPDX-License-Identifier: GPL-3.0-or-later
// Reading CSV text as spreadsheets write it, line by line from a stream (a huge file is never
// read whole): byte-order marks of UTF-8, UTF-16 and UTF-32, UTF-8 or Windows-1252 without one,
// CRLF, LF and CR line ends, fields in double quotes holding commas, doubled quotes and line
// breaks. Binary input is refused.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>
#include <QStringList>
#include <memory>
#include <optional>

class QIODevice;

namespace kestrel {

// A line longer than this is not a line of a list of channels.
inline constexpr qsizetype kCsvMaxLine = 64 * 1024;

class CsvReader {
public:
    CsvReader();
    ~CsvReader();

    // Starts reading a file; false with error() when it cannot be opened.
    bool open(const QString& path);
    // Starts reading bytes held in memory.
    void setData(const QByteArray& bytes);
    // Lets go of the input.
    void close() { reset(); }

    // The next line without its line end, joined with the lines after it by "\n" while a field
    // in double quotes is open; nothing at the end of the input or on an error (then error()
    // tells what is wrong).
    std::optional<QString> readLine();
    // Number (from 1) of the first line of the text last returned.
    int lineNumber() const { return m_recordLine; }
    const QString& error() const { return m_error; }

private:
    enum class Encoding { Unknown, Bytes, Wide };
    enum class Step { Line, End, Fail };
    void reset();
    bool fill();
    void detect();
    template <typename Buf> Step take(Buf& buf, qsizetype& pos, Buf& line);
    bool fail(const QString& text);
    std::optional<QString> readPhysicalLine();

    std::unique_ptr<QIODevice> m_device;
    Encoding m_encoding = Encoding::Unknown;
    QStringDecoder m_decoder;
    QByteArray m_raw;
    QString m_text;
    qsizetype m_pos = 0;
    bool m_eof = false;
    bool m_skipLf = false;
    int m_line = 0;
    int m_recordLine = 0;
    QString m_error;
};

// The fields of one line. A field that starts with a double quote runs to the closing quote and
// may hold commas; "" inside it is one quote. False, with the reason, for a quote that is not
// closed or text after a closing quote.
bool SplitCsvFields(QStringView line, QStringList& fields, QString* reason = nullptr);
// A field as written: in double quotes (inner quotes doubled) when it holds a comma, a quote,
// a line break, or blanks at either end; otherwise as it is.
QString CsvQuote(const QString& field);

} // namespace kestrel
