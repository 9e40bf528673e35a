// SPDX-License-Identifier: GPL-3.0-or-later
#include "entry.h"

#include "freq.h"

#include <QList>
#include <QRegularExpression>

namespace kestrel {

namespace {

bool refuse(QString* reason, const QString& text) {
    if (reason)
        *reason = text;
    return false;
}

QString quoted(QStringView text) {
    return QLatin1Char('"') + text.toString() + QLatin1Char('"');
}

bool checkFlag(QStringView text, const char* name, QString* reason) {
    static const QStringList flags = {QStringLiteral("True"), QStringLiteral("False"),
                                      QStringLiteral("T"),    QStringLiteral("F"),
                                      QStringLiteral("1"),    QStringLiteral("0")};
    if (text.isEmpty() || flags.contains(text.toString()))
        return true;
    return refuse(reason, QString::fromLatin1(name) +
                              QStringLiteral(" must be True or False, not ") + quoted(text));
}

} // namespace

std::optional<double> TypedFreq(QStringView text, QString* reason) {
    static const QRegularExpression number(QStringLiteral("^(\\d+\\.?\\d*|\\.\\d+)$"));
    const QString t = text.trimmed().toString();
    if (t.isEmpty())
        return 0.0;
    if (number.match(t).hasMatch()) {
        const double mhz = t.toDouble();
        if (mhz == 0)
            return 0.0;
        const double hz = mhz * 1e6;
        if (hz >= kBandLowHz && hz <= kBandHighHz)
            return hz;
    }
    refuse(reason,
           quoted(t) + QStringLiteral(" is not a frequency the scanner can take: type megahertz "
                                      "within its band of 25 to 956 MHz, or 0 for none."));
    return std::nullopt;
}

bool CheckDescLength(QStringView text, QString* reason) {
    if (text.size() <= kDescMax)
        return true;
    return refuse(reason, QStringLiteral("a description holds at most ") +
                              QString::number(kDescMax) + QStringLiteral(" characters, this one ") +
                              QString::number(text.size()));
}

QString ImportedDesc(QString text) {
    text.replace(QLatin1Char(','), QLatin1Char(';'));
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    text.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

bool CheckTypedDesc(QStringView text, QString* reason) {
    if (!CheckDescLength(text, reason))
        return false;
    if (text.contains(QLatin1Char(',')))
        return refuse(reason, QStringLiteral("a description cannot hold a comma: the bank file "
                                             "separates its fields with commas"));
    if (text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r')))
        return refuse(reason, QStringLiteral("a description cannot hold a line break"));
    return true;
}

bool CheckChannelLine(QStringView line, QString* reason) {
    const QList<QStringView> f = line.split(QLatin1Char(','));
    if (f.size() != 5)
        return refuse(reason, QStringLiteral("a channel line has 5 fields (frequency, "
                                             "description, Priority, Delay, Lockout), this one ") +
                                  QString::number(f.size()));
    return TypedFreq(f[0], reason).has_value() && CheckTypedDesc(f[1], reason) &&
           checkFlag(f[2], "Priority", reason) && checkFlag(f[3], "Delay", reason) &&
           checkFlag(f[4], "Lockout", reason);
}

bool CheckSearchLine(QStringView line, QString* reason) {
    const QList<QStringView> f = line.split(QLatin1Char(','));
    if (f.size() != 3)
        return refuse(reason, QStringLiteral("a search line has 3 fields (lower, upper, "
                                             "description), this one ") +
                                  QString::number(f.size()));
    return TypedFreq(f[0], reason).has_value() && TypedFreq(f[1], reason).has_value() &&
           CheckTypedDesc(f[2], reason);
}

} // namespace kestrel
