// SPDX-License-Identifier: GPL-3.0-or-later
// Our INI reader and writer. Sections and keys are found case-insensitively (first match wins),
// blanks around keys and values are trimmed, ";" lines are comments, CRLF and LF both read, a
// UTF-8 byte-order mark is skipped, and text that is not valid UTF-8 is read as Windows-1252.
// Writing keeps every other line of the file and creates the section and the file when missing;
// the file is replaced atomically.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>
#include <vector>

namespace kestrel {

// At most this many characters of a value are returned (the reader's buffer holds 255).
inline constexpr int kIniValueMax = 254;
// Files larger than this are not ours; they are read as empty and left alone.
inline constexpr qint64 kIniFileMax = 256 * 1024 * 1024;

// One INI file held in memory: read once, queried and changed many times, written once.
class IniDocument {
public:
    IniDocument() = default;

    // Reads the file; a missing or unreadable file gives an empty document. A file that exists
    // but cannot be read (or is beyond kIniFileMax) is never overwritten by save().
    static IniDocument load(const QString& path);
    static IniDocument parse(const QByteArray& bytes);

    // The key's value (at most 254 characters), or an empty text when the key is absent.
    QString ReadKey(QStringView section, QStringView key) const;
    // The same without a copy; valid until the document changes.
    QStringView readView(QStringView section, QStringView key) const;
    // Sets the key, adding the key after the section's last key, or the section at the end.
    void WriteKey(const QString& section, const QString& key, const QString& value);

    QByteArray serialize() const;
    // Writes the whole document to the path through a temporary file and a rename.
    bool save(const QString& path) const;
    bool save(const QString& path, class FileWriter& writer, QString* reason) const;

    // The file exists but could not be read (it is never overwritten).
    bool readFailed() const { return m_readFailed; }
    // Numbers (from 1) of the lines that are neither a section, a key, a comment nor blank, or
    // that hold control characters: the first few, and how many there were.
    const QList<int>& damagedLines() const { return m_damaged; }
    int damagedLineCount() const { return m_damagedCount; }

private:
    // A line of the file as offsets into m_text. Runs of lines that are neither headers nor keys
    // (blank lines, comments, junk) are held as one entry, so a huge file of them stays small.
    enum class Kind : quint8 { Other, Header, Key };
    enum class Eol : quint8 { None, Lf, CrLf };
    struct Line {
        qint32 begin = 0;                  // in m_text
        qint32 len = 0;                    // without the line end
        qint32 nameBegin = 0, nameLen = 0; // section name or key, relative to begin
        qint32 valueBegin = 0, valueLen = 0;
        Kind kind = Kind::Other;
        Eol eol = Eol::None;
    };
    QStringView name(const Line& line) const;
    qsizetype find(QStringView section, QStringView key) const; // index of the key line or -1
    // Appends a line's text to m_text and describes it.
    Line appendLine(const QString& text, Eol eol);
    static void scanLine(QStringView text, Line& line);

    QString m_text;
    std::vector<Line> m_lines;
    bool m_readFailed = false; // the file is there but could not be read: never overwrite it
    QList<int> m_damaged;
    int m_damagedCount = 0;
    Eol m_eol = Eol::Lf; // line end for new lines: the file's own
};

// The accessor bound to one file path through which single keys are read and written. Each call
// goes to the file at once; the loaders and savers use IniDocument to touch each file once.
class Class_INI {
public:
    QString FileName;

    QString ReadKey(const QString& section, const QString& key);
    void WriteKey(const QString& section, const QString& key, const QString& value);

    qint32 lastRead() const { return m_lastRead; }
    qint32 lastWrite() const { return m_lastWrite; }

private:
    qint32 m_lastRead = 0;
    qint32 m_lastWrite = 0;
};

// Decodes file bytes: UTF-8 byte-order mark skipped, UTF-8 when valid, Windows-1252 otherwise.
QString DecodeText(const QByteArray& bytes);

} // namespace kestrel
