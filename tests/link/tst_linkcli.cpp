// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl frames, simulate and upload, run as processes the way a user runs them.
#include "testsupport.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel::test;

namespace {

// A running "kestrelctl simulate"; knows the device it printed first.
struct Simulator {
    QProcess proc;
    QString device;

    bool start(const QStringList& args) {
        proc.start(qEnvironmentVariable("KESTRELCTL"),
                   QStringList{QStringLiteral("simulate")} + args);
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
        return QString::fromUtf8(proc.readAllStandardOutput())
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
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
        const QStringList base{QStringLiteral("--data-dir"), dir.path()};
        QCOMPARE(runKestrelctl(base + QStringList{QStringLiteral("set"), QStringLiteral("--bank"),
                                                  QStringLiteral("9"), QStringLiteral("--slot"),
                                                  QStringLiteral("1"),
                                                  QStringLiteral("46.61,Test,False,False,True")})
                     .exitCode,
                 0);
        const ProcessResult r =
            runKestrelctl(base + QStringList{QStringLiteral("frames"), QStringLiteral("--bank"),
                                             QStringLiteral("9")});
        QCOMPARE(r.exitCode, 0);
        const QStringList out =
            QString::fromUtf8(r.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        QCOMPARE(out.size(), 22);
        QCOMPARE(out.first(), QStringLiteral("81 04 01 01 00 FA"));
        QCOMPARE(out[1], QStringLiteral("81 1A 10 00 43 31 36 31 5E 46 30 34 36 2E 36 31 30 30 "
                                        "5E 4C 53 5E 50 52 5E 44 52 D7"));
        QCOMPARE(out.last(), QStringLiteral("81 04 02 00 00 FA"));
    }

    void usageError() {
        QTemporaryDir dir;
        const ProcessResult r =
            runKestrelctl({QStringLiteral("--data-dir"), dir.path(), QStringLiteral("upload"),
                           QStringLiteral("--search"), QStringLiteral("--port"),
                           QStringLiteral("COM1"), QStringLiteral("--cable"), QStringLiteral("4")});
        QCOMPARE(r.exitCode, 1);
        QVERIFY(r.err.contains("usage: kestrelctl"));
        QVERIFY(snapshotTree(dir.path()).isEmpty());
    }

    // Two uploads at once in real time: one to a scanner that answers in pieces through a link
    // made by the simulator, one through a [Ports] entry to a scanner that never answers.
    void uploadAgainstSimulator() {
        QTemporaryDir dir;
        const QStringList base{QStringLiteral("--data-dir"), dir.path()};
        QCOMPARE(runKestrelctl(base + QStringList{QStringLiteral("set"), QStringLiteral("--bank"),
                                                  QStringLiteral("2"), QStringLiteral("--slot"),
                                                  QStringLiteral("3"),
                                                  QStringLiteral("462.5625,Test,True,False,True")})
                     .exitCode,
                 0);
        const QString linkPath = dir.filePath(QStringLiteral("scanner"));
        Simulator good;
        QVERIFY(good.start({QStringLiteral("--cable"), QStringLiteral("3"),
                            QStringLiteral("--split"), QStringLiteral("--link"), linkPath}));
        QCOMPARE(QFileInfo(linkPath).symLinkTarget(), good.device);
        Simulator mute;
        QVERIFY(mute.start({QStringLiteral("--stop-after"), QStringLiteral("0")}));
        QString ini = QString::fromUtf8(readFile(dir.filePath(QStringLiteral("Main.ini"))));
        ini += QStringLiteral("\n[Ports]\nCOM7=") + mute.device + QLatin1Char('\n');
        writeFile(dir.filePath(QStringLiteral("Main.ini")), ini.toUtf8());

        std::unique_ptr<QProcess> upGood(
            startCtl(base + QStringList{QStringLiteral("upload"), QStringLiteral("--bank"),
                                        QStringLiteral("2"), QStringLiteral("--port"), linkPath,
                                        QStringLiteral("--cable"), QStringLiteral("3")}));
        std::unique_ptr<QProcess> upMute(
            startCtl(base + QStringList{QStringLiteral("upload"), QStringLiteral("--search"),
                                        QStringLiteral("--port"), QStringLiteral("COM7"),
                                        QStringLiteral("--cable"), QStringLiteral("3")}));
        QVERIFY(upGood->waitForFinished(60000));
        QVERIFY(upMute->waitForFinished(60000));

        QCOMPARE(upGood->exitCode(), 0);
        QVERIFY(upGood->readAllStandardError().contains("] Sending Chan: 40"));
        QCOMPARE(upMute->exitCode(), 3);
        QVERIFY(upMute->readAllStandardError().contains("Scanner Timed Out while Receiving!"));

        const QStringList seen = good.stop();
        QVERIFY(!QFileInfo::exists(linkPath));
        QVERIFY(seen.contains(QStringLiteral("C023^F462.5625^LS^PS^DR")));
        QVERIFY(seen.contains(QStringLiteral("End")));
        // What the scanner now holds is what the memory had, without the descriptions.
        const ProcessResult shown =
            runKestrelctl(base + QStringList{QStringLiteral("show"), QStringLiteral("--bank"),
                                             QStringLiteral("2")});
        static const QRegularExpression desc(QStringLiteral("^(\\d+,[^,]*,)[^,]*(,.*)$"));
        for (const QByteArray& l : shown.out.split('\n')) {
            if (l.isEmpty())
                continue;
            QString expected = QString::fromUtf8(l);
            expected.replace(desc, QStringLiteral("\\1\\2"));
            QVERIFY2(seen.contains(expected), qPrintable(expected));
        }
        const QStringList unanswered = mute.stop();
        QCOMPARE(unanswered.count(QStringLiteral("Start")), 1);
        QVERIFY(!unanswered.contains(QStringLiteral("End")));
    }
};

QTEST_GUILESS_MAIN(TestLinkCli)
#include "tst_linkcli.moc"
