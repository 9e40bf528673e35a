// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl loses nothing: two writers race under the lock, malformed lines are refused,
// damaged files are told, outputs that are streams stay streams, failed writes exit 2.
#include "core/datalock.h"
#include "testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {
const auto run = runKestrelctlIn;
QProcess* start(const QString& dir, const QStringList& args) {
    auto* p = new QProcess;
    p->start(qEnvironmentVariable("KESTRELCTL"), QStringList{u"--data-dir"_s, dir} + args);
    return p;
}
} // namespace

class TestSafetyCli : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void twoWritersLoseNothing() {
        QTemporaryDir dir;
        QCOMPARE(
            run(dir.path(), {"set", "--bank", "2", "--slot", "1", "146.52,Start,F,F,F"}).exitCode,
            0);
        for (int round = 0; round < 100; ++round) {
            const QString a = u"A%1"_s.arg(round), b = u"B%1"_s.arg(round);
            std::unique_ptr<QProcess> one(
                start(dir.path(), {"set", "--bank", "2", "--slot", QString::number(1 + round % 10),
                                   "146.52," + a + ",F,F,F"}));
            std::unique_ptr<QProcess> two(
                start(dir.path(), {"set", "--bank", "2", "--slot", QString::number(11 + round % 10),
                                   "151.625," + b + ",F,F,F"}));
            QVERIFY(one->waitForFinished(30000) && two->waitForFinished(30000));
            QCOMPARE(one->exitCode() + two->exitCode(), 0);
            const QByteArray bank = readFile(dir.filePath(u"Banks/Bank02.BKE"_s));
            QVERIFY2(bank.contains(("," + a + ",").toUtf8()) &&
                         bank.contains(("," + b + ",").toUtf8()),
                     qPrintable(u"round %1 lost a change"_s.arg(round)));
        }
        QVERIFY(!QFile::exists(dir.filePath(QLatin1String(kLockFileName))));
    }

    void waitsForTheHolderThenNamesIt() {
        QTemporaryDir dir;
        DataLock window(dir.path());
        QVERIFY(window.acquire(0));
        QCOMPARE(run(dir.path(), {"show", "--bank", "1"}).exitCode, 0); // reading needs no lock
        const ProcessResult r = run(dir.path(), {"set", "--search", "1", "25,28,Low"});
        QCOMPARE(r.exitCode, 2);
        const QString holder = QFileInfo(QCoreApplication::applicationFilePath()).fileName() +
                               u", process "_s +
                               QString::number(QCoreApplication::applicationPid());
        QVERIFY2(QString::fromUtf8(r.err).contains(u"in use by "_s + holder), r.err.constData());
        QVERIFY(!QFile::exists(dir.filePath(u"Banks/SrchBank00.SKE"_s)));
        window.release();
        QCOMPARE(run(dir.path(), {"set", "--search", "1", "25,28,Low"}).exitCode, 0);
    }

    void damagedFileTold() {
        QTemporaryDir dir;
        QDir().mkpath(dir.filePath(u"Banks"_s));
        const QByteArray damaged = "[ChnlInfo]\nChannel03=146.52,Tower, north,True,True,True\n";
        writeFile(dir.filePath(u"Banks/Bank01.BKE"_s), damaged);
        const ProcessResult shown = run(dir.path(), {"show", "--bank", "1"});
        QCOMPARE(shown.exitCode, 0);
        QVERIFY2(QString::fromUtf8(shown.err).contains(u"Bank01.BKE: Channel03"_s),
                 shown.err.constData());
        QVERIFY(!QFile::exists(dir.filePath(u"Error.log"_s))); // reading creates no file
    }

    void outputsThatAreStreams_data() {
        QTest::addColumn<QString>("target"); // "fifo", a device, or "stdout:" and a file for stdout
        QTest::addColumn<int>("exitCode");
        QTest::newRow("FIFO") << "fifo" << 0;
        QTest::newRow("full device") << "/dev/full" << 2;
        QTest::newRow("-") << "-" << 0;
        QTest::newRow("standard output full") << "stdout:/dev/full" << 2;
    }

    void outputsThatAreStreams() {
        QFETCH(QString, target);
        QFETCH(int, exitCode);
        QTemporaryDir dir;
        const QByteArray expected = run(dir.path(), {"export-csv", "--bank", "1"}).out;
        QVERIFY(expected.startsWith("Description,"));
        QProcess reader;
        QProcess ctl;
        QStringList args = {"--data-dir", dir.path(), "export-csv", "--bank", "1"};
        if (target == u"fifo"_s) {
            target = dir.filePath(u"pipe"_s);
            QCOMPARE(::mkfifo(QFile::encodeName(target).constData(), 0600), 0);
            reader.start(u"cat"_s, {target});
            QVERIFY(reader.waitForStarted());
        }
        if (target.startsWith(u"stdout:"_s))
            ctl.setStandardOutputFile(target.mid(7));
        else
            args += {"-o", target};
        ctl.start(qEnvironmentVariable("KESTRELCTL"), args);
        QVERIFY(ctl.waitForFinished(30000));
        QCOMPARE(ctl.exitCode(), exitCode);
        if (exitCode)
            QVERIFY2(ctl.readAllStandardError().contains("No space left on device"), "no reason");
        if (reader.state() != QProcess::NotRunning) {
            QVERIFY(reader.waitForFinished(30000));
            QCOMPARE(reader.readAllStandardOutput(), expected);
            QVERIFY(QFileInfo(target).exists() && !QFileInfo(target).isFile()); // still a FIFO
        }
        if (target == u"-"_s)
            QCOMPARE(ctl.readAllStandardOutput(), expected);
    }

    void failedWriteExits2() {
        QTemporaryDir dir;
        writeFile(dir.filePath(u"Banks"_s), "a file where the folder should be");
        const ProcessResult r =
            run(dir.path(), {"set", "--bank", "3", "--slot", "1", "40.5,X,F,F,F"});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(
            QString::fromUtf8(r.err).contains(QDir(dir.path()).filePath(u"Banks/Bank03.BKE: "_s)),
            r.err.constData());
        QCOMPARE(readFile(dir.filePath(u"Banks"_s)),
                 QByteArray("a file where the folder should be"));
    }

    void importReadsOwnExportBack() {
        QTemporaryDir dir;
        QCOMPARE(run(dir.path(), {"set", "--bank", "8", "--slot", "2", "151.625,Tower \"N\",T,F,T"})
                     .exitCode,
                 0);
        const QString csv = dir.filePath(u"bank8.csv"_s);
        QCOMPARE(run(dir.path(), {"export-csv", "--bank", "8", "-o", csv}).exitCode, 0);
        QCOMPARE(run(dir.path(), {"import-csv", csv, "--bank", "3"}).exitCode, 0);
        const auto rows = [&](const char* bank) {
            QStringList out;
            for (const QString& line :
                 QString::fromUtf8(run(dir.path(), {"show", "--bank", bank}).out)
                     .split(u'\n', Qt::SkipEmptyParts))
                out.append(line.section(u',', 1)); // without the channel number
            return out;
        };
        QCOMPARE(rows("3"), rows("8"));
    }
};

QTEST_GUILESS_MAIN(TestSafetyCli)
#include "tst_safety_cli.moc"
