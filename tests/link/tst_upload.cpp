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
#include <QTimer>

#include <ctime>

using namespace kestrel;
using namespace kestrel::test;

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
        switch (kind) {
        case All:
            link.SendAllChannels();
            break;
        case Bank:
            link.SendBank(quint8(bank));
            break;
        case Search:
            link.SendSearch();
            break;
        }
    }

    // Lets the simulator take the bytes still on their way (two-wire uploads do not wait).
    void settle() { QTRY_VERIFY_WITH_TIMEOUT(sim.lines().contains(QStringLiteral("End")), 5000); }
};

ScannerSimulator::Options fast(int cable) {
    ScannerSimulator::Options o;
    o.cable = cable;
    o.wireScale = 0;
    return o;
}

QList<int> progress(const QSignalSpy& spy) {
    QList<int> numbers;
    for (const QList<QVariant>& args : spy)
        numbers << args.at(0).toInt();
    return numbers;
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
                QTest::addRow("bank 3, cable %d%s", cable, s) << cable << split << int(Bank) << 3;
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
                QCOMPARE(held.Delay, sent.Delay);
                QCOMPARE(held.Priority, sent.Priority);
                QCOMPARE(held.Lockout, sent.Lockout);
            }
            QCOMPARE(rig.sim.model().framesReceived(), last - first + 3);
        }
        // Nothing the scanner could not read.
        for (const QString& l : rig.sim.lines())
            QVERIFY2(!l.contains(QStringLiteral("-Err")), qPrintable(l));
    }

    void missingAnswer_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("stopAfter");
        QTest::addColumn<int>("framesSeen");
        QTest::addColumn<int>("progressEvents");
        QTest::newRow("start frame, all") << int(All) << 0 << 1 << 0;
        QTest::newRow("start frame, search") << int(Search) << 0 << 1 << 0;
        QTest::newRow("channel frame 6") << int(All) << 6 << 7 << 6;
        QTest::newRow("channel frame 1 of bank") << int(Bank) << 1 << 2 << 1;
        QTest::newRow("search frame 10") << int(Search) << 10 << 11 << 10;
        // The stop frame's time-out is reported too, after the pause, and the port closes.
        QTest::newRow("stop frame") << int(Search) << 11 << 12 << 10;
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
        QCOMPARE(debug.last().at(1).toString(), QStringLiteral("<< Rx TimedOut..."));
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
        QVERIFY(rig.prompts.messages()[0].text.startsWith(QStringLiteral("PortOpen: ")));
        QCOMPARE(rig.prompts.messages()[0].icon, Icon::Critical);
    }

    void missingPortIsReportedThenTimesOut() {
        QTemporaryDir dir;
        ScriptedPrompts prompts{Answer::Ok};
        AppContext ctx(dir.path(), &prompts);
        KestrelComm link(ctx);
        link.setTimeScale(0.001);
        link.setDevice(dir.filePath(QStringLiteral("no-such-tty")));
        QSignalSpy timeouts(&link, &KestrelComm::RxTimeOut);
        link.SendSearch();
        QCOMPARE(timeouts.count(), 1);
        QCOMPARE(prompts.messages().size(), 1);
        QCOMPARE(prompts.messages()[0].text, QStringLiteral("PortOpen: 8002-Invalid port number"));
    }

    void secondUploadIsRefusedWhileOneRuns() {
        Rig rig(fast(3), 3);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        int attempts = 0;
        connect(&rig.link, &KestrelComm::SendingChnl, this, [&](quint8 n) {
            if (n == 2) {
                ++attempts;
                QVERIFY(rig.link.busy());
                rig.link.SendSearch();
                rig.link.SendAllChannels();
            }
        });
        rig.link.SendBank(1);
        rig.settle();
        QCOMPARE(attempts, 1);
        QCOMPARE(timeouts.count(), 0);
        // One start frame, 20 channels, one stop frame: the refused calls sent nothing.
        QCOMPARE(rig.sim.model().framesReceived(), 22);
        QVERIFY(!rig.link.busy());
    }

    void traceLinesAndLogFile() {
        Rig rig(fast(3), 3);
        rig.link.setInDebug(true);
        QSignalSpy debug(&rig.link, &KestrelComm::DebugInfo);
        const QString logPath = rig.dir.filePath(QStringLiteral("Debug.log"));
        QVERIFY(rig.link.debugLog().open(logPath));
        rig.link.SendSearch();
        rig.link.debugLog().close();
        QCOMPARE(debug.count(), 24);
        const QByteArray first = BuildStartCom();
        QCOMPARE(debug[0].at(0).toInt(), 0);
        QCOMPARE(debug[0].at(1).toString(),
                 QStringLiteral(">> 81040101") + QString::fromLatin1(first.mid(4)));
        QCOMPARE(debug[1].at(0).toInt(), 1);
        QCOMPARE(debug[1].at(1).toString(),
                 QStringLiteral("<< 81040101 ") + QString::fromLatin1(first.mid(4)));
        QCOMPARE(debug[2].at(1).toString().left(25), QStringLiteral(">> 81193200J1^W035.0000^U"));
        QFile log(logPath);
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = log.readAll().split('\n');
        QCOMPARE(lines[0].trimmed(), QByteArray("[Debug]"));
        QCOMPARE(lines.size(), 1 + 24 + 1);
        QCOMPARE(QString::fromLatin1(lines[3].chopped(1)), debug[2].at(1).toString());
    }

    void initializeChecksThePort_data() {
        QTest::addColumn<int>("failure");
        QTest::addColumn<QString>("message");
        QTest::newRow("free") << int(PortFailure::Ok) << QString();
        QTest::newRow("busy") << int(PortFailure::Busy)
                              << "COM5: In Use!\nPlease Select a Different COM Port...";
        QTest::newRow("missing") << int(PortFailure::Missing)
                                 << "COM5: In Use!\nPlease Select a Different COM Port...";
        QTest::newRow("no permission")
            << int(PortFailure::NoPermission)
            << "COM5: In Use!\nPlease Select a Different COM Port...\nNo permission to open "
               "/dev/null: make your user a member of the group \"root\" that owns it, then log in "
               "again.";
    }
    void initializeChecksThePort() {
        QFETCH(int, failure);
        QFETCH(QString, message);
        QTemporaryDir dir;
        ScriptedPrompts prompts{Answer::Ok};
        AppContext ctx(dir.path(), &prompts);
        auto probe = std::make_unique<TablePortProbe>(
            QMap<QString, PortFailure>{{QStringLiteral("/dev/null"), PortFailure(failure)}});
        KestrelComm link(ctx, nullptr, {}, std::move(probe));
        PortMap map;
        map.setOverride(5, QStringLiteral("/dev/null"));
        link.setPortMap(map);
        link.setCommPort(5);
        link.setInDebug(true);
        link.setTimeScale(0.01);
        QSignalSpy debug(&link, &KestrelComm::DebugInfo);
        link.Initialize();
        QCOMPARE(link.CommStatus(), failure == int(PortFailure::Ok) ? 1 : 0);
        QVERIFY(!link.ComPortOpen());
        if (message.isEmpty()) {
            QCOMPARE(prompts.messages().size(), 0);
            QCOMPARE(debug.count(), 2);
            QCOMPARE(debug[0].at(1).toString(), QStringLiteral("Setttings=4800,2,7,1011"));
            QCOMPARE(debug[1].at(1).toString(), QStringLiteral("ComState Ok"));
        } else {
            QCOMPARE(prompts.messages().size(), 1);
            QCOMPARE(prompts.messages()[0].text, message);
            QCOMPARE(prompts.messages()[0].icon, Icon::Critical);
            QCOMPARE(debug.count(), 0);
        }
    }

    void initializeOnARealTerminal() {
        Rig rig(fast(3), 3);
        rig.link.setInDebug(true);
        QSignalSpy debug(&rig.link, &KestrelComm::DebugInfo);
        rig.link.Initialize();
        QCOMPARE(rig.link.CommStatus(), 1);
        QCOMPARE(rig.prompts.messages().size(), 0);
        QCOMPARE(debug.count(), 2);
        QVERIFY(debug[0].at(1).toString().startsWith(QStringLiteral("Setttings=9600,0,8,")));
        QVERIFY(rig.link.COMAvailable(3));
        QVERIFY(!rig.link.COMAvailable(16));
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

    // Runs last: once the application quits, no event loop runs again in this process. A wait
    // in progress then ends at once instead of spinning until its deadline.
    void quittingEndsTheWait() {
        ScannerSimulator::Options opt = fast(3);
        opt.stopAfter = 0;
        Rig rig(opt, 3, 1.0);
        QSignalSpy timeouts(&rig.link, &KestrelComm::RxTimeOut);
        QTimer::singleShot(200, qApp, [] { QCoreApplication::exit(0); });
        QElapsedTimer clock;
        clock.start();
        timespec cpu0{}, cpu1{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu0);
        rig.link.SendAllChannels();
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &cpu1);
        const double cpu = double(cpu1.tv_sec - cpu0.tv_sec) + (cpu1.tv_nsec - cpu0.tv_nsec) / 1e9;
        QVERIFY2(clock.elapsed() < 2000, qPrintable(QString::number(clock.elapsed())));
        QVERIFY2(cpu < 0.5, qPrintable(QString::number(cpu)));
        QCOMPARE(timeouts.count(), 1);
        QVERIFY(!rig.link.ComPortOpen());
    }
};

QTEST_GUILESS_MAIN(TestUpload)
#include "tst_upload.moc"
