// SPDX-License-Identifier: GPL-3.0-or-later
// Frequency values, their text forms and the lenient validators.
#include "core/freq.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

using namespace kestrel;

class TestFreq : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void freqToDouble_data();
    void freqToDouble();
    void freqToString_data();
    void freqToString();
    void roundTrip();
    void validateBool_data();
    void validateBool();
    void validateInt_data();
    void validateInt();
    void widthsClampAlike();
    void validateFName_data();
    void validateFName();
    void delayKeepsEventsFlowing();
};

void TestFreq::freqToDouble_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("hz");
    QTest::newRow("lower band edge") << "25" << 25e6;
    QTest::newRow("just below band") << "24.999999" << 0.0;
    QTest::newRow("upper band edge") << "956" << 956e6;
    QTest::newRow("just above band") << "956.000001" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("not a number") << "abc" << 0.0;
    QTest::newRow("padded factory form") << "0040.5000" << 40.5e6;
    QTest::newRow("stops at unit") << "146.52 MHz" << 146.52e6;
    QTest::newRow("blank inside number") << "146 .52" << 146.52e6;
    QTest::newRow("tab and line feed skipped") << "\t1\n46.5\n2" << 146.52e6;
    QTest::newRow("carriage return ends number") << "146\r.52" << 146e6;
    QTest::newRow("exponent") << "1.4652E2" << 146.52e6;
    QTest::newRow("exponent without digits") << "146.52E" << 146.52e6;
    QTest::newRow("negative") << "-146.52" << 0.0;
    QTest::newRow("fraction only") << ".5E3" << 500e6;
    QTest::newRow("comma is not a decimal point") << "146,52" << 146e6;
    QTest::newRow("huge exponent") << "1E999999" << 0.0;
    QTest::newRow("sub-hertz fraction kept") << "419.99375" << 419.99375e6;
}

void TestFreq::freqToDouble() {
    QFETCH(QString, text);
    QFETCH(double, hz);
    QCOMPARE(FreqToDouble(text), hz);
}

void TestFreq::freqToString_data() {
    QTest::addColumn<double>("hz");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << 0.0 << "000.000000";
    QTest::newRow("40.5") << 40.5e6 << "40.500000";
    QTest::newRow("whole MHz") << 406e6 << "406.000000";
    QTest::newRow("five decimals") << 419993750.0 << "419.993750";
    QTest::newRow("band high") << 956e6 << "956.000000";
    QTest::newRow("above band") << 957e6 << "000.000000";
    QTest::newRow("below band") << 24999999.0 << "000.000000";
    QTest::newRow("negative") << -146.52e6 << "000.000000";
    QTest::newRow("never a run of nines") << 146520000.0 << "146.520000";
    QTest::newRow("sub-hertz rounds to six") << 146520000.4 << "146.520000";
}

void TestFreq::freqToString() {
    QFETCH(double, hz);
    QFETCH(QString, text);
    QCOMPARE(FreqToString(hz), text);
}

void TestFreq::roundTrip() {
    // Whole-hertz values across the band survive the text form and back.
    for (qint64 hz = 25'000'000; hz <= 956'000'000; hz += 999'937) {
        const double back = FreqToDouble(FreqToString(double(hz)));
        QCOMPARE(back, double(hz));
    }
}

void TestFreq::validateBool_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("def");
    QTest::addColumn<bool>("result");
    QTest::newRow("empty takes default true") << "" << true << true;
    QTest::newRow("empty takes default false") << "" << false << false;
    QTest::newRow("False over default") << "False" << true << false;
    QTest::newRow("True") << "True" << false << true;
    QTest::newRow("1") << "1" << false << true;
    QTest::newRow("T") << "T" << false << true;
    QTest::newRow("TRUE is case-sensitive") << "TRUE" << true << false;
    QTest::newRow("true lower") << "true" << true << false;
    QTest::newRow("yes") << "yes" << true << false;
}

void TestFreq::validateBool() {
    QFETCH(QString, text);
    QFETCH(bool, def);
    QFETCH(bool, result);
    QCOMPARE(Validate_Bool(text, def), result);
}

void TestFreq::validateInt_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("result");
    // default 7, max 10 throughout
    QTest::newRow("empty takes default") << "" << 0 << 7;
    QTest::newRow("below min clamps") << "-3" << 0 << 0;
    QTest::newRow("above max clamps") << "12" << 0 << 10;
    QTest::newRow("at max") << "10" << 0 << 10;
    QTest::newRow("half to even down") << "4.5" << 0 << 4;
    QTest::newRow("half to even up") << "3.5" << 0 << 4;
    QTest::newRow("2.5 gives 2") << "2.5" << 0 << 2;
    QTest::newRow("non-numeric counts as zero") << "x" << 1 << 1;
    QTest::newRow("non-numeric inside range") << "x" << -5 << 0;
    QTest::newRow("leading number only") << "6 dB" << 0 << 6;
}

void TestFreq::validateInt() {
    QFETCH(QString, text);
    QFETCH(int, min);
    QFETCH(int, result);
    QCOMPARE(int(Validate_Int(text, 7, qint16(min), 10)), result);
}

void TestFreq::widthsClampAlike() {
    QCOMPARE(Validate_Byte(u"300", 9, 0, 255), quint8(255));
    QCOMPARE(Validate_Byte(u"254.5", 9, 0, 255), quint8(254));
    QCOMPARE(Validate_Long(u"1E12", 0, 0, 2147483647), qint32(2147483647));
    QCOMPARE(Validate_Long(u"-1E12", 0, -2147483647 - 1, 0), qint32(-2147483647 - 1));
    QCOMPARE(Validate_Dbl(u"2.25", 0, 0, 10), 2.25); // not rounded
    QCOMPARE(Validate_Dbl(u"11", 0, 0, 10), 10.0);
}

void TestFreq::validateFName_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    QTest::newRow("separators") << "A/B:C*D"
                                << "A-B-C-D";
    QTest::newRow("every refused character") << "a\\b,c?d|e<f>g"
                                             << "a-b-c-d-e-f-g";
    QTest::newRow("double quotes") << "\"Fire\" Bank"
                                   << "'Fire' Bank";
    QTest::newRow("dots and blanks stay") << " Air. Band "
                                          << " Air. Band ";
    QTest::newRow("empty") << ""
                           << "";
}

void TestFreq::validateFName() {
    QFETCH(QString, text);
    QFETCH(QString, result);
    QCOMPARE(ValidateFName(text), result);
}

void TestFreq::delayKeepsEventsFlowing() {
    // A timer due during the wait fires inside it; the wait itself lasts the time asked.
    bool fired = false;
    QTimer::singleShot(20, this, [&] { fired = true; });
    QElapsedTimer t;
    t.start();
    Delay(0.15);
    QVERIFY(fired);
    QVERIFY(t.elapsed() >= 140);
}

QTEST_GUILESS_MAIN(TestFreq)
#include "tst_freq.moc"
