// SPDX-License-Identifier: GPL-3.0-or-later
// Frequency values, their text forms, and the lenient validators every value read from a file
// passes through. All pure functions; none keeps state.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kestrel {

inline constexpr double kBandLowHz = 25'000'000.0;
inline constexpr double kBandHighHz = 956'000'000.0;

// Numeric value of the leading number of a text: "." is the decimal point whatever the locale,
// blanks, tabs and line feeds anywhere are skipped, an exponent is accepted, reading stops at the
// first character that cannot continue the number. Empty or non-numeric text gives 0.
double LeadingNumber(QStringView text);

double FreqToDouble(QStringView mhzText); // Hz, 0 when out of band
double ValidateFreq(double hz);           // hz, or 0 when out of band
QString FreqToString(double hz);          // "40.500000"; "000.000000" for 0
QString BoolToString(bool b);             // "True" / "False"

bool Validate_Bool(QStringView text, bool def);
quint8 Validate_Byte(QStringView text, quint8 def, quint8 min, quint8 max);
qint16 Validate_Int(QStringView text, qint16 def, qint16 min, qint16 max);
qint32 Validate_Long(QStringView text, qint32 def, qint32 min, qint32 max);
double Validate_Dbl(QStringView text, double def, double min, double max);
QString ValidateFName(QString text);

// Waits the given time while the event loop keeps running (the window stays painted). Sleeps on
// the event loop with a timer; never spins.
void Delay(double seconds);

// Two- and three-digit key and number forms used throughout ("Channel01", "007").
QString Num2(int n);
QString Num3(int n);

} // namespace kestrel
