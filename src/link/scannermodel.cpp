// SPDX-License-Identifier: GPL-3.0-or-later
#include "scannermodel.h"

#include "frames.h"

#include "core/freq.h"

#include <QRegularExpression>

namespace kestrel {

namespace {

constexpr quint8 kStart = 0x01;
constexpr quint8 kStop = 0x02;
constexpr quint8 kChannel = 0x10;
constexpr quint8 kSearch = 0x32;

// Whole length (checksum included) of the frame whose first bytes are given: 0 when the command
// is unknown, -1 when more bytes are needed to tell.
int expectedLength(const QByteArray& head) {
    if (head.size() < 3)
        return -1;
    switch (quint8(head[2])) {
    case kStart:
    case kStop:
        return 6;
    case kChannel:
        return 28;
    case kSearch:
        // "J1^" .. "J9^" or "J10": the range number decides.
        if (head.size() < 7)
            return -1;
        return head[6] == '^' ? 27 : 28;
    default:
        return 0;
    }
}

bool switchOn(QChar c) {
    return c == QLatin1Char('S');
}

} // namespace

QString ScannerModel::errorLine(const char* code) const {
    return QString::fromLatin1(code) + QLatin1Char(' ') + QString::number(m_packet);
}

QList<ScannerModel::Outcome> ScannerModel::receive(const QByteArray& bytes) {
    m_buffer += bytes;
    QList<Outcome> out;
    for (;;) {
        const qsizetype marker = m_buffer.indexOf(kFrameMarker);
        if (marker < 0) {
            m_buffer.clear(); // noise between frames
            break;
        }
        m_buffer.remove(0, marker);
        const int total = expectedLength(m_buffer);
        if (total < 0)
            break;
        if (total == 0) {
            ++m_frames;
            ++m_packet;
            out.append({m_buffer.left(3), {}, {errorLine("C-Err")}});
            m_buffer.remove(0, 1);
            continue;
        }
        if (m_buffer.size() < total)
            break;
        const QByteArray frame = m_buffer.left(total);
        m_buffer.remove(0, total);
        out.append(handle(frame));
    }
    return out;
}

QList<ScannerModel::Outcome> ScannerModel::timeout() {
    if (m_buffer.isEmpty())
        return {};
    ++m_packet;
    Outcome o{m_buffer, {}, {errorLine("T-Err")}};
    m_buffer.clear();
    return {o};
}

ScannerModel::Outcome ScannerModel::handle(const QByteArray& frame) {
    ++m_frames;
    const quint8 command = quint8(frame[2]);
    if (command == kStart)
        m_packet = 0;
    else
        ++m_packet;
    Outcome o{frame, {}, {}};
    if (quint8(frame[1]) != frame.size() - 2) {
        o.display << errorLine("L-Err");
        return o;
    }
    if (BuildCRC(frame.left(frame.size() - 1)) != frame.right(1)) {
        o.display << errorLine("S-Err");
        return o;
    }
    const QString text = QString::fromLatin1(frame.mid(4, frame.size() - 5));
    switch (command) {
    case kStart:
        o.display << QStringLiteral("Start");
        break;
    case kChannel: {
        static const QRegularExpression re(
            QStringLiteral(R"(^C(\d{3})\^F(\d{3}\.\d{4})\^L([SR])\^P([SR])\^D([SR])$)"));
        const auto m = re.match(text);
        const int n = m.hasMatch() ? m.captured(1).toInt() : 0;
        if (n < 1 || n > ChannelCount) {
            o.display << errorLine("d-Err");
            return o;
        }
        ChannelRec& rec = m_channels[n];
        rec.Freq = FreqToDouble(m.captured(2));
        rec.Lockout = switchOn(m.captured(3)[0]);
        rec.Priority = switchOn(m.captured(4)[0]);
        rec.Delay = switchOn(m.captured(5)[0]);
        o.display << text;
        break;
    }
    case kSearch: {
        static const QRegularExpression re(
            QStringLiteral(R"(^J(\d{1,2})\^W(\d{3}\.\d{4})\^U(\d{3}\.\d{4})$)"));
        const auto m = re.match(text);
        const int r = m.hasMatch() ? m.captured(1).toInt() : 0;
        if (r < 1 || r > SearchCount) {
            o.display << errorLine("d-Err");
            return o;
        }
        m_searches[r].Lower = FreqToDouble(m.captured(2));
        m_searches[r].Upper = FreqToDouble(m.captured(3));
        o.display << text;
        break;
    }
    case kStop:
        o.display << QStringLiteral("End");
        o.display << memoryDump();
        break;
    }
    if (m_cable == 3 && (m_stopAfter < 0 || m_frames <= m_stopAfter))
        o.answer = frame;
    return o;
}

QStringList ScannerModel::memoryDump() const {
    QStringList lines;
    for (int n = 1; n <= ChannelCount; ++n)
        lines << Num3(n) + QLatin1Char(',') + ChannelLine(m_channels[n]);
    for (int r = 1; r <= SearchCount; ++r)
        lines << Num2(r) + QLatin1Char(',') + SearchLine(m_searches[r]);
    return lines;
}

} // namespace kestrel
