// SPDX-License-Identifier: GPL-3.0-or-later
// The command frames byte for byte, their checksum and the frequency text.
#include "link/frames.h"

#include "core/errors.h"

#include <QTest>

using namespace kestrel;

namespace {
QByteArray hex(const char* pairs) {
    return QByteArray::fromHex(pairs);
}
} // namespace

class TestFrames : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void workedFrames_data() {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("start") << BuildStartCom() << hex("81 04 01 01 00 FA");
        QTest::newRow("stop") << BuildStopCom() << hex("81 04 02 00 00 FA");
        QTest::newRow("channel 161") << BuildChanStr(161, Freq2Str(46'610'000), false, false, true)
                                     << hex("81 1A 10 00 43 31 36 31 5E 46 30 34 36 2E 36 31 30 30 "
                                            "5E 4C 53 5E 50 52 5E 44 52 D7");
        QTest::newRow("channel 1")
            << BuildChanStr(1, Freq2Str(40'500'000), false, false, false)
            << hex("81 1A 10 00 43 30 30 31 5E 46 30 34 30 2E 35 30 30 30 5E "
                   "4C 52 5E 50 52 5E 44 52 E7");
        QTest::newRow("search 1")
            << BuildSearchStr(1, Freq2Str(25'000'000), Freq2Str(50'000'000))
            << hex("81 19 32 00 4A 31 5E 57 30 32 35 2E 30 30 30 30 5E 55 30 35 30 2E 30 30 30 30 "
                   "CA");
        QTest::newRow("search 10")
            << BuildSearchStr(10, Freq2Str(25'000'000), Freq2Str(50'000'000))
            << hex("81 1A 32 00 4A 31 30 5E 57 30 32 35 2E 30 30 30 30 5E 55 30 35 30 2E 30 30 30 "
                   "30 99");
    }
    void workedFrames() {
        QFETCH(QByteArray, frame);
        QFETCH(QByteArray, expected);
        QCOMPARE(FrameToHex(frame), FrameToHex(expected));
    }

    void channelText_data() {
        QTest::addColumn<int>("channel");
        QTest::addColumn<double>("hz");
        QTest::addColumn<bool>("delay");
        QTest::addColumn<bool>("priority");
        QTest::addColumn<bool>("lockout");
        QTest::addColumn<QString>("text");
        QTest::newRow("1 empty") << 1 << 0.0 << false << false << false
                                 << "C001^F000.0000^LR^PR^DR";
        QTest::newRow("20") << 20 << 462'562'500.0 << true << false << false
                            << "C020^F462.5625^LR^PR^DS";
        QTest::newRow("21") << 21 << 146'520'000.0 << false << true << false
                            << "C021^F146.5200^LR^PS^DR";
        QTest::newRow("200") << 200 << 955'999'900.0 << true << true << true
                             << "C200^F955.9999^LS^PS^DS";
        // Every switch lands in its own place whatever the others are.
        for (int bits = 0; bits < 8; ++bits) {
            const bool d = bits & 1, p = bits & 2, l = bits & 4;
            QTest::addRow("switches %d", bits)
                << 7 << 25'000'000.0 << d << p << l
                << QStringLiteral("C007^F025.0000^L%1^P%2^D%3")
                       .arg(QChar(l ? 'S' : 'R'), QChar(p ? 'S' : 'R'), QChar(d ? 'S' : 'R'));
        }
    }
    void channelText() {
        QFETCH(int, channel);
        QFETCH(double, hz);
        QFETCH(bool, delay);
        QFETCH(bool, priority);
        QFETCH(bool, lockout);
        QFETCH(QString, text);
        const QByteArray frame =
            BuildChanStr(quint8(channel), Freq2Str(hz), delay, priority, lockout);
        QCOMPARE(frame.size(), 28);
        QCOMPARE(quint8(frame[0]), quint8(0x81));
        QCOMPARE(quint8(frame[1]), quint8(0x1A));
        QCOMPARE(QString::fromLatin1(frame.mid(4, 23)), text);
        checksumCloses(frame);
    }

    void searchLength_data() {
        QTest::addColumn<int>("range");
        QTest::addColumn<int>("lengthByte");
        QTest::addColumn<int>("size");
        for (int r = 1; r <= 10; ++r)
            QTest::addRow("range %d", r) << r << (r == 10 ? 0x1A : 0x19) << (r == 10 ? 28 : 27);
    }
    void searchLength() {
        QFETCH(int, range);
        QFETCH(int, lengthByte);
        QFETCH(int, size);
        // An inverted range goes out as it stands.
        const QByteArray frame =
            BuildSearchStr(quint8(range), Freq2Str(50'000'000), Freq2Str(25'000'000));
        QCOMPARE(frame.size(), size);
        QCOMPARE(int(quint8(frame[1])), lengthByte);
        QVERIFY(frame.contains("^W050.0000^U025.0000"));
        checksumCloses(frame);
    }

    void crc_data() {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("crc");
        QTest::newRow("marker not counted") << hex("81 04 01 01 00") << 0xFA;
        QTest::newRow("sum of zero") << hex("81 00") << 0x00;
        QTest::newRow("multiple of 256") << hex("81 80 70 10") << 0x00;
        QTest::newRow("wraps") << hex("81 FF 02") << 0xFF;
        QTest::newRow("one") << hex("81 FF") << 0x01;
    }
    void crc() {
        QFETCH(QByteArray, body);
        QFETCH(int, crc);
        const QByteArray c = BuildCRC(body);
        QCOMPARE(c.size(), 1);
        QCOMPARE(int(quint8(c[0])), crc);
    }

    void freqText_data() {
        QTest::addColumn<double>("hz");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero") << 0.0 << "000.0000";
        QTest::newRow("band low") << 25'000'000.0 << "025.0000";
        QTest::newRow("band high") << 956'000'000.0 << "956.0000";
        QTest::newRow("four decimals") << 462'562'500.0 << "462.5625";
        QTest::newRow("no run of nines") << 146'520'000.0 << "146.5200";
        QTest::newRow("46.61") << 46'610'000.0 << "046.6100";
        QTest::newRow("tie rounds up") << 406'006'250.0 << "406.0063";
        QTest::newRow("raster tie") << 419'993'750.0 << "419.9938";
        QTest::newRow("below tie") << 406'006'249.0 << "406.0062";
        QTest::newRow("fraction below tie") << 406'006'249.75 << "406.0062";
        QTest::newRow("above tie") << 406'006'251.0 << "406.0063";
        QTest::newRow("carry into MHz") << 99'999'950.0 << "100.0000";
        QTest::newRow("negative tie away from zero") << -406'006'250.0 << "-406.0063";
    }
    void freqText() {
        QFETCH(double, hz);
        QFETCH(QString, text);
        QCOMPARE(Freq2Str(hz), text);
    }

    void freqTextRejectsNonNumbers() {
        QVERIFY_THROWS_EXCEPTION(KestrelError, Freq2Str(std::numeric_limits<double>::quiet_NaN()));
        QVERIFY_THROWS_EXCEPTION(KestrelError, Freq2Str(std::numeric_limits<double>::infinity()));
    }

private:
    static void checksumCloses(const QByteArray& frame) {
        int sum = 0;
        for (qsizetype i = 1; i < frame.size(); ++i)
            sum += quint8(frame[i]);
        QCOMPARE(sum % 256, 0);
    }
};

QTEST_GUILESS_MAIN(TestFrames)
#include "tst_frames.moc"
