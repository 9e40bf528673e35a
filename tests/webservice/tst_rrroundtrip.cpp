// SPDX-License-Identifier: GPL-3.0-or-later
// The web-service client against the local service over real HTTP: the description fetched,
// cached and parsed, and a walk from country to frequencies and talk groups.
#include "webservice/rrclient.h"
#include "webservice/server/rrlocalserver.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;

class TstRRRoundTrip : public QObject {
    Q_OBJECT
    RRLocalServer m_server;

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.listen() != 0); }

    void walksTheDemoData_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("cacheFile");
        QTest::newRow("latest") << 999 << "Local999.wsdl";
        QTest::newRow("classic") << 1 << "Local1.wsdl";
    }

    void walksTheDemoData() {
        QFETCH(int, version);
        QFETCH(QString, cacheFile);
        QTemporaryDir dir;
        ScriptedPrompts prompts(Answer::Yes);
        AppContext ctx(dir.path(), &prompts);
        ctx.settings.DBaseIndex = 1;
        ctx.settings.DBaseVersion = qint16(version);
        RRClient& client = ctx.component<RRClient>();
        client.setBaseUrlOverride(m_server.baseUrl(version == 1));
        client.setCredentials(QStringLiteral("demo"), QStringLiteral("demo"));

        QVERIFY(client.InitSoap());
        QVERIFY(client.descriptionLoaded());
        QVERIFY(QFileInfo(dir.filePath(cacheFile)).size() > 48000);
        QVERIFY(client.getTag(0));
        QVERIFY(client.getCountryList());
        QCOMPARE(client.Countries.first().coid, 1);
        QVERIFY(client.getCountryInfo(1));
        QCOMPARE(client.Get_StateName(102), QStringLiteral("South Province"));
        QVERIFY(client.getStateInfo(101));
        QCOMPARE(client.Get_CountyName(1002), QStringLiteral("Birchwood"));
        QVERIFY(client.getCountyInfo(1001));
        QCOMPARE(client.CountyInfo.cats.first().subcats.size(), 3);
        QVERIFY(client.getSubcatFreqs(3001));
        QCOMPARE(client.SubcatFreqs.size(), 10);
        QCOMPARE(FreqToHertz(client.SubcatFreqs.first().out), 154815000.0);
        QCOMPARE(client.SubcatFreqs.first().tags.first().tagDescr, QStringLiteral("Law Dispatch"));
        QVERIFY(client.fccGetProxCallsigns(44.52, -70.11, 5, QStringLiteral("mi")));
        QVERIFY(m_server.lastRequest().contains(">mi</unit>"));
        QVERIFY(m_server.lastSoapAction().contains("#fccGetProxCallsigns"));
        QVERIFY(!client.searchCountyFreq(1001, 999.5, QString())); // an empty array
        QVERIFY(client.getTrsSites(7001)); // "siteFeqs" in the first generation
        QCOMPARE(client.TrsSites.last().siteFreqs.size(), 3);
        QVERIFY(client.getTrsTalkgroupCats(7001));
        QCOMPARE(client.TgCats.last().tgCname, QStringLiteral("All"));
        QVERIFY(client.getTrsTalkgroups(1, 7001, 9002, 0, 0));
        QCOMPARE(client.TgCats[1].Talkgroups.last().tgSubfleet, QStringLiteral("100-14"));
        QVERIFY(client.getUserData());
        QCOMPARE(client.UserData.subExpireDate, QStringLiteral("12-31-2030"));
        QCOMPARE(ctx.errors.reportCount(), 0);
    }
};

QTEST_MAIN(TstRRRoundTrip)
#include "tst_rrroundtrip.moc"
