// SPDX-License-Identifier: GPL-3.0-or-later
#include "frames.h"

#include "core/errors.h"

#include <cmath>

namespace kestrel {

namespace {

// Marker, length placeholder, command, qualifier and payload; then the length byte and the
// checksum, in the order the scanner expects them to have been computed.
QByteArray assemble(char command, char qualifier, const QByteArray& payload) {
    QByteArray frame;
    frame.reserve(payload.size() + 5);
    frame.append(kFrameMarker);
    frame.append(char(0));
    frame.append(command);
    frame.append(qualifier);
    frame.append(payload);
    frame[1] = char(frame.size() - 1);
    frame.append(BuildCRC(frame));
    return frame;
}

char flag(bool on) {
    return on ? 'S' : 'R';
}

} // namespace

QByteArray BuildCRC(const QByteArray& frame) {
    unsigned sum = 0;
    for (qsizetype i = 1; i < frame.size(); ++i)
        sum = (sum + quint8(frame[i])) % 256;
    return QByteArray(1, char((256 - sum) % 256));
}

QByteArray BuildStartCom() {
    return assemble(0x01, 0x01, QByteArray(1, '\0'));
}

QByteArray BuildStopCom() {
    return assemble(0x02, 0x00, QByteArray(1, '\0'));
}

QByteArray BuildChanStr(quint8 channel, const QString& freqText, bool delay, bool priority,
                        bool lockout) {
    QByteArray text = "C" + QByteArray::number(channel).rightJustified(3, '0');
    text += "^F" + freqText.toLatin1();
    text += "^L";
    text += flag(lockout);
    text += "^P";
    text += flag(priority);
    text += "^D";
    text += flag(delay);
    return assemble(0x10, 0x00, text);
}

QByteArray BuildSearchStr(quint8 range, const QString& lowerText, const QString& upperText) {
    const QByteArray text =
        "J" + QByteArray::number(range) + "^W" + lowerText.toLatin1() + "^U" + upperText.toLatin1();
    return assemble(0x32, 0x00, text);
}

QString Freq2Str(double hertz) {
    if (!std::isfinite(hertz) || std::fabs(hertz) > 9.0e15)
        throw KestrelError(err::TypeMismatch, QStringLiteral("Type mismatch"));
    if (hertz == 0)
        return QStringLiteral("000.0000");
    // Below 2^53 the whole hertz part is exact and the dropped fraction cannot move a value
    // across the half-way point of a 100 Hz step, so the rounding is decided on integers alone.
    const bool negative = hertz < 0;
    const qint64 wholeHz = qint64(std::floor(std::fabs(hertz)));
    const qint64 steps = wholeHz / 100 + ((wholeHz % 100) >= 50 ? 1 : 0);
    const qint64 mhz = steps / 10000;
    const qint64 decimals = steps % 10000;
    QString text = QString::number(mhz).rightJustified(3, QLatin1Char('0')) + QLatin1Char('.') +
                   QString::number(decimals).rightJustified(4, QLatin1Char('0'));
    if (negative && steps != 0)
        text.prepend(QLatin1Char('-'));
    return text;
}

int UploadRecordCount(ProfilePart part) {
    switch (part) {
    case ProfilePart::AllBanks:
        return ChannelCount;
    case ProfilePart::Bank:
        return ChansPerBank;
    case ProfilePart::Search:
        break;
    }
    return SearchCount;
}

QList<QByteArray> UploadFrames(const ProfileRec& profile, ProfilePart part, int bank) {
    QList<QByteArray> frames{BuildStartCom()};
    if (part == ProfilePart::Search) {
        for (int r = 1; r <= SearchCount; ++r) {
            const SearchRec& rec = profile.Searches[r];
            frames << BuildSearchStr(quint8(r), Freq2Str(rec.Lower), Freq2Str(rec.Upper));
        }
    } else {
        const int first = part == ProfilePart::Bank ? bank : 1;
        const int last = part == ProfilePart::Bank ? bank : BankCount;
        if (first < 1 || last > BankCount)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        for (int b = first; b <= last; ++b) {
            for (int c = 1; c <= ChansPerBank; ++c) {
                const ChannelRec& rec = profile.Banks[b].Chans[c];
                frames << BuildChanStr(quint8(ChannelNumber(b, c)), Freq2Str(rec.Freq), rec.Delay,
                                       rec.Priority, rec.Lockout);
            }
        }
    }
    frames << BuildStopCom();
    return frames;
}

QString FrameToHex(const QByteArray& frame) {
    return QString::fromLatin1(frame.toHex(' ').toUpper());
}

} // namespace kestrel
