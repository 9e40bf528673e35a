// SPDX-License-Identifier: GPL-3.0-or-later
// Our INI reader and writer. Sections and keys are found case-insensitively (first match wins),
// blanks around keys and values are trimmed, ";" lines are comments, CRLF and LF both read, a
// UTF-8 byte-order mark is skipped, and text that is not valid UTF-8 is read as Windows-1252.
// Writing keeps every other line of the file and creates the section and the file when missing;
// the file is replaced atomically.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <vector>

namespace kestrel {

// At most this many characters of a value are returned (the reader's buffer holds 255).
inline constexpr int kIniValueMax = 254;

// One INI file held in memory: read once, queried and changed many times, written once.
class IniDocument {
public:
    IniDocument() = default;

    // Reads the file; a missing or unreadable file gives an empty document.
    static IniDocument load(const QString& path);
    static IniDocument parse(const QByteArray& bytes);

    // The key's value (at most 254 characters), or an empty text when the key is absent.
    QString ReadKey(QStringView section, QStringView key) const;
    // Sets the key, adding the key after the section's last key, or the section at the end.
    void WriteKey(const QString& section, const QString& key, const QString& value);

    QByteArray serialize() const;
    // Writes the whole document to the path through a temporary file and a rename.
    bool save(const QString& path) const;

private:
    struct Line {
        QString text;    // the line as read (or as written)
        QString section; // the section this line belongs to ("" before the first header)
        int keyBegin = -1, keyLen = 0;
        int valueBegin = -1, valueLen = 0;
        bool isHeader = false;
        bool isKey() const { return keyBegin >= 0; }
    };
    const Line* find(QStringView section, QStringView key) const;
    static Line parseLine(QString text, const QString& section);

    std::vector<Line> m_lines;
    bool m_crlf = false;
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
