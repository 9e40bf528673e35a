// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr run as a process against the local service with its demo data on a free
// loopback port: the browsing and search commands against a reviewed transcript, login and
// failure statuses, the remembered login, and the import into a bank (of records or search
// results) as show then sees it.
#include "testsupport.h"

#include "core/datalock.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestRRCli : public QObject {
    Q_OBJECT
    // The service is kestrelctl rr-serve with its demo data, a process of its own.
    QProcess m_serve;
    QString m_url;
    QTemporaryDir m_config;

    ProcessResult rr(const QString& dir, const QStringList& args,
                     const QByteArray& password = "demo") {
        // The sub-command, then the defaults, then the row's own options (the last given wins).
        return runKestrelctl(QStringList{u"--data-dir"_s, dir, u"rr"_s, args.first(), u"--url"_s,
                                         m_url, u"--user"_s, u"demo"_s, u"--password-stdin"_s} +
                                 args.mid(1),
                             60000, password + '\n');
    }

private Q_SLOTS:
    void initTestCase() {
        qputenv("KESTREL_SECRET_STORE", "none");
        qputenv("XDG_CONFIG_HOME", m_config.path().toLocal8Bit());
        m_serve.start(qEnvironmentVariable("KESTRELCTL"), {"rr-serve", "--listen", "127.0.0.1:0"});
        while (!m_serve.canReadLine() && m_serve.waitForReadyRead(10000)) {
        }
        m_url = QString::fromUtf8(m_serve.readLine()).section(u' ', 2).trimmed();
        QVERIFY2(m_url.startsWith(u"http://127.0.0.1:"_s), qPrintable(m_url));
    }
    void cleanupTestCase() {
        m_serve.terminate();
        m_serve.waitForFinished();
    }

    // Every reading command against the demo data prints what the reviewed transcript shows
    // ("$ rr ARGS", then its lines); one that finds nothing says so on stderr and is no failure.
    void transcript_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QStringList>("expected");
        const QString text = QString::fromUtf8(readFile(dataPath(u"rr-demo.txt"_s)));
        for (const QString& block : text.split(u"$ rr "_s, Qt::SkipEmptyParts)) {
            QStringList lines = block.split(u'\n', Qt::SkipEmptyParts);
            const QString command = lines.takeFirst();
            QTest::newRow(qPrintable(command)) << command.split(u' ') << lines;
        }
    }
    void transcript() {
        QFETCH(QStringList, args);
        QFETCH(QStringList, expected);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), args);
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(outputLines(r.out), expected);
        QCOMPARE(outputLines(r.err), expected.isEmpty()
                                         ? QStringList{u"No Results Found in Search!!!"_s}
                                         : QStringList{});
        // Only the client's description cache may appear.
        QCOMPARE(snapshotTree(dir.path()).keys(), QStringList{u"RR_Soap8.wsdl"_s});
    }

    void failures_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("expected"); // in stdout, or (status > 0) in stderr
        QTest::newRow("countries need no login")
            << QStringList{"countries"} << "wrong"_ba << 0 << u"1\tDemoland\tDL"_s;
        QTest::newRow("wrong login")
            << QStringList{"state", "101"} << "wrong"_ba << 4
            << u"refused the user name or password; check both and log in again.\n"_s;
        QTest::newRow("service down")
            << QStringList{"login", "--url", "http://127.0.0.1:1/soap2/"} << "demo"_ba << 2
            << u"The web service at http://127.0.0.1:1/soap2/ cannot be reached (Connection "
               "refused); check the address and that the service is running, then try again.\n"_s;
        QTest::newRow("unknown county")
            << QStringList{"county", "9999"} << "demo"_ba << 2
            << u"kestrelctl rr: the service knows no county 9999; check the id"_s;
        QTest::newRow("two areas")
            << QStringList{"search", "freq", "--state", "101", "--county", "1001", "154.815"}
            << "demo"_ba << 1 << u"give one of"_s;
        QTest::newRow("bad unit") << QStringList{"search", "callsigns", "--unit", "x", "0", "0"}
                                  << "demo"_ba << 1 << u"--unit is m"_s;
    }
    void failures() {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, password);
        QFETCH(int, status);
        QFETCH(QString, expected);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), args, password);
        QCOMPARE(r.exitCode, status);
        const QString got = QString::fromUtf8(status == 0 ? r.out : r.err);
        QVERIFY2(got.contains(expected), qPrintable(got));
        // A failure is one sentence: never the fault dialog's question nor an envelope.
        QVERIFY2(status < 2 || outputLines(r.err).size() == 1, qPrintable(got));
        QVERIFY(!got.contains(u"Suppress"_s) && !got.contains(u"<?xml"_s));
    }

    // The README's order: the family's options before the sub-command.
    void optionsBeforeTheSubCommand() {
        QTemporaryDir dir;
        const ProcessResult r =
            runKestrelctl({u"--data-dir"_s, dir.path(), u"rr"_s, u"--url"_s, m_url, u"--user"_s,
                           u"demo"_s, u"--password-stdin"_s, u"countries"_s},
                          60000, "demo\n");
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.out.startsWith("1\tDemoland\tDL"), r.out.constData());
    }

    void xmlShowsTheLastEnvelope() {
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), {"login", "--xml"});
        QCOMPARE(r.exitCode, 0);
        const QStringList got = outputLines(r.out);
        QCOMPARE(got.size(), 2);
        QCOMPARE(got[0], u"demo\t12-31-2030"_s);
        QVERIFY(got[1].contains(u"getUserDataResponse"_s) && got[1].contains(u"12-31-2030"_s));
    }

    void rememberKeepsOnlyAnAcceptedLogin() {
        QTemporaryDir dir;
        QCOMPARE(rr(dir.path(), {"login", "--remember"}, "demo").exitCode, 0);
        QCOMPARE(rr(dir.path(), {"login", "--remember"}, "wrong").exitCode, 4);
        // No user name and no password given: both come from what was remembered.
        const ProcessResult r =
            runKestrelctl({u"--data-dir"_s, dir.path(), u"rr"_s, u"login"_s, u"--url"_s, m_url});
        QCOMPARE(r.exitCode, 0);
        QCOMPARE(outputLines(r.out), QStringList{u"demo\t12-31-2030"_s});
    }

    void importIntoBankThenShow_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("printed");
        QTest::addColumn<int>("errors"); // stderr lines naming a refused record
        QTest::newRow("subcategory and one frequency")
            << QStringList{"--county", "1001", "--subcat", "3002", "--fid", "40001"} << 0
            << QStringList{"1\t154.815000\tAshford County Services-Sheriff-Sheriff Dispatch",
                           "9\t155.160000\tAshford County Services-Fire / EMS-EMS Mutual Aid"}
            << 0;
        QTest::newRow("one frequency")
            << QStringList{"--county", "1001", "--fid", "40001"} << 0
            << QStringList{"1\t154.815000\tAshford County Services-Sheriff-Sheriff Dispatch"} << 0;
        QTest::newRow("one site") << QStringList{"--system", "7001", "--site", "2"} << 0
                                  << QStringList{"1\t852.137500\tLCN-1", "2\t852.387500\tLCN-2",
                                                 "3\t852.637500\tLCN-3 Alternate"}
                                  << 0;
        QTest::newRow("full bank: 23 for 20 slots")
            << QStringList{"--county", "1001"} << 5
            << QStringList{"1\t154.815000\tAshford County Services-Sheriff-Sheriff Dispatch",
                           "20\t154.040000\tAshford County Services-Public Works-Water Department"}
            << 3;
    }
    void importIntoBankThenShow() {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QStringList, printed);
        QFETCH(int, errors);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), QStringList{"import", "--bank", "2"} + args);
        QCOMPARE(r.exitCode, status);
        const QStringList got = outputLines(r.out);
        QCOMPARE(got.last(), printed.last());
        QCOMPARE(got.first(), printed.first());
        // One sentence names what did not fit; the count is worded in the singular for one.
        const QStringList partial = outputLines(r.err).filter(u" did not fit: "_s);
        QCOMPARE(partial.size(), errors ? 1 : 0);
        if (errors)
            QVERIFY2(partial.first().startsWith(u"20 imported; %1 did not fit: "_s.arg(errors)),
                     qPrintable(partial.first()));
        QVERIFY(!r.err.contains("Subscript"));
        const QString count =
            got.size() == 1 ? u"imported 1 channel "_s : u"imported %1 channels "_s.arg(got.size());
        QVERIFY2(r.err.contains(count.toUtf8()), r.err.constData());

        // The filled slots as the saved profile shows them; the slots after them keep their lines.
        const QStringList shown =
            outputLines(runKestrelctlIn(dir.path(), {"show", "--bank", "2"}).out);
        QCOMPARE(shown.size(), 20);
        for (int slot = 1; slot <= got.size(); ++slot) {
            const QStringList cells = got[slot - 1].split(u'\t');
            QCOMPARE(cells[0], QString::number(slot));
            QCOMPARE(shown[slot - 1], u"0"_s + QString::number(20 + slot) + u',' + cells[1] + u',' +
                                          cells[2] + u",False,False,False"_s);
        }
        if (got.size() < 20)
            QVERIFY(shown[got.size()].contains(u",Chan #0%1,"_s.arg(21 + got.size())));
    }

    void longDescriptionRefusedUnlessCut() {
        QTemporaryDir dir;
        // The agency's joined descriptions run to 77 characters.
        const QStringList args{"import", "--bank", "5", "--agency", "502"};
        const QString joined =
            u"Ashford Fire District-Dispatch and Fireground-Ashford FD Dispatch (district)"_s;

        const ProcessResult refused = rr(dir.path(), args);
        QCOMPARE(refused.exitCode, 3);
        QVERIFY(refused.out.isEmpty());
        QVERIFY(refused.err.contains(joined.toUtf8()));
        for (const QString& file : snapshotTree(dir.path()).keys())
            QVERIFY2(file == u"RR_Soap8.wsdl" || file == u"Error.log", qPrintable(file));

        const ProcessResult cut = rr(dir.path(), args + QStringList{"--cut"});
        QCOMPARE(cut.exitCode, 0);
        const QString first = outputLines(cut.out).first().section(u'\t', 2);
        QCOMPARE(first, joined.left(60).trimmed());
        QVERIFY(outputLines(runKestrelctlIn(dir.path(), {"show", "--bank", "5"}).out)
                    .first()
                    .contains(u',' + first + u','));
    }

    // The import saves the profile, so it waits for the data-folder lock like every writer.
    void importWaitsForTheLock() {
        QTemporaryDir dir;
        DataLock window(dir.path());
        QVERIFY(window.acquire(0));
        const ProcessResult r = rr(dir.path(), {"import", "--bank", "2", "--county", "1001"});
        QCOMPARE(r.exitCode, 2);
        QVERIFY2(r.err.contains("in use by"), r.err.constData());
        QVERIFY(!QFile::exists(dir.filePath(u"Banks/Bank02.BKE"_s)));
    }

    // Search results into a bank as show sees them; a result without a mode stops the import
    // and nothing is saved.
    void importSearchResults_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("shown"); // the first lines of show --bank 4
        QTest::newRow("frequency search, two named results")
            << QStringList{"--search-freq", "0",        "--metro", "601",      "--tone",
                           "156",           "--result", "3",       "--result", "1"}
            << 0
            << QStringList{u"061,154.815000,ASO Disp-Sheriff Dispatch,False,False,False"_s,
                           u"062,155.535000,ASO Tac2-Sheriff Tac 2,False,False,False"_s,
                           u"063,155.475000,Chan #063,False,False,False"_s};
        QTest::newRow("tag search, all")
            << QStringList{"--search-tag", "1", "--county", "1001"} << 0
            << QStringList{u"061,154.815000,ASO Disp-Sheriff Dispatch,False,False,False"_s,
                           u"062,453.250000,ASO Jail-Sheriff Jail Ops,False,False,False"_s};
        QTest::newRow("a result without a mode")
            << QStringList{"--search-freq", "154.43", "--county", "1001", "--result", "2"} << 2
            << QStringList{u"061,155.385000,Chan #061,False,False,False"_s};
    }
    void importSearchResults() {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QStringList, shown);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), QStringList{"import", "--bank", "4"} + args);
        QCOMPARE(r.exitCode, status);
        const ProcessResult show = runKestrelctlIn(dir.path(), {u"show"_s, u"--bank"_s, u"4"_s});
        QCOMPARE(outputLines(show.out).mid(0, shown.size()), shown);
    }
};

QTEST_GUILESS_MAIN(TestRRCli)
#include "tst_rrcli.moc"
