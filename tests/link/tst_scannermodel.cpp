// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated scanner's handling of received bytes: frame checks, answers per cable, the
// error codes it shows and the memory it keeps.
#include "link/frames.h"
#include "link/scannermodel.h"

#include "core/freq.h"

#include <QTest>

using namespace kestrel;

namespace {

QByteArray channelFrame(int n, double hz, bool d, bool p, bool l) {
    return BuildChanStr(quint8(n), Freq2Str(hz), d, p, l);
}

// Feeds the bytes one at a time, as a slow line would deliver them.
QList<ScannerModel::Outcome> trickle(ScannerModel& m, const QByteArray& bytes) {
    QList<ScannerModel::Outcome> all;
    for (char c : bytes)
        all += m.receive(QByteArray(1, c));
    return all;
}

} // namespace

class TestScannerModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersPerCable_data() {
        QTest::addColumn<int>("cable");
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<QString>("shown");
        const QByteArray ch = channelFrame(161, 46'610'000, false, false, true);
        const QByteArray sr = BuildSearchStr(10, Freq2Str(25e6), Freq2Str(50e6));
        for (int cable : {2, 3}) {
            QTest::addRow("start %d", cable) << cable << BuildStartCom() << "Start";
            QTest::addRow("channel %d", cable) << cable << ch << "C161^F046.6100^LS^PR^DR";
            QTest::addRow("search %d", cable) << cable << sr << "J10^W025.0000^U050.0000";
            QTest::addRow("stop %d", cable) << cable << BuildStopCom() << "End";
        }
    }
    void answersPerCable() {
        QFETCH(int, cable);
        QFETCH(QByteArray, frame);
        QFETCH(QString, shown);
        ScannerModel m(cable);
        const auto out = trickle(m, frame);
        QCOMPARE(out.size(), 1);
        QCOMPARE(out[0].display.value(0), shown);
        // A three-wire cable carries an answer as long as the frame; a two-wire one none.
        QCOMPARE(out[0].answer.size(), cable == 3 ? frame.size() : 0);
    }

    void brokenFrames_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("shown");
        QByteArray badSum = channelFrame(5, 146.52e6, false, false, false);
        badSum[10] = '7';
        QByteArray badLength = channelFrame(5, 146.52e6, false, false, false);
        badLength[1] = char(0x19);
        badLength.chop(1);
        badLength += BuildCRC(badLength);
        QByteArray badText = channelFrame(5, 146.52e6, false, false, false);
        badText[4] = 'X';
        badText.chop(1);
        badText += BuildCRC(badText);
        QTest::newRow("checksum") << badSum << "S-Err 1";
        QTest::newRow("length byte") << badLength << "L-Err 1";
        QTest::newRow("unknown command") << QByteArray::fromHex("81 04 07 00 00 F5") << "C-Err 1";
        QTest::newRow("bad channel text") << badText << "d-Err 1";
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
        const auto next = m.receive(channelFrame(6, 40.5e6, false, false, false));
        QCOMPARE(next.size(), 1);
        QCOMPARE(next[0].display.value(0), QStringLiteral("C006^F040.5000^LR^PR^DR"));
        QCOMPARE(next[0].answer.size(), 28);
    }

    void noiseBeforeMarkerIsSkipped() {
        ScannerModel m(3);
        const auto out = m.receive(QByteArray("\x00\x13zz", 4) + BuildStartCom());
        QCOMPARE(out.size(), 1);
        QCOMPARE(out[0].display.value(0), QStringLiteral("Start"));
    }

    void unfinishedFrameTimesOut() {
        ScannerModel m(3);
        m.receive(BuildStartCom());
        QVERIFY(m.receive(channelFrame(1, 40.5e6, false, false, false).left(10)).isEmpty());
        QVERIFY(m.partial());
        const auto out = m.timeout();
        QCOMPARE(out.size(), 1);
        QCOMPARE(out[0].display.value(0), QStringLiteral("T-Err 1"));
        QVERIFY(!m.partial());
    }

    void stopsAnsweringAfterN() {
        ScannerModel m(3);
        m.setStopAfter(2);
        const auto out = m.receive(BuildStartCom() + channelFrame(1, 40.5e6, false, false, false) +
                                   channelFrame(2, 40.5e6, false, false, false));
        QCOMPARE(out.size(), 3);
        QVERIFY(!out[0].answer.isEmpty());
        QVERIFY(!out[1].answer.isEmpty());
        QVERIFY(out[2].answer.isEmpty());
        QCOMPARE(out[2].display.value(0), QStringLiteral("C002^F040.5000^LR^PR^DR"));
    }

    void stopFrameDumpsMemory() {
        ScannerModel m(2);
        const QByteArray upload =
            BuildStartCom() + channelFrame(161, 46'610'000, true, false, true) +
            BuildSearchStr(3, Freq2Str(137e6), Freq2Str(144e6)) + BuildStopCom();
        const auto out = m.receive(upload);
        QCOMPARE(out.size(), 4);
        const QStringList dump = out[3].display.mid(1);
        QCOMPARE(dump.size(), 210);
        QCOMPARE(dump[160], QStringLiteral("161,") + FreqToString(46'610'000) +
                                QStringLiteral(",,False,True,True"));
        QCOMPARE(dump[0],
                 QStringLiteral("001,") + FreqToString(0) + QStringLiteral(",,False,False,False"));
        QCOMPARE(dump[202], QStringLiteral("03,") + FreqToString(137e6) + QLatin1Char(',') +
                                FreqToString(144e6) + QLatin1Char(','));
        QCOMPARE(m.channel(161).Freq, 46'610'000.0);
        QVERIFY(m.channel(161).Delay && m.channel(161).Lockout && !m.channel(161).Priority);
    }
};

QTEST_GUILESS_MAIN(TestScannerModel)
#include "tst_scannermodel.moc"
