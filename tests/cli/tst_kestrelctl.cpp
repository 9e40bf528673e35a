// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl run as a process: its output, its exit status, and the files it leaves. It loses
// nothing: two writers race under the lock, damaged files are told, outputs that are streams stay
// streams, failed writes exit 2.
#include "core/datalock.h"
#include "testsupport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {
const auto run = runKestrelctlIn;
const auto lines = outputLines;
QProcess* start(const QString& dir, const QStringList& args) {
    auto* p = new QProcess;
    p->start(qEnvironmentVariable("KESTRELCTL"), QStringList{u"--data-dir"_s, dir} + args);
    return p;
}
} // namespace

class TestKestrelctl : public QObject {
    Q_OBJECT
    QTemporaryDir m_populated; // every profile saved once
    const QString m_csv = m_populated.filePath(u"in.csv"_s);
private Q_SLOTS:
    void initTestCase() {
        writeFile(m_csv, "a,b\nx,146.520000\n");
        writeFile(m_populated.filePath(u"Profiles.ini"_s), "[Profiles]\nProfile04=Air Band\n");
        QCOMPARE(run(m_populated.path(), {"set", "--search", "1", "25,28,Low"}).exitCode, 0);
    }
    void reading_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("line");
        QTest::newRow("profiles") << QStringList{"profiles"} << 10 << 4
                                  << "4\tAir Band\tSrchBank04\tBank41\tBank42\tBank43\tBank44\t"
                                     "Bank45\tBank46\tBank47\tBank48\tBank49\tBank50";
        QTest::newRow("bank 10 of profile 3")
            << QStringList{"show", "--profile", "3", "--bank", "10"} << 20 << 19
            << "200,000.000000,Chan #200,False,False,True";
        QTest::newRow("by name") << QStringList{"show", "--profile", "air band", "--bank", "2"}
                                 << 20 << 0 << "021,151.625000,Chan #021,False,False,False";
        QTest::newRow("search") << QStringList{"show", "--search"} << 10 << 0
                                << "01,25.000000,28.000000,Low";
        QTest::newRow("all") << QStringList{"show", "--all"} << 200 << 160
                             << "161,000.000000,Chan #161,False,False,True";
        QTest::newRow("CSV of a bank") << QStringList{"export-csv", "--bank", "8"} << 21 << 0
                                       << "Description,Frequency,Delay,Lock-Out,Priority";
        QTest::newRow("CSV of the ranges") << QStringList{"export-csv", "--search"} << 11 << 10
                                           << "Search #10,806.000000,956.000000";
    }
    void reading() {
        QFETCH(QStringList, args);
        QFETCH(int, count);
        QFETCH(int, row);
        QFETCH(QString, line);
        const auto before = snapshotTree(m_populated.path());
        const auto r = run(m_populated.path(), args);
        QVERIFY(r.exitCode == 0 && r.err.isEmpty());
        QCOMPARE(lines(r.out).size(), count);
        QCOMPARE(lines(r.out)[row], line);
        QCOMPARE(snapshotTree(m_populated.path()), before); // reading writes nothing
        QTemporaryDir dir;
        const QString missing = dir.filePath(u"new"_s);
        QCOMPARE(run(missing, args).exitCode, args.contains(u"air band"_s) ? 1 : 0);
        QVERIFY(!QFileInfo::exists(missing));
    }
    // Refused with status 1 and a message on stderr (naming `message`), nothing written and no
    // data folder made.
    void usageErrors_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* tag, const QStringList& args, const char* message = "") {
            QTest::newRow(tag) << args << message;
        };
        row("no command", {});
        row("unknown command", {"frobnicate"}, "unknown command 'frobnicate'\n");
        row("close command", {"shwo"}, "unknown command 'shwo' (did you mean 'show'?)");
        row("prefix", {"imp", "x.csv"}, "(did you mean 'import-csv'?)");
        row("show without target", {"show"});
        row("two targets", {"show", "--bank", "1", "--search"});
        row("bank 11", {"show", "--bank", "11"});
        row("unknown option", {"show", "--bnak", "1"},
            "show: unknown option --bnak (did you mean '--bank'?)");
        row("unknown global option", {"--verison"}, "(did you mean '--version'?)");
        row("help for a close name", {"help", "exprot-csv"}, "(did you mean 'export-csv'?)");
        row("missing value", {"show", "--bank"}, "--bank");
        row("extra argument", {"show", "--all", "x"}, "unexpected argument 'x'");
        row("unknown profile", {"show", "--profile", "No", "--bank", "1"});
        row("set without line", {"set", "--search", "1"});
        row("bank without slot", {"set", "--bank", "1", "40,x,F,F,F"});
        row("slot 21", {"set", "--bank", "1", "--slot", "21", "40,x,F,F,F"});
        row("search 0", {"set", "--search", "0", "1,2,x"});
        row("six fields", {"set", "--bank", "2", "--slot", "16", "146.52,Fire, East,F,F,F"});
        row("too few columns", {"import-csv", m_csv, "--bank", "1", "--columns", "1,2"});
        row("column beyond the file",
            {"import-csv", m_csv, "--bank", "1", "--columns", "3,0,0,0,0"},
            "--columns: the file has 2 columns");
        row("cable 4", {"upload", "--search", "--port", "COM1", "--cable", "4"});
        row("pages past the end",
            {"print", "--all", "--pages", "4-5", "-o", m_populated.filePath(u"x.pdf"_s)},
            "usage: kestrelctl print");
    }
    void usageErrors() {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        const auto before = snapshotTree(m_populated.path());
        const auto r = run(m_populated.path(), args);
        QVERIFY(r.exitCode == 1 && !r.err.isEmpty() && r.out.isEmpty());
        QVERIFY2(QString::fromUtf8(r.err).contains(message), r.err.constData());
        QCOMPARE(snapshotTree(m_populated.path()), before);
        QTemporaryDir dir;
        QCOMPARE(run(dir.filePath(u"new"_s), args).exitCode, 1);
        QVERIFY(!QFileInfo::exists(dir.filePath(u"new"_s)));
    }
    // Every command and sub-command the program lists answers --help and "help" alike, with
    // each option it accepts on a line.
    void help_data() {
        QTest::addColumn<QStringList>("path");
        const auto words = [](const QStringList& typed) {
            return lines(runKestrelctl(QStringList{u"--completion-words"_s, u"--"_s} + typed).out);
        };
        for (const QString& name : words({})) {
            if (name.startsWith(u'-') || name == u"help"_s)
                continue;
            const QStringList next = words({name});
            const bool family = !next.isEmpty() && !next.first().startsWith(u'-');
            for (const QString& sub : family ? next : QStringList{QString()}) {
                const QStringList path = sub.isEmpty() ? QStringList{name} : QStringList{name, sub};
                QTest::newRow(qPrintable(path.join(u' '))) << path;
            }
            if (family)
                QTest::newRow(qPrintable(name)) << QStringList{name};
        }
    }
    void help() {
        QFETCH(QStringList, path);
        const auto r = runKestrelctl(path + QStringList{u"--help"_s});
        QCOMPARE(r.exitCode, 0);
        QVERIFY(r.out.startsWith("usage: kestrelctl " + path.join(u' ').toUtf8() + ' '));
        const auto viaHelp = runKestrelctl(QStringList{u"help"_s} + path);
        QVERIFY(viaHelp.exitCode == 0 && viaHelp.out == r.out && viaHelp.err.isEmpty());
        const auto options =
            runKestrelctl(QStringList{u"--completion-words"_s, u"--"_s} + path).out;
        for (const QString& word : lines(options))
            if (word.startsWith(u"--"_s))
                QVERIFY2(r.out.contains("\n  " + word.toUtf8() + ' ') ||
                             r.out.contains(", " + word.toUtf8()),
                         qPrintable(word));
    }
    void programHelpAndVersion() {
        const auto r = runKestrelctl({u"--help"_s});
        QCOMPARE(r.exitCode, 0);
        for (const char* needle : {"\n  show ", "\n  upload ", "\n  help ", "\n  0  success",
                                   "\n  1  usage error", "\n  2  failure", "\n  3  upload: "})
            QVERIFY2(r.out.contains(needle), needle);
        const auto v = runKestrelctl({u"--version"_s});
        QCOMPARE(v.exitCode, 0);
        QVERIFY(QRegularExpression(u"^kestrelctl \\d+\\.\\d+\\.\\d+\n$"_s)
                    .match(QString::fromUtf8(v.out))
                    .hasMatch());
    }
    // The installed completion script, run by bash as it would on a Tab after the words.
    void bashCompletion_data() {
        QTest::addColumn<QStringList>("words"); // the last one is the word being completed
        QTest::addColumn<QStringList>("offered");
        QTest::newRow("command") << QStringList{"sh"} << QStringList{"show"};
        QTest::newRow("option") << QStringList{"show", "--b"} << QStringList{"--bank"};
        QTest::newRow("after global")
            << QStringList{"--data-dir", "x", "pro"} << QStringList{"profiles"};
        QTest::newRow("folder") << QStringList{"--data-dir", ""} << QStringList{"sub"};
        QTest::newRow("file") << QStringList{"export-csv", "-o", "a"} << QStringList{"a.csv"};
        QTest::newRow("number") << QStringList{"show", "--bank", ""} << QStringList{};
    }
    void bashCompletion() {
        QFETCH(QStringList, words);
        QFETCH(QStringList, offered);
        QTemporaryDir cwd;
        QVERIFY(QDir(cwd.path()).mkdir(u"sub"_s));
        writeFile(cwd.filePath(u"a.csv"_s), "");
        QProcess bash;
        bash.setWorkingDirectory(cwd.path());
        bash.start(u"bash"_s, QStringList{u"-c"_s,
                                          u"source \"$0\"; COMP_WORDS=(\"$@\"); "
                                          "COMP_CWORD=$(($# - 1)); _kestrelctl; "
                                          "printf '%s\\n' \"${COMPREPLY[@]}\""_s,
                                          QStringLiteral(KESTRELCTL_COMPLETION),
                                          qEnvironmentVariable("KESTRELCTL")} +
                                  words);
        QVERIFY(bash.waitForFinished(20000) && bash.exitCode() == 0);
        QStringList reply = lines(bash.readAllStandardOutput());
        reply.sort();
        QCOMPARE(reply, offered);
    }

    void twoWritersLoseNothing() {
        QTemporaryDir dir;
        QCOMPARE(
            run(dir.path(), {"set", "--bank", "2", "--slot", "16", "146.52,Start,F,F,F"}).exitCode,
            0);
        QVERIFY(readFile(dir.filePath(u"Banks/Bank02.BKE"_s))
                    .contains("Channel16=146.520000,Start,False,False,False\n"));
        QVERIFY(readFile(dir.filePath(u"Main.ini"_s)).contains("Bank02=Bank02\n"));
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
};

QTEST_GUILESS_MAIN(TestKestrelctl)
#include "tst_kestrelctl.moc"
