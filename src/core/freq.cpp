// SPDX-License-Identifier: GPL-3.0-or-later
#include "freq.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <thread>

namespace kestrel {

namespace {

// Blanks, tabs and line feeds are skipped anywhere in a number; a carriage return is not.
bool isBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n');
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// Rounds into [min, max] the way the validators do: the ends clamp, a half goes to the even
// neighbour.
template <typename T> T clampRound(double v, T min, T max) {
    if (v <= min)
        return min;
    if (v >= max)
        return max;
    return static_cast<T>(std::nearbyint(v)); // default rounding mode: half to even
}

} // namespace

double LeadingNumber(QStringView text) {
    // Collect the number's characters, skipping blanks, then convert without the locale.
    std::string num;
    num.reserve(32);
    qsizetype i = 0;
    const qsizetype n = text.size();
    auto skip = [&] {
        while (i < n && isBlank(text[i]))
            ++i;
    };
    skip();
    if (i < n && (text[i] == QLatin1Char('-') || text[i] == QLatin1Char('+'))) {
        if (text[i] == QLatin1Char('-'))
            num.push_back('-');
        ++i;
    }
    bool anyDigit = false;
    for (skip(); i < n && isDigit(text[i]); skip()) {
        num.push_back(char(text[i++].unicode()));
        anyDigit = true;
    }
    if (i < n && text[i] == QLatin1Char('.')) {
        num.push_back('.');
        ++i;
        for (skip(); i < n && isDigit(text[i]); skip()) {
            num.push_back(char(text[i++].unicode()));
            anyDigit = true;
        }
    }
    if (!anyDigit)
        return 0;
    if (i < n && (text[i] == QLatin1Char('E') || text[i] == QLatin1Char('e'))) {
        // The exponent counts only when digits follow it.
        qsizetype j = i + 1;
        std::string exp = "e";
        while (j < n && isBlank(text[j]))
            ++j;
        if (j < n && (text[j] == QLatin1Char('-') || text[j] == QLatin1Char('+')))
            exp.push_back(char(text[j++].unicode()));
        bool expDigit = false;
        for (; j < n; ++j) {
            if (isBlank(text[j]))
                continue;
            if (!isDigit(text[j]))
                break;
            exp.push_back(char(text[j].unicode()));
            expDigit = true;
        }
        if (expDigit)
            num += exp;
    }
    double v = 0;
    auto [ptr, ec] = std::from_chars(num.data(), num.data() + num.size(), v);
    if (ec == std::errc::result_out_of_range) {
        // Too large in magnitude: infinity, so frequencies fall out of band and integers clamp.
        // Too small: zero.
        const bool negative = !num.empty() && num.front() == '-';
        const bool tiny = num.find("e-") != std::string::npos;
        if (tiny)
            return 0;
        return negative ? -std::numeric_limits<double>::infinity()
                        : std::numeric_limits<double>::infinity();
    }
    return v;
}

double ValidateFreq(double hz) {
    if (!(hz >= kBandLowHz))
        return 0;
    if (hz > kBandHighHz)
        return 0;
    return hz;
}

double FreqToDouble(QStringView mhzText) {
    return ValidateFreq(LeadingNumber(mhzText) * 1000000.0);
}

QString FreqToString(double hz) {
    const double f = ValidateFreq(hz);
    if (f == 0)
        return QStringLiteral("000.000000");
    // Shortest decimal text of at most 15 significant digits, as the files have always held it.
    QString text = QString::number(f * 0.000001, 'g', 15);
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    if (dot < 0)
        return text + QStringLiteral(".000000");
    const qsizetype decimals = text.size() - dot - 1;
    if (decimals > 6) // not a whole number of hertz: keep the six-decimal form of the files
        return QString::number(f * 0.000001, 'f', 6);
    return text + QString(6 - decimals, QLatin1Char('0'));
}

QString BoolToString(bool b) {
    return b ? QStringLiteral("True") : QStringLiteral("False");
}

bool Validate_Bool(QStringView text, bool def) {
    if (text.isEmpty())
        return def;
    return text == u"True" || text == u"1" || text == u"T";
}

quint8 Validate_Byte(QStringView text, quint8 def, quint8 min, quint8 max) {
    return text.isEmpty() ? def : clampRound<quint8>(LeadingNumber(text), min, max);
}

qint16 Validate_Int(QStringView text, qint16 def, qint16 min, qint16 max) {
    return text.isEmpty() ? def : clampRound<qint16>(LeadingNumber(text), min, max);
}

qint32 Validate_Long(QStringView text, qint32 def, qint32 min, qint32 max) {
    return text.isEmpty() ? def : clampRound<qint32>(LeadingNumber(text), min, max);
}

double Validate_Dbl(QStringView text, double def, double min, double max) {
    if (text.isEmpty())
        return def;
    const double v = LeadingNumber(text);
    if (v <= min)
        return min;
    if (v >= max)
        return max;
    return v;
}

QString ValidateFName(QString text) {
    for (QChar& c : text) {
        switch (c.unicode()) {
        case '/':
        case '\\':
        case ':':
        case ',':
        case '*':
        case '?':
        case '|':
        case '<':
        case '>':
            c = QLatin1Char('-');
            break;
        case '"':
            c = QLatin1Char('\'');
            break;
        default:
            break;
        }
    }
    return text;
}

void Delay(double seconds) {
    if (!(seconds > 0))
        return;
    const int ms = int(std::lround(seconds * 1000.0));
    if (!QCoreApplication::instance()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(ms));
        return;
    }
    QEventLoop loop;
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

QString Num2(int n) {
    return n < 0 ? QString::asprintf("%02d", n)
                 : QString::number(n).rightJustified(2, QLatin1Char('0'));
}
QString Num3(int n) {
    return n < 0 ? QString::asprintf("%03d", n)
                 : QString::number(n).rightJustified(3, QLatin1Char('0'));
}

} // namespace kestrel
