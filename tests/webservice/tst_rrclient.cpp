// SPDX-License-Identifier: GPL-3.0-or-later
// The web-service client against a real HTTP server on 127.0.0.1 that answers with recorded
// replies: the description and its cache, request envelopes, result stores, every kind of
// failure, the proxy, and the remembered password.
#include "httpstub.h"
#include "testsupport.h"
#include "webservice/rrclient.h"
#include "webservice/webcredentials.h"

#include <QFile>
#include <QProcess>
#include <QTest>
#include <unistd.h>

using namespace kestrel;
using namespace kestrel::test;

namespace {

QByteArray data(const QString& name) {
    return readFile(dataPath(QStringLiteral("webservice/") + name));
}

// Answers the description at "?wsdl" and each operation with webservice/<operation>.xml.
HttpAnswer recorded(const HttpRequest& r) {
    if (r.method == "GET")
        return {200, data(QStringLiteral("rr_soap2.wsdl")), "text/xml; charset=ISO-8859-1"};
    const QByteArray action = r.headers.value("soapaction");
    const QByteArray op = action.mid(action.indexOf('#') + 1).chopped(1);
    const QString file = dataPath(QStringLiteral("webservice/%1.xml").arg(QLatin1String(op)));
    if (!QFile::exists(file))
        return {404, "<html><body>not found</body></html>", "text/html"};
    return {200, readFile(file)};
}

QByteArray reply(const QByteArray& op, const QByteArray& result) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><SOAP-ENV:Envelope "
           "xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope/\" "
           "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
           "xmlns:SOAP-ENC=\"http://schemas.xmlsoap.org/soap/encoding/\"><SOAP-ENV:Body><ns1:" +
           op + " xmlns:ns1=\"urn:x\">" + result + "</ns1:" + op +
           "></SOAP-ENV:Body></SOAP-ENV:Envelope>";
}

// A client in a fresh application folder, pointed at a stub serving the recorded replies.
struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::No};
    AppContext ctx{dir.path(), &prompts};
    HttpStub stub{recorded};
    RRClient& rr = ctx.component<RRClient>();

    explicit Fixture(bool cached = true) {
        ctx.settings.ServiceAddress = stub.base();
        rr.setCredentials(QStringLiteral("jo"), QStringLiteral("secret"));
        if (cached)
            writeFile(dir.filePath(QStringLiteral("RR_Soap8.wsdl")),
                      data(QStringLiteral("rr_soap2.wsdl")));
    }
};

} // namespace

