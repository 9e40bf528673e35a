// SPDX-License-Identifier: GPL-3.0-or-later
// The four command frames the scanner understands, their checksum and the frequency text inside
// them. Pure functions: no state, no port.
#pragma once

#include "core/records.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace kestrel {

inline constexpr char kFrameMarker = char(0x81);

// Checksum byte of a frame (without its checksum): bytes 2..n plus the result add up to a
// multiple of 256. The marker byte does not count.
QByteArray BuildCRC(const QByteArray& frame);

QByteArray BuildStartCom();
QByteArray BuildStopCom();
// channel: 1..200; freqText from Freq2Str. Switches in the order delay, priority, lock-out.
QByteArray BuildChanStr(quint8 channel, const QString& freqText, bool delay, bool priority,
                        bool lockout);
// range: 1..10; limits from Freq2Str.
QByteArray BuildSearchStr(quint8 range, const QString& lowerText, const QString& upperText);

// Megahertz with three integer digits and four decimals ("046.6100"); 0 gives "000.0000". The
// hertz value is rounded half away from zero to 100 Hz in integer arithmetic, so a raster point
// such as 406,006,250 Hz always gives "406.0063". Throws KestrelError for a value that is not a
// number.
QString Freq2Str(double hertz);

// How many records (channels or search ranges) an upload of that part sends.
int UploadRecordCount(ProfilePart part);
// Every frame of an upload of the given profile, start frame to stop frame, in sending order.
// Throws KestrelError for a bank outside 1-10 or a frequency that is not a number, before any
// frame is made.
QList<QByteArray> UploadFrames(const ProfileRec& profile, ProfilePart part, int bank = 0);

// "81 04 01 01 00 FA": upper-case hex byte pairs separated by blanks.
QString FrameToHex(const QByteArray& frame);

} // namespace kestrel
