// SPDX-License-Identifier: GPL-3.0-or-later
// What the scanner does with the bytes it receives: splits them into frames, checks marker,
// length byte and checksum, keeps the channels and ranges it was sent, and says what it answers
// and shows. Pure logic; the simulator puts it on a pseudo-terminal.
#pragma once

#include "core/records.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <array>

namespace kestrel {

class ScannerModel {
public:
    // What one received frame (or one broken one) led to.
    struct Outcome {
        QByteArray frame;    // the bytes taken for it
        QByteArray answer;   // bytes to send back; empty for none
        QStringList display; // lines the scanner shows or prints
    };

    // cable: 2 (no way back to the computer) or 3 (answers as long as the frame).
    explicit ScannerModel(int cable = 3) : m_cable(cable) {}

    // Appends received bytes and returns the outcome of every frame they complete.
    QList<Outcome> receive(const QByteArray& bytes);
    // A frame started but its remaining bytes never came: drop it and show "T-Err".
    QList<Outcome> timeout();
    bool partial() const { return !m_buffer.isEmpty(); }

    // Stops answering once this many frames have come in (negative: never).
    void setStopAfter(int frames) { m_stopAfter = frames; }
    int framesReceived() const { return m_frames; }

    const ChannelRec& channel(int n) const { return m_channels[n]; }
    const SearchRec& search(int r) const { return m_searches[r]; }
    // The whole memory as lines "001,<channel line>" ... "200,..." then "01,<search line>".
    QStringList memoryDump() const;

private:
    Outcome handle(const QByteArray& frame);
    QString errorLine(const char* code) const;

    int m_cable;
    int m_stopAfter = -1;
    int m_frames = 0;
    int m_packet = 0; // frame number within the current upload, as the scanner shows it
    QByteArray m_buffer;
    std::array<ChannelRec, ChannelCount + 1> m_channels{};
    std::array<SearchRec, SearchCount + 1> m_searches{};
};

} // namespace kestrel
