// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl frames, simulate and upload, run as processes the way a user runs them.
#include "testsupport.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

// A running "kestrelctl simulate"; knows the device it printed first.
struct Simulator {
    QProcess proc;
    QString device;

    bool start(const QStringList& args) {
        proc.start(qEnvironmentVariable("KESTRELCTL"), QStringList{u"simulate"_s} + args);
        if (!proc.waitForStarted(10000))
            return false;
        while (!proc.canReadLine())
            if (!proc.waitForReadyRead(10000))
                return false;
        device = QString::fromUtf8(proc.readLine()).trimmed();
        return !device.isEmpty();
    }
    QStringList stop() {
        proc.terminate();
        proc.waitForFinished(10000);
        return outputLines(proc.readAllStandardOutput());
    }
};

QProcess* startCtl(const QStringList& args) {
    auto* p = new QProcess;
    p->start(qEnvironmentVariable("KESTRELCTL"), args);
    return p;
}

} // namespace

class TestLinkCli : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void framesOfABank() {
        QTemporaryDir dir;
        const QString ch = u"46.61,Test,False,False,True"_s;
        QCOMPARE(runKestrelctlIn(dir.path(), {"set", "--bank", "9", "--slot", "1", ch}).exitCode,
                 0);
        const ProcessResult r = runKestrelctlIn(dir.path(), {"frames", "--bank", "9"});
        QCOMPARE(r.exitCode, 0);
        const QStringList out = outputLines(r.out);
        QCOMPARE(out.size(), 22);
        QCOMPARE(out.first(), u"81 04 01 01 00 FA"_s);
        QCOMPARE(out[1], u"81 1A 10 00 43 31 36 31 5E 46 30 34 36 2E 36 31 30 30 "
                         "5E 4C 53 5E 50 52 5E 44 52 D7"_s);
        QCOMPARE(out.last(), u"81 04 02 00 00 FA"_s);
    }

    // Two uploads at once in real time: one to a scanner that answers in pieces through a link
    // made by the simulator, one through a [Ports] entry to a scanner that never answers.
    void uploadAgainstSimulator() {
        QTemporaryDir dir;
        const QString linkPath = dir.filePath(u"scanner"_s);
        Simulator good;
        QVERIFY(good.start({"--cable", "3", "--split", "--link", linkPath}));
        QCOMPARE(QFileInfo(linkPath).symLinkTarget(), good.device);
        Simulator mute;
        QVERIFY(mute.start({"--stop-after", "0"}));
        const QString ini = dir.filePath(u"Main.ini"_s);
        writeFile(ini, readFile(ini) + "\n[Ports]\nCOM7=" + mute.device.toUtf8() + '\n');

        const QStringList base{u"--data-dir"_s, dir.path(), u"upload"_s};
        std::unique_ptr<QProcess> upGood(
            startCtl(base + QStringList{"--bank", "2", "--port", linkPath, "--cable", "3"}));
        std::unique_ptr<QProcess> upMute(
            startCtl(base + QStringList{"--search", "--port", "COM7", "--cable", "3"}));
        QVERIFY(upGood->waitForFinished(60000));
        QVERIFY(upMute->waitForFinished(60000));

        QCOMPARE(upGood->exitCode(), 0);
        QVERIFY(upGood->readAllStandardError().contains("] Sending Chan: 40"));
        QCOMPARE(upMute->exitCode(), 3);
        QVERIFY(upMute->readAllStandardError().contains("Scanner Timed Out while Receiving!"));

        const QStringList seen = good.stop();
        QVERIFY(!QFileInfo::exists(linkPath));
        QVERIFY(seen.contains(u"End"_s));
        // What the scanner now holds is what the memory had, without the descriptions.
        static const QRegularExpression desc(u"^(\\d+,[^,]*,)[^,]*(,.*)$"_s);
        for (QString expected :
             outputLines(runKestrelctlIn(dir.path(), {"show", "--bank", "2"}).out))
            QVERIFY2(seen.contains(expected.replace(desc, u"\\1\\2"_s)), qPrintable(expected));
        const QStringList unanswered = mute.stop();
        QCOMPARE(unanswered.count(u"Start"_s), 1);
        QVERIFY(!unanswered.contains(u"End"_s));
    }
};

QTEST_GUILESS_MAIN(TestLinkCli)
#include "tst_linkcli.moc"
