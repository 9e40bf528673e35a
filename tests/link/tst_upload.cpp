// SPDX-License-Identifier: GPL-3.0-or-later
// The command frames byte for byte (checksum included), the frequency text, and the simulated
// scanner's checks of what it receives. Then uploads end to end: the link control on one side of
// a real pseudo-terminal, the simulated scanner on the other. Most cases shorten every wait a
// hundredfold; one runs in real time.
#include "linktestutil.h"

#include "link/frames.h"
#include "link/kestrelcomm.h"
#include "link/scannermodel.h"
#include "link/scannersim.h"

#include "core/appcontext.h"
#include "core/freq.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

enum Kind { All, Bank, Search };

QByteArray hex(const char* pairs) {
    return QByteArray::fromHex(pairs);
}

struct Rig {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Ok};
    AppContext ctx{dir.path(), &prompts};
    ScannerSimulator sim;
    KestrelComm link{ctx};

    explicit Rig(ScannerSimulator::Options opt, int cable, double scale = 0.01) : sim(opt) {
        fillProfile(ctx);
        if (!sim.start())
            qFatal("no pseudo-terminal: %s", qPrintable(sim.errorString()));
        link.setCommPort(3);
        PortMap map;
        map.setOverride(3, sim.devicePath());
        link.setPortMap(map);
        link.setCableType(cable);
        link.setTimeScale(scale);
    }

    void run(Kind kind, int bank = 0) {
        kind == All    ? link.SendAllChannels()
        : kind == Bank ? link.SendBank(quint8(bank))
                       : link.SendSearch();
    }

    // Lets the simulator take the bytes still on their way (two-wire uploads do not wait).
    void settle() { QTRY_VERIFY_WITH_TIMEOUT(sim.lines().contains(u"End"_s), 5000); }
};

QList<int> progress(const QSignalSpy& spy) {
    QList<int> n;
    for (const QList<QVariant>& args : spy)
        n << args.at(0).toInt();
    return n;
}

QList<int> range(int first, int last) {
    QList<int> r;
    for (int i = first; i <= last; ++i)
        r << i;
    return r;
}

} // namespace

class TestUpload : public QObject {
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

    void uploads_data() {
        QTest::addColumn<int>("cable");
        QTest::addColumn<bool>("split");
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("bank");
        for (int cable : {2, 3}) {
            for (bool split : {false, true}) {
                if (split && cable == 2)
                    continue;
                const char* s = split ? " in pieces" : "";
                QTest::addRow("all, cable %d%s", cable, s) << cable << split << int(All) << 0;
                QTest::addRow("bank 10, cable %d%s", cable, s) << cable << split << int(Bank) << 10;
                QTest::addRow("search, cable %d%s", cable, s) << cable << split << int(Search) << 0;
            }
        }
    }
    void uploads() {
        QFETCH(int, cable);
        QFETCH(bool, split);
        QFETCH(int, kind);
        QFETCH(int, bank);
        ScannerSimulator::Options opt = instantScanner(cable);
        opt.split = split;
        Rig rig(opt, cable);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        QSignalSpy chans(&rig.link, &KestrelComm::SendingChnl);
        QSignalSpy srchs(&rig.link, &KestrelComm::SendingSrch);

        rig.run(Kind(kind), bank);
        rig.settle();

        QCOMPARE(timeouts.count(), 0);
        QVERIFY(!rig.link.ComPortOpen());
        QVERIFY(!rig.link.busy());
        QCOMPARE(rig.prompts.messages().size(), 0);
        const ProfileRec& p = rig.ctx.cur();
        const ScannerModel& scanner = rig.sim.model();
        if (kind == Search) {
            QCOMPARE(progress(srchs), range(1, 10));
            QCOMPARE(chans.count(), 0);
            for (int r = 1; r <= SearchCount; ++r) {
                QCOMPARE(scanner.search(r).Lower, FreqToDouble(Freq2Str(p.Searches[r].Lower)));
                QCOMPARE(scanner.search(r).Upper, FreqToDouble(Freq2Str(p.Searches[r].Upper)));
            }
            QCOMPARE(rig.sim.model().framesReceived(), 12);
        } else {
            const int first = kind == Bank ? ChannelNumber(bank, 1) : 1;
            const int last = kind == Bank ? ChannelNumber(bank, 20) : ChannelCount;
            QCOMPARE(progress(chans), range(first, last));
            QCOMPARE(srchs.count(), 0);
            for (int n = 1; n <= ChannelCount; ++n) {
                const ChannelRec& sent = p.Banks[BankOfChannel(n)].Chans[SlotOfChannel(n)];
                const ChannelRec& held = scanner.channel(n);
                if (n < first || n > last) {
                    QCOMPARE(held.Freq, 0.0);
                    continue;
                }
                QCOMPARE(held.Freq, FreqToDouble(Freq2Str(sent.Freq)));
                QVERIFY(held.Delay == sent.Delay && held.Priority == sent.Priority &&
                        held.Lockout == sent.Lockout);
            }
            QCOMPARE(rig.sim.model().framesReceived(), last - first + 3);
        }
        // Nothing the scanner could not read.
        for (const QString& l : rig.sim.lines())
            QVERIFY2(!l.contains(u"-Err"_s), qPrintable(l));
    }

