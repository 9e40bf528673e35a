// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated scanner's checks of what it receives and its refusal to answer on request.
#include "link/frames.h"
#include "link/scannermodel.h"

#include <QTest>

using namespace kestrel;

namespace {

QByteArray channelFrame(int n, double hz, bool d, bool p, bool l) {
    return BuildChanStr(quint8(n), Freq2Str(hz), d, p, l);
}

} // namespace

class TestScannerModel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void brokenFrames_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("shown");
        QByteArray badSum = channelFrame(5, 146.52e6, false, false, false);
        badSum[10] = '7';
        QByteArray badLength = channelFrame(5, 146.52e6, false, false, false);
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
        const auto next = m.receive(channelFrame(6, 40.5e6, false, false, false));
        QCOMPARE(next.size(), 1);
        QCOMPARE(next[0].display.value(0), QStringLiteral("C006^F040.5000^LR^PR^DR"));
        QCOMPARE(next[0].answer.size(), 28);
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
};

QTEST_GUILESS_MAIN(TestScannerModel)
#include "tst_scannermodel.moc"
