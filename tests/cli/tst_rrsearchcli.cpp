// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr search, callsign and sysid run as a process against the local service with its
// demo data on a free loopback port, and the import of search results as show then sees it.
#include "testsupport.h"

#include "webservice/server/rrlocalserver.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestRRSearchCli : public QObject {
    Q_OBJECT
    QThread m_thread; // the service answers from its own thread while the test waits
    QObject* m_home = nullptr;
    RRLocalServer* m_server = nullptr;
    QString m_url;
    QTemporaryDir m_config;

    ProcessResult rr(const QString& dir, const QStringList& args) {
        QProcess proc;
        proc.start(qEnvironmentVariable("KESTRELCTL"),
                   QStringList{u"--data-dir"_s, dir, u"rr"_s, args.first(), u"--url"_s, m_url,
                               u"--user"_s, u"demo"_s, u"--password-stdin"_s} +
                       args.mid(1));
        ProcessResult r;
        if (!proc.waitForStarted(60000))
            return r;
        proc.write("demo\n");
        proc.closeWriteChannel();
        if (!proc.waitForFinished(60000))
            proc.kill();
        r.exitCode = proc.exitStatus() == QProcess::NormalExit ? proc.exitCode() : -1;
        r.out = proc.readAllStandardOutput();
        r.err = proc.readAllStandardError();
        return r;
    }
    static QStringList lines(const QByteArray& out) {
        return QString::fromUtf8(out).split(u'\n', Qt::SkipEmptyParts);
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
        QCOMPARE(lines(r.out), expected);
        if (status == 0)
            QCOMPARE(lines(r.err), expected.isEmpty()
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
        const ProcessResult show =
            runKestrelctl({u"--data-dir"_s, dir.path(), u"show"_s, u"--bank"_s, u"4"_s});
        QCOMPARE(lines(show.out).mid(0, shown.size()), shown);
    }
};

QTEST_GUILESS_MAIN(TestRRSearchCli)
#include "tst_rrsearchcli.moc"
