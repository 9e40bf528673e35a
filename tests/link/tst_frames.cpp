// SPDX-License-Identifier: GPL-3.0-or-later
// The command frames byte for byte (checksum included), the frequency text, and the simulated
// scanner's checks of what it receives.
#include "link/frames.h"
#include "link/scannermodel.h"

#include <QTest>

using namespace kestrel;
using namespace Qt::StringLiterals;

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

    void freqText_data() {
        QTest::addColumn<double>("hz");
        QTest::addColumn<QString>("text");
        QTest::newRow("band high") << 956'000'000.0 << "956.0000";
        QTest::newRow("tie rounds up") << 406'006'250.0 << "406.0063";
        QTest::newRow("raster tie") << 419'993'750.0 << "419.9938";
        QTest::newRow("below tie") << 406'006'249.0 << "406.0062";
        QTest::newRow("carry into MHz") << 99'999'950.0 << "100.0000";
        QTest::newRow("negative tie away from zero") << -406'006'250.0 << "-406.0063";
    }
    void freqText() {
        QFETCH(double, hz);
        QFETCH(QString, text);
        QCOMPARE(Freq2Str(hz), text);
    }

    // The simulated scanner refuses a frame with a wrong checksum or length, then goes on.
    void brokenFrames_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("shown");
        QByteArray badSum = BuildChanStr(5, Freq2Str(146.52e6), false, false, false);
        badSum[10] = '7';
        QByteArray badLength = BuildChanStr(5, Freq2Str(146.52e6), false, false, false);
        badLength[1] = char(0x19);
        badLength.chop(1);
        badLength += BuildCRC(badLength);
        QTest::newRow("checksum") << badSum << "S-Err 1";
        QTest::newRow("length byte") << badLength << "L-Err 1";
    }
    void brokenFrames() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, shown);
        ScannerModel m(3);
        m.receive(BuildStartCom());
        const auto out = m.receive(bytes);
        QVERIFY(!out.isEmpty());
        QCOMPARE(out[0].display.value(0), shown);
        QVERIFY(out[0].answer.isEmpty());
        // The next good frame is understood again.
        const auto next = m.receive(BuildChanStr(6, Freq2Str(40.5e6), false, false, false));
        QCOMPARE(next.size(), 1);
        QCOMPARE(next[0].display.value(0), u"C006^F040.5000^LR^PR^DR"_s);
        QCOMPARE(next[0].answer.size(), 28);
    }
};

QTEST_GUILESS_MAIN(TestFrames)
#include "tst_frames.moc"
