// SPDX-License-Identifier: GPL-3.0-or-later
// Uploads end to end: the link control on one side of a real pseudo-terminal, the simulated
// scanner on the other. Most cases shorten every wait a hundredfold; one runs in real time.
#include "linktestutil.h"

#include "link/frames.h"
#include "link/kestrelcomm.h"
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

ScannerSimulator::Options fast(int cable) {
    ScannerSimulator::Options o;
    o.cable = cable;
    o.wireScale = 0;
    return o;
}

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
        ScannerSimulator::Options opt = fast(cable);
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
        ScannerSimulator::Options opt = fast(3);
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
        ScannerSimulator::Options opt = fast(cable);
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