class TstRRClient : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void descriptionFetchedCachedAndReread_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<int>("location");
        QTest::addColumn<QString>("cacheFile");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("service v8") << 8 << 0 << "RR_Soap8.wsdl" << QByteArray("/soap2/?wsdl&v=8");
        QTest::newRow("service latest")
            << 999 << 0 << "RR_Soap999.wsdl" << QByteArray("/soap2/?wsdl&v=latest");
        QTest::newRow("local classic") << 1 << 1 << "Local1.wsdl" << QByteArray("/soap2/?wsdl");
    }

    void descriptionFetchedCachedAndReread() {
        QFETCH(int, version);
        QFETCH(int, location);
        QFETCH(QString, cacheFile);
        QFETCH(QByteArray, target);
        Fixture f(false);
        f.ctx.settings.DBaseVersion = qint16(version);
        f.ctx.settings.DBaseIndex = qint16(location);
        QVERIFY(f.rr.InitSoap());
        QCOMPARE(f.stub.requests().size(), 1);
        QCOMPARE(f.stub.requests()[0].target, target);
        QCOMPARE(f.rr.WsdlFile, f.dir.filePath(cacheFile));
        QVERIFY(QFileInfo(f.rr.WsdlFile).size() > 48000);
        QCOMPARE(f.rr.Wsdl.Operations.size(), 30);
        QCOMPARE(f.rr.Wsdl.BindingOps.size(), 30);
        QCOMPARE(f.rr.Wsdl.Location,
                 QStringLiteral("https://api.radioreference.com/soap2/index.php"));

        // A second client reads the cache and fetches nothing.
        AppContext other(f.dir.path());
        other.settings = f.ctx.settings;
        RRClient& again = other.component<RRClient>();
        QVERIFY(again.InitSoap());
        QCOMPARE(f.stub.requests().size(), 1);
        QCOMPARE(again.Wsdl.Messages.size(), f.rr.Wsdl.Messages.size());
        // What the parse gives an operation is checked by the request envelopes below. No
        // operation for 24 or beyond 30: nothing is sent.
        QVERIFY(again.Get_CommandInfo(RRCommands::getSubcatFreqs));
        QVERIFY(!again.Get_CommandInfo(24));
        QVERIFY(!again.Get_CommandInfo(31));
    }

    void cacheOfSizeIsAcceptedOrDropped_data() {
        QTest::addColumn<int>("size");
        QTest::newRow("48000 dropped") << 48000;
        QTest::newRow("48001 kept") << 48001;
    }

    void cacheOfSizeIsAcceptedOrDropped() {
        QFETCH(int, size);
        Fixture f(false);
        const QString cache = f.dir.filePath(QStringLiteral("RR_Soap8.wsdl"));
        QByteArray text = data(QStringLiteral("rr_soap2.wsdl")).left(size);
        writeFile(cache, text);
        const bool kept = size > 48000;
        QCOMPARE(f.rr.InitSoap(), kept);
        QCOMPARE(QFile::exists(cache), kept);
        QCOMPARE(f.prompts.messages().size(), kept ? 0 : 1);
        QVERIFY(f.stub.requests().isEmpty());
    }

    void requestEnvelopes_data() {
        QTest::addColumn<QString>("op");
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("appKeySetting");
        QTest::newRow("getTag") << "getTag" << 8 << "";
        QTest::newRow("getCountryList") << "getCountryList" << 8 << "";
        QTest::newRow("searchCountyFreq, latest, own key")
            << "searchCountyFreq" << 999 << "12345678";
    }

    void requestEnvelopes() {
        QFETCH(QString, op);
        QFETCH(int, version);
        QFETCH(QString, appKeySetting);
        Fixture f;
        f.ctx.settings.AppKey = appKeySetting;
        f.ctx.settings.DBaseVersion = qint16(version);
        writeFile(f.dir.filePath(QStringLiteral("RR_Soap%1.wsdl").arg(version)),
                  data(QStringLiteral("rr_soap2.wsdl")));
        QVERIFY(f.rr.InitSoap());
        if (op == u"getTag")
            f.rr.getTag(0);
        else if (op == u"getCountryList")
            f.rr.getCountryList();
        else
            f.rr.searchCountyFreq(12, 154.815, QStringLiteral("118.8"));
        QCOMPARE(f.stub.requests().size(), 1);
        const HttpRequest& r = f.stub.requests()[0];
        QCOMPARE(r.target, QByteArray("/soap2/index.php"));
        QCOMPARE(r.headers.value("soapaction"),
                 "\"http://api.radioreference.com/soap2#" + op.toLatin1() + '"');
        const QString golden = QStringLiteral("webservice/request-%1.xml").arg(op);
        if (qEnvironmentVariableIsSet("KESTREL_REGENERATE_GOLDEN"))
            writeFile(dataPath(golden), r.body);
        QCOMPARE(r.body, readFile(dataPath(golden)));
    }

    // Recorded replies as the real service writes them: tags named from the tag store (or
    // not known), hertz where megahertz is usual, wrapped licence lists; a field the reply does
    // not mention is empty, never the previous record's. The plain mapping is read by the walk over
    // the local service.
    void storesFilled() {
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        QVERIFY(f.rr.getTag(0));
        QVERIFY(f.rr.getSubcatFreqs(50));
        const QList<TypFreq>& fr = f.rr.SubcatFreqs;
        QCOMPARE(fr.size(), 3);
        QCOMPARE(fr[0].tags[0].tagDescr, QStringLiteral("Fire Dispatch"));
        QCOMPARE(fr[0].tags[1].tagDescr, QStringLiteral("Unknown Tag:99"));
        QCOMPARE(FreqToHertz(fr[1].out), 453250000.0);
        QVERIFY(fr[1].tags.isEmpty()); // nil

        f.rr.CountyInfo.agencyList = {TypAgencySummary{4, QStringLiteral("kept"), 1}};
        QVERIFY(f.rr.getCountyInfo(12));
        QCOMPARE(f.rr.CountyInfo.cats[0].subcats[1].scName, QStringLiteral("Fireground"));
        QVERIFY(f.rr.CountyInfo.agencyList.isEmpty());

        QVERIFY(f.rr.getTrsSites(77));
        QCOMPARE(f.rr.TrsSites.at(0).siteLicenses, QStringList{QStringLiteral("WQX999")});
        QCOMPARE(FreqToHertz(f.rr.TrsSites.at(0).siteFreqs[1].freq), 852037500.0);
        QCOMPARE(f.ctx.errors.reportCount(), 0);
    }

    // Replies recorded from the live service (tests/data/webservice/live): each read into its
    // store, with the count of its main list and two values the recording holds.
    void liveRepliesRead_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("detail");
        auto row = [](const char* file, int count, const char* first, const char* detail) {
            QTest::newRow(file) << QString::fromLatin1(file) << count << QString::fromUtf8(first)
                                << QString::fromUtf8(detail);
        };
        row("country_list", 236, "Afghanistan", "AF");
        row("country_info", 54, "Alabama", "AL");
        row("state_info", 102, "Iowa", "Adair");
        row("county_info", 24, "Linn", "Graybill Electronics (LTR)");
        row("zipcode_info", 1, "Cedar Rapids", "841");
        row("user_data", 1, "user", "11-24-2026");
        row("trs_types", 13, "Motorola", "1");
        row("trs_flavors", 49, "Type I", "1");
        row("trs_voices", 28, "Analog", "1");
        row("trs_details_p25", 9, "SARA Network", "836");
        row("trs_details_capplus", 0, "General Mills", "841");
        row("trs_details_dmr_tier3", 1, "Alliant Energy", "803");
        row("trs_details_dmr_conv", 0, "Iowa DMR Users Group", "832");
        row("trs_details_nxdn", 1, "Duane Arnold Energy Center", "841");
        row("trs_details_edacs", 0, "Hillsborough County (EDACS)", "344");
        row("trs_sites_p25", 35, "Johnson Co Simulcast", "");
        row("trs_sites_capplus", 1, "Cedar Rapids", "");
        row("trs_sites_dmr_tier3", 129, "Adams", "");
        row("trs_sites_dmr_conv", 36, "Waukee", "");
        row("trs_sites_dmr_conv_small", 2, "Marion", "");
        row("trs_sites_nxdn", 1, "Palo", "");
        row("trs_sites_edacs", 2, "East System", "");
        row("trs_talkgroup_cats_p25", 64, "University of Iowa", "14581");
        row("trs_talkgroups_p25", 1793, "County Fire Mutual Aid Patch - 154.340", "52031");
        row("trs_talkgroups_capplus", 13, "Ops 109", "109");
        row("trs_talkgroups_dmr_tier3", 66, "Mason City Operations", "6001");
        row("trs_talkgroups_dmr_conv", 14, "Statewide Calling Talkgroup", "3119");
        row("trs_talkgroups_nxdn", 6, "Ops 10", "10");
        row("trs_talkgroups_edacs", 242, "Courthouse Transportation", "341");
    }
    void liveRepliesRead() {
        QFETCH(QString, file);
        QFETCH(int, count);
        QFETCH(QString, first);
        QFETCH(QString, detail);
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        const QByteArray body = data(QStringLiteral("live/%1.xml").arg(file));
        f.stub.setHandler([&](const HttpRequest&) { return HttpAnswer{200, body}; });
        RRClient& rr = f.rr;
        qsizetype n = -1;
        QString got, more;
        if (file == u"country_list") {
            QVERIFY(rr.getCountryList());
            n = rr.Countries.size();
            got = rr.Countries[0].countryName;
            more = rr.Countries[0].countryCode;
        } else if (file == u"country_info") {
            QVERIFY(rr.getCountryInfo(1));
            n = rr.States.size();
            got = rr.States[0].stateName;
            more = rr.States[0].stateCode;
        } else if (file == u"state_info") {
            QVERIFY(rr.getStateInfo(19));
            n = rr.StateInfo.countyList.size();
            got = rr.StateInfo.stateName;
            more = rr.StateInfo.countyList[0].countyName;
        } else if (file == u"county_info") {
            QVERIFY(rr.getCountyInfo(841));
            n = rr.CountyInfo.trsList.size();
            got = rr.CountyInfo.countyName;
            more = rr.CountyInfo.trsList[0].sName;
        } else if (file == u"zipcode_info") {
            QVERIFY(rr.getZipcodeInfo(52401));
            n = 1;
            got = rr.ZipcodeInfo.city;
            more = QString::number(rr.ZipcodeInfo.ctid);
        } else if (file == u"user_data") {
            QVERIFY(rr.getUserData());
            n = 1;
            got = rr.UserData.username;
            more = rr.UserData.subExpireDate;
        } else if (file == u"trs_types") {
            QVERIFY(rr.getTrsType(0));
            n = rr.TrsTypes.size();
            got = rr.TrsTypes[0].sTypeDescr;
            more = QString::number(rr.TrsTypes[0].sType);
        } else if (file == u"trs_flavors") {
            QVERIFY(rr.getTrsFlavor(0));
            n = rr.TrsFlavors.size();
            got = rr.TrsFlavors[0].sFlavorDescr;
            more = QString::number(rr.TrsFlavors[0].sFlavor);
        } else if (file == u"trs_voices") {
            QVERIFY(rr.getTrsVoice(0));
            n = rr.TrsVoices.size();
            got = rr.TrsVoices[0].sVoiceDescr;
            more = QString::number(rr.TrsVoices[0].sVoice);
        } else if (file.startsWith(u"trs_details")) {
            QVERIFY(rr.getTrsDetails(1));
            n = rr.TrsDetails.sysid.size();
            got = rr.TrsDetails.sName;
            more = QString::number(rr.TrsDetails.sCounty.value(0));
        } else if (file.startsWith(u"trs_sites")) {
            QVERIFY(rr.getTrsSites(1));
            n = rr.TrsSites.size();
            got = rr.TrsSites[0].siteDescr;
            for (const TypSite& site : rr.TrsSites) // every site carries its frequencies
                QVERIFY2(!site.siteFreqs.isEmpty() && FreqToHertz(site.siteFreqs[0].freq) > 1e7,
                         qPrintable(site.siteDescr));
        } else if (file.startsWith(u"trs_talkgroup_cats")) {
            QVERIFY(rr.getTrsTalkgroupCats(6673));
            n = rr.TgCats.size();
            got = rr.TgCats[0].tgCname;
            more = QString::number(rr.TgCats[0].tgCid);
        } else {
            rr.TgCats.resize(1);
            QVERIFY(rr.getTrsTalkgroups(0, 1, 0, 0, 0));
            const QList<TypTalkgroup>& tgs = rr.TgCats[0].Talkgroups;
            n = tgs.size();
            got = tgs[0].tgDescr;
            more = QString::number(tgs[0].tgDec);
        }
        QCOMPARE(n, qsizetype(count));
        QCOMPARE(got, first);
        QCOMPARE(more, detail);
        QCOMPARE(f.ctx.errors.reportCount(), 0);
    }

    // getCountryInfo answers a CountryInfo record from version 9 on (the live row above) and a
    // bare list of states to a client naming no version; a record without states empties them.
    void countryInfoShapes_data() {
        QTest::addColumn<QByteArray>("result");
        QTest::addColumn<QStringList>("states");
        const QByteArray state = "<item><stid>4</stid><stateName>Arizona</stateName></item>"
                                 "<item><stid>6</stid><stateName>California</stateName></item>";
        QTest::newRow("bare list")
            << "<return SOAP-ENC:arrayType=\"tns:State[2]\">" + state + "</return>"
            << QStringList{"Arizona", "California"};
        QTest::newRow("record") << "<return><coid>1</coid><agencyList/><stateList>" + state +
                                       "</stateList></return>"
                                << QStringList{"Arizona", "California"};
        QTest::newRow("record, nil states")
            << QByteArray("<return><coid>1</coid><stateList xsi:nil=\"true\"/></return>")
            << QStringList{};
    }
    void countryInfoShapes() {
        QFETCH(QByteArray, result);
        QFETCH(QStringList, states);
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        f.rr.States = {TypState{9, QStringLiteral("stale"), {}}};
        f.stub.setHandler([&](const HttpRequest&) {
            return HttpAnswer{200, reply("getCountryInfoResponse", result)};
        });
        QCOMPARE(f.rr.getCountryInfo(1), !states.isEmpty());
        QStringList got;
        for (const TypState& s : f.rr.States)
            got << s.stateName;
        QCOMPARE(got, states);
    }

    // The live AUTH fault (HTTP 500) is kept as the client's last fault until the next reply.
    void lastFaultKeptUntilTheNextReply() {
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        QVERIFY(!f.rr.lastFault());
        int status = 500;
        QByteArray body = data(QStringLiteral("live/fault_auth.xml"));
        f.stub.setHandler([&](const HttpRequest&) { return HttpAnswer{status, body}; });
        QVERIFY(!f.rr.getUserData());
        QVERIFY(f.rr.lastFault());
        QCOMPARE(f.rr.lastFault()->faultcode, QStringLiteral("AUTH"));
        QVERIFY(f.rr.lastFault()->faultstring.startsWith(u"Invalid Username or Password.  Make"));
        status = 200;
        body = data(QStringLiteral("live/user_data.xml"));
        QVERIFY(f.rr.getUserData());
        QVERIFY(!f.rr.lastFault());
    }

    void failedQueriesEmptyTheirStore_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("mode");
        // Empty: no report; a fault's label, or the start of the sentence a failure is told in.
        QTest::addColumn<QString>("label");
        const QByteArray fault = data(QStringLiteral("fault-auth.xml"));
        QTest::newRow("nil") << 200 << reply("getTagResponse", "<return xsi:nil=\"true\"/>") << 0
                             << "";
        QTest::newRow("empty array")
            << 200
            << reply("getTagResponse",
                     "<return xsi:type=\"SOAP-ENC:Array\" SOAP-ENC:arrayType=\"tns:Tag[0]\"/>")
            << 0 << "";
        QTest::newRow("fault") << 500 << fault << 0 << "The web service at %1 refused the user";
        QTest::newRow("other element") << 200 << reply("getModeResponse", "<return/>") << 0
                                       << "ReportRtn-getModeResponse - getTag";
        QTest::newRow("cut short") << 200 << data(QStringLiteral("getTag.xml")) << 2
                                   << "The address %1 did not answer as the web service does (";
        QTest::newRow("never answers")
            << 200 << QByteArray() << 1 << "The web service at %1 did not answer within 60 seconds";
        QTest::newRow("17 MB") << 200 << QByteArray(17 * 1024 * 1024, ' ') << 0
                               << "The reply from %1 is larger than 16777216 bytes";
    }

    void failedQueriesEmptyTheirStore() {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(int, mode);
        QFETCH(QString, label);
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        f.rr.setTimeScale(0.005); // 60 s become 0.3 s
        f.stub.setHandler([&](const HttpRequest&) {
            return HttpAnswer{status, body, "text/xml", HttpAnswer::Mode(mode)};
        });
        f.rr.Tags = {TypTag{1, QStringLiteral("old")}};
        QVERIFY(!f.rr.getTag(0));
        QVERIFY(f.rr.Tags.isEmpty());
        QCOMPARE(f.ctx.errors.reportCount(), label.isEmpty() ? 0 : 1);
        if (label.startsWith(u"The ")) {
            QVERIFY2(f.ctx.errors.lastFailure().startsWith(label.arg(f.stub.base())),
                     qPrintable(f.ctx.errors.lastFailure()));
            QVERIFY(!QFile::exists(f.ctx.errors.logPath())); // not a fault of the program
        } else if (!label.isEmpty()) {
            QCOMPARE(f.ctx.errors.currentLabel(), label);
        }
    }

    // A refused connection (a port just closed); a failed TLS handshake takes the same way.
    void connectionFailureNamesTheAddress() {
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost, 0));
        const QString base = QStringLiteral("http://127.0.0.1:%1/soap2/").arg(server.serverPort());
        server.close();
        f.rr.setBaseUrlOverride(base);
        QVERIFY(!f.rr.getTag(0));
        QCOMPARE(f.ctx.errors.reportCount(), 1);
        QVERIFY(f.ctx.errors.lastFailure().startsWith("The web service at " + base +
                                                      " cannot be reached ("));
        QVERIFY(f.rr.LastEnvelope.contains(u"getTagRequest")); // the request, as sent
    }

    void secondRequestIsRefused() {
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        bool nested = true;
        f.stub.setHandler([&](const HttpRequest& r) {
            nested = f.rr.getMode(1); // arrives while getTag waits for this very reply
            return recorded(r);
        });
        QVERIFY(f.rr.getTag(0));
        QVERIFY(!nested);
        QCOMPARE(f.stub.requests().size(), 1);
        QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("RRSoap - getMode"));
        QCOMPARE(f.rr.Tags.size(), 2);
    }

    void talkgroupsFillOnlyTheirCategory() {
        Fixture f;
        QVERIFY(f.rr.InitSoap());
        QList<TypTalkgroup> groups(3);
        groups[2].tgDescr = QStringLiteral("Fire Ops");
        groups[2].tgLtr = true;
        f.stub.setHandler([&](const HttpRequest&) {
            return HttpAnswer{
                200, soap::WriteEnvelope({QStringLiteral("getTrsTalkgroupsResponse"),
                                          QStringLiteral("urn:x"),
                                          {WriteRecordList(groups, QStringLiteral("return"))},
                                          false,
                                          {}})};
        });
        f.rr.TgCats.resize(2);
        f.rr.TgCats[0].Talkgroups = {TypTalkgroup{}};
        QVERIFY(f.rr.getTrsTalkgroups(1, 77, 0, 0, 0));
        QCOMPARE(f.rr.TgCats[0].TalkgroupCnt(), 1);
        QCOMPARE(f.rr.TgCats[1].TalkgroupCnt(), 3);
        QVERIFY(f.rr.TgCats[1].Talkgroups[2].tgLtr);
        QVERIFY(!f.rr.getTrsTalkgroups(2, 77, 0, 0, 0));
        QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("RRSoap - getTrsTalkgroups"));
    }

    void requestsGoThroughTheProxy() {
        QTemporaryDir dir;
        QTcpServer probe;
        QVERIFY(probe.listen(QHostAddress::LocalHost, 0));
        const quint16 port = probe.serverPort();
        probe.close();
        const QString conf = dir.filePath(QStringLiteral("tinyproxy.conf"));
        QByteArray text = "Port " + QByteArray::number(port) +
                          "\nListen 127.0.0.1\nAllow 127.0.0.1\nTimeout 30\nMaxClients 4\n"
                          "LogLevel Info\nDisableViaHeader No\n";
        if (getuid() == 0)
            text += "User nobody\nGroup nogroup\n";
        writeFile(conf, text);
        QProcess proxy;
        proxy.start(QStringLiteral("tinyproxy"),
                    {QStringLiteral("-d"), QStringLiteral("-c"), conf});
        QVERIFY2(proxy.waitForStarted(), "tinyproxy (tools/bootstrap installs it)");
        const auto stop = qScopeGuard([&] {
            proxy.terminate();
            proxy.waitForFinished(3000);
        });
        const auto accepts = [port] {
            QTcpSocket s;
            s.connectToHost(QHostAddress::LocalHost, port);
            return s.waitForConnected(100);
        };
        QTRY_VERIFY_WITH_TIMEOUT(accepts(), 10000);

        Fixture f;
        f.ctx.settings.DBaseProxyUse = true;
        f.ctx.settings.DBaseProxyAdr = QStringLiteral("127.0.0.1");
        f.ctx.settings.DBaseProxyPrt = qint16(port);
        QVERIFY(f.rr.InitSoap());
        QVERIFY(f.rr.getTag(0));
        QCOMPARE(f.rr.Tags.size(), 2);
        QVERIFY(f.stub.requests().last().headers.value("via").contains("tinyproxy"));
    }

    void passwordFallsBackToPrivateFile() {
        QTemporaryDir dir;
        ScriptedPrompts prompts;
        AppContext ctx(dir.path(), &prompts);
        WebCredentials& login = ctx.component<WebCredentials>();
        login.setSecretStoreEnabled(false);
        login.remember(QStringLiteral("jo"), QStringLiteral("s3cret"));
        login.remember(QStringLiteral("jo"), QStringLiteral("s3cret2"));
        QCOMPARE(prompts.messages().size(), 1); // said once
        QVERIFY(prompts.messages()[0].text.contains(u"unencrypted"));
        QCOMPARE(LoadRegistryValues().WebWord, QStringLiteral("s3cret2"));
        QCOMPARE(login.password(), QStringLiteral("s3cret2"));
        const QFile::Permissions perms = QFile::permissions(RegistryFilePath());
        QVERIFY(perms.testFlag(QFile::WriteOwner));
        QCOMPARE(perms &
                     (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
                 QFile::Permissions{});
        login.forget();
        QVERIFY(LoadRegistryValues().WebWord.isEmpty());
        QCOMPARE(LoadRegistryValues().WebName, QStringLiteral("jo"));
    }

    // A description declaring entities (a way to blow up memory) is not parsed at all.
    void descriptionWithEntitiesIsRefused() {
        Fixture f;
        writeFile(f.dir.filePath(QStringLiteral("RR_Soap8.wsdl")),
                  "<?xml version=\"1.0\"?><!DOCTYPE definitions [<!ENTITY k \"kk\">]><definitions>"
                  "<message name=\"&k;\"/></definitions>" +
                      QByteArray(48001, ' '));
        QVERIFY(f.rr.InitSoap());
        QVERIFY(f.rr.Wsdl.Messages.isEmpty());
        QVERIFY(!f.rr.getTag(0));
        QVERIFY(f.stub.requests().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TstRRClient)
#include "tst_rrclient.moc"