    void missingAnswer_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("stopAfter");
        QTest::addColumn<int>("framesSeen");
        QTest::addColumn<int>("progressEvents");
        QTest::newRow("start frame, all") << int(All) << 0 << 1 << 0;
        QTest::newRow("channel frame 6") << int(All) << 6 << 7 << 6;
        QTest::newRow("search frame 10") << int(Search) << 10 << 11 << 10;
    }
    void missingAnswer() {
        QFETCH(int, kind);
        QFETCH(int, stopAfter);
        QFETCH(int, framesSeen);
        QFETCH(int, progressEvents);
        ScannerSimulator::Options opt = instantScanner(3);
        opt.stopAfter = stopAfter;
        Rig rig(opt, 3);
        rig.link.setInDebug(true);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        QSignalSpy chans(&rig.link, &KestrelComm::SendingChnl);
        QSignalSpy srchs(&rig.link, &KestrelComm::SendingSrch);
        QSignalSpy debug(&rig.link, &KestrelComm::DebugInfo);
        QElapsedTimer clock;
        clock.start();
        rig.run(Kind(kind), 2);
        QCOMPARE(timeouts.count(), 1);
        QVERIFY(!rig.link.ComPortOpen());
        // Twelve seconds scaled down: the deadline, not some shorter guess, ended the wait.
        QVERIFY(clock.elapsed() >= 120);
        QTest::qWait(50);
        QCOMPARE(rig.sim.model().framesReceived(), framesSeen);
        QCOMPARE(chans.count() + srchs.count(), progressEvents);
        QCOMPARE(debug.last().at(0).toInt(), 1);
        QCOMPARE(debug.last().at(1).toString(), u"<< Rx TimedOut..."_s);
    }

    void portVanishes_data() {
        QTest::addColumn<int>("cable");
        QTest::newRow("three-wire") << 3;
        QTest::newRow("two-wire") << 2;
    }
    void portVanishes() {
        QFETCH(int, cable);
        ScannerSimulator::Options opt = instantScanner(cable);
        opt.vanishAfter = 4;
        Rig rig(opt, cable, 0.05);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        QSignalSpy chans(&rig.link, &KestrelComm::SendingChnl);
        QElapsedTimer clock;
        clock.start();
        rig.link.SendAllChannels();
        QCOMPARE(timeouts.count(), 1);
        QVERIFY(!rig.link.ComPortOpen());
        QVERIFY(!rig.link.busy());
        QVERIFY(chans.count() < 10);
        // The link noticed the loss; it did not sit out the 12 s (scaled: 600 ms) deadline.
        if (cable == 3)
            QVERIFY2(clock.elapsed() < 600, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(rig.prompts.messages().size(), 0);
        // A later upload on the vanished port reports the port and times out once more.
        rig.link.SendBank(1);
        QCOMPARE(timeouts.count(), 2);
        QCOMPARE(rig.prompts.messages().size(), 1);
        QVERIFY(rig.prompts.messages()[0].text.startsWith(u"PortOpen: "_s));
        QCOMPARE(rig.prompts.messages()[0].icon, Icon::Critical);
    }

    // Real time, real line speed: a single bank paces 0.5 s after each of its 22 frames.
    void singleBankInRealTime() {
        ScannerSimulator::Options opt;
        opt.cable = 3;
        Rig rig(opt, 3, 1.0);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        QElapsedTimer clock;
        clock.start();
        rig.link.SendBank(4);
        const double seconds = clock.nsecsElapsed() / 1e9;
        const double wire = (2 * 6 + 20 * 28) * 2 * ScannerSimulator::kByteSeconds;
        QCOMPARE(timeouts.count(), 0);
        QCOMPARE(rig.sim.model().framesReceived(), 22);
        QVERIFY2(seconds >= 22 * 0.5 + wire, qPrintable(QString::number(seconds)));
        QCOMPARE(rig.sim.model().channel(61).Freq,
                 FreqToDouble(Freq2Str(rig.ctx.cur().Banks[4].Chans[1].Freq)));
    }
};

QTEST_GUILESS_MAIN(TestUpload)
#include "tst_upload.moc"
