// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr run as a process against the local service with its demo data on a free
// loopback port: the browsing and search commands' lines, login and failure statuses, the
// remembered login, and the import into a bank (of records or search results) as show and
// frames then see it.
#include "testsupport.h"

#include "core/datalock.h"
#include "webservice/server/rrlocalserver.h"

#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestRRCli : public QObject {
    Q_OBJECT
    // The service runs in a thread of its own: the test thread waits for each kestrelctl.
    QThread m_thread;
    QObject* m_home = nullptr;
    RRLocalServer* m_server = nullptr;
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
        m_home = new QObject;
        m_home->moveToThread(&m_thread);
        m_thread.start();
        quint16 port = 0;
        QMetaObject::invokeMethod(
            m_home,
            [&] {
                m_server = new RRLocalServer(RRDataSet::demo());
                port = m_server->listen();
            },
            Qt::BlockingQueuedConnection);
        QVERIFY(port != 0);
        m_url = m_server->baseUrl();
    }
    void cleanupTestCase() {
        QMetaObject::invokeMethod(
            m_home, [this] { delete m_server; }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
        delete m_home;
    }

    void reading_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QByteArray>("password");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("expected"); // in stdout, or (status > 0) in stderr
        QTest::newRow("login") << QStringList{"login"} << "demo"_ba << 0
                               << QStringList{"demo\t12-31-2030"};
        QTest::newRow("countries")
            << QStringList{"countries"} << ""_ba << 0 << QStringList{"1\tDemoland\tDL"};
        QTest::newRow("states") << QStringList{"states", "1"} << "demo"_ba << 0
                                << QStringList{"101\tNorth Province\tNP",
                                               "102\tSouth Province\tSP"};
        QTest::newRow("state") << QStringList{"state", "101"} << "demo"_ba << 0
                               << QStringList{"state\t101\tNorth Province\tProvince",
                                              "county\t1002\tBirchwood\tBirchwood County",
                                              "agency\t501\tDemoland State Police\t2"};
        QTest::newRow("county") << QStringList{"county", "1001"} << "demo"_ba << 0
                                << QStringList{"cat\t2001\tAshford County Services",
                                               "subcat\t2001\t3003\tPublic Works\t44.5\t-70.1\t15",
                                               "freq\t3001\t40001\t154.815000\t159.105000\tKDL123\t"
                                               "Sheriff Dispatch\tASO Disp\t156.7 PL\t2\tBM\t1\t"
                                               "2026-03-14"};
        QTest::newRow("agency") << QStringList{"agency", "502"} << "demo"_ba << 0
                                << QStringList{
                                       "subcat\t2102\t3102\tDispatch and Fireground\t44.52\t"
                                       "-70.11\t12"};
        QTest::newRow("system") << QStringList{"system", "7001"} << "demo"_ba << 0
                                << QStringList{"bandplan\t7001\t851.0125\t25\t380",
                                               "sitefreq\t8002\t2\t3\t852.637500\ta",
                                               "tgcat\t9003\t7001\tAll\t3\t0\t44.6\t-70.25\t40\t"
                                               "2026-03-10"};
        QTest::newRow("zip") << QStringList{"zip", "12345"} << "demo"_ba << 0
                             << QStringList{"12345\t44.52\t-70.11\tAshford\t101\t1001"};
        QTest::newRow("feeds") << QStringList{"feeds"} << "demo"_ba << 0
                               << QStringList{
                                      "9102\tDemoland Regional Radio\taudio.demoland.example"
                                      "\t80\tregional\tfeedpass2"};
        QTest::newRow("codes") << QStringList{"codes"} << "demo"_ba << 0
                               << QStringList{"mode\t3\tAM", "flavor\t1\t1\tType I",
                                              "service\tPW\tPublic Safety Pool, Conventional"};
        QTest::newRow("wrong login")
            << QStringList{"state", "101"} << "wrong"_ba << 4 << QStringList{"FaultCode  : AUTH"};
        QTest::newRow("service down")
            << QStringList{"login", "--url", "http://127.0.0.1:1/soap2/"} << "demo"_ba << 2
            << QStringList{"Error Number: 440  Cannot reach the web service at "
                           "http://127.0.0.1:1/soap2/?wsdl&v=8: Connection refused"};
    }
    void reading() {
        QFETCH(QStringList, args);
        QFETCH(QByteArray, password);
        QFETCH(int, status);
        QFETCH(QStringList, expected);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), args, password);
        QCOMPARE(r.exitCode, status);
        const QString got = QString::fromUtf8(status == 0 ? r.out : r.err);
        for (const QString& line : expected)
            QVERIFY2(got.contains(line), qPrintable(line + u"\nnot in:\n"_s + got));
        // Only the client's description cache and the error log may appear.
        for (const QString& file : snapshotTree(dir.path()).keys())
            QVERIFY2(file == u"RR_Soap8.wsdl" || file == u"Error.log", qPrintable(file));
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

    void importIntoBankThenShowAndFrames_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("printed");
        QTest::addColumn<int>("errors"); // stderr lines naming a refused record
        QTest::newRow("subcategory and one frequency")
            << QStringList{"--county", "1001", "--subcat", "3002", "--fid", "40001"} << 0
            << QStringList{"1\t154.815000\tAshford County Services-Sheriff-Sheriff Dispatch",
                           "9\t155.160000\tAshford County Services-Fire / EMS-EMS Mutual Aid"}
            << 0;
        QTest::newRow("one site") << QStringList{"--system", "7001", "--site", "2"} << 0
                                  << QStringList{"1\t852.137500\tLCN-1", "2\t852.387500\tLCN-2",
                                                 "3\t852.637500\tLCN-3 Alternate"}
                                  << 0;
        QTest::newRow("full bank: 23 for 20 slots")
            << QStringList{"--county", "1001"} << 2
            << QStringList{"1\t154.815000\tAshford County Services-Sheriff-Sheriff Dispatch",
                           "20\t154.040000\tAshford County Services-Public Works-Water Department"}
            << 3;
    }
    void importIntoBankThenShowAndFrames() {
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
        QCOMPARE(outputLines(r.err).filter(u"bank 2 is full; not imported"_s).size(), errors);

        // The filled slots as show and frames see them; the slots after them keep their lines.
        const QStringList shown =
            outputLines(runKestrelctlIn(dir.path(), {"show", "--bank", "2"}).out);
        const QStringList frames =
            outputLines(runKestrelctlIn(dir.path(), {"frames", "--bank", "2"}).out);
        QCOMPARE(shown.size(), 20);
        QCOMPARE(frames.size(), 22); // start, 20 channels, stop
        for (int slot = 1; slot <= got.size(); ++slot) {
            const QStringList cells = got[slot - 1].split(u'\t');
            QCOMPARE(cells[0], QString::number(slot));
            QCOMPARE(shown[slot - 1], u"0"_s + QString::number(20 + slot) + u',' + cells[1] + u',' +
                                          cells[2] + u",False,False,False"_s);
            const QByteArray inFrame = QStringLiteral("C0%1^F%2")
                                           .arg(20 + slot)
                                           .arg(cells[1].left(8))
                                           .toLatin1()
                                           .toHex(' ')
                                           .toUpper();
            QVERIFY2(frames[slot].contains(QString::fromLatin1(inFrame)), qPrintable(frames[slot]));
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

    // Each search with a hit and without; an empty result is said on stderr and is no failure.
    void searches_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("expected"); // whole stdout lines; empty: no results
        const QString dispatch = u"154.815000\t159.105000\tKDL123\tSheriff Dispatch\tASO Disp\t"
                                 u"156.7 PL\t2\tBM\t3001\t0\t0\t1001"_s;
        QTest::newRow("freq in a state")
            << QStringList{"search", "freq", "--state", "101", "154.815"} << 0
            << QStringList{dispatch};
        QTest::newRow("freq and tone in a metro area")
            << QStringList{"search", "freq", "--metro", "601", "0", "--tone", "156.7"} << 0
            << QStringList{dispatch,
                           u"155.475000\t000.000000\t\tSheriff Tac 1\tASO Tac1\t156.7 PL\t2\tBM\t"
                           u"3001\t0\t0\t1001"_s,
                           u"155.535000\t000.000000\t\tSheriff Tac 2\tASO Tac2\t156.7 PL\t2\tBM\t"
                           u"3001\t0\t0\t1001"_s};
        QTest::newRow("freq, none")
            << QStringList{"search", "freq", "--county", "1001", "999"} << 0 << QStringList{};
        QTest::newRow("tag in an agency")
            << QStringList{"search", "tag", "--agency", "501", "1"} << 0
            << QStringList{u"40029\t154.665000\t000.000000\tKDL400\tTroop A Dispatch\tSP A Disp\t"
                           u"CSQ\t2\tBM\t1\t2026-03-14"_s};
        QTest::newRow("tag, none")
            << QStringList{"search", "tag", "--county", "1001", "99"} << 0 << QStringList{};
        QTest::newRow("call signs around a point")
            << QStringList{"search", "callsigns", "--", "44.52", "-70.11"} << 0
            << QStringList{u"KDL123\t44.53\t-70.12\t0.85\tAshford County"_s};
        QTest::newRow("call signs, none")
            << QStringList{"search", "callsigns", "--range", "3", "--unit", "k", "0", "0"} << 0
            << QStringList{};
        QTest::newRow("call sign, lower case")
            << QStringList{"callsign", "kdl123"} << 0
            << QStringList{u"licence\tAshford County\tKDL123\tActive\t2021-06-01\tPW\t"
                           u"Fictional licence of the demo data"_s,
                           u"frequency\t1\t154.815\t11K2F3E\tFB2\t100\t0\t0"_s,
                           u"frequency\t2\t159.105\t11K2F3E\tMO\t50\t40\t0"_s,
                           u"location\t1\t77001\tFixed\t45.7\t48.8\t210.3\t1 Tower Road\t44.53\t"
                           u"-70.12\tAshford\tAshford\tNP"_s,
                           u"location\t2\t0\tMobile\t0\t0\t0\t\t44.52\t-70.11\tAshford\tAshford\t"
                           u"NP"_s};
        QTest::newRow("call sign, none") << QStringList{"callsign", "ZZ9"} << 0 << QStringList{};
        QTest::newRow("system id") << QStringList{"sysid", "1a2b"} << 0
                                   << QStringList{u"7001\tDemoland Regional Radio\t1\t2\t1\t"
                                                  u"Ashford\t2026-03-10"_s};
        QTest::newRow("system id, none") << QStringList{"sysid", "FFFF"} << 0 << QStringList{};
        QTest::newRow("two areas")
            << QStringList{"search", "freq", "--state", "101", "--county", "1001", "154.815"} << 1
            << QStringList{};
        QTest::newRow("bad unit") << QStringList{"search", "callsigns", "--unit", "x", "0", "0"}
                                  << 1 << QStringList{};
    }
    void searches() {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QStringList, expected);
        QTemporaryDir dir;
        const ProcessResult r = rr(dir.path(), args);
        QCOMPARE(r.exitCode, status);
        QCOMPARE(outputLines(r.out), expected);
        if (status == 0)
            QCOMPARE(outputLines(r.err), expected.isEmpty()
                                             ? QStringList{u"No Results Found in Search!!!"_s}
                                             : QStringList{});
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
