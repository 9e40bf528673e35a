// SPDX-License-Identifier: GPL-3.0-or-later
// Our client reads the replies the local service gave to python3-suds's requests (recorded once
// by peer_suds_walk.py), each operation into its store, with a value the recording holds.
#include "httpstub.h"
#include "testsupport.h"
#include "webservice/rrclient.h"
#include "webservice/server/rrdescriptionwriter.h"

#include <QTest>
#include <functional>

using namespace kestrel;
using namespace kestrel::test;

namespace {

QByteArray recording(const QString& op) {
    return readFile(dataPath(QStringLiteral("webservice/suds/%1.xml").arg(op)));
}

struct Case {
    const char* op;
    std::function<bool(RRClient&)> call;
    std::function<QString(const RRClient&)> read;
    const char* value;
};

const Case kCases[] = {
    {"getTag", [](RRClient& c) { return c.getTag(0); },
     [](const RRClient& c) { return c.Tags.value(0).tagDescr; }, "Law Dispatch"},
    {"getMode", [](RRClient& c) { return c.getMode(0); },
     [](const RRClient& c) { return c.Modes.value(0).modeName; }, "FM"},
    {"getTrsType", [](RRClient& c) { return c.getTrsType(0); },
     [](const RRClient& c) { return c.TrsTypes.value(0).sTypeDescr; }, "Motorola"},
    {"getTrsFlavor", [](RRClient& c) { return c.getTrsFlavor(0); },
     [](const RRClient& c) { return c.TrsFlavors.value(0).sFlavorDescr; }, "Type I"},
    {"getTrsVoice", [](RRClient& c) { return c.getTrsVoice(0); },
     [](const RRClient& c) { return c.TrsVoices.value(0).sVoiceDescr; }, "Analog"},
    {"getCountryList", [](RRClient& c) { return c.getCountryList(); },
     [](const RRClient& c) { return c.Countries.value(0).countryName; }, "Demoland"},
    {"getCountryInfo", [](RRClient& c) { return c.getCountryInfo(1); },
     [](const RRClient& c) { return c.States.value(0).stateName; }, "North Province"},
    {"getStateInfo", [](RRClient& c) { return c.getStateInfo(101); },
     [](const RRClient& c) { return c.StateInfo.stateName; }, "North Province"},
    {"getCountyInfo", [](RRClient& c) { return c.getCountyInfo(1001); },
     [](const RRClient& c) { return c.CountyInfo.countyName; }, "Ashford"},
    {"getAgencyInfo", [](RRClient& c) { return c.getAgencyInfo(501); },
     [](const RRClient& c) { return c.AgencyInfo.agencyName; }, "Demoland State Police"},
    {"getSubcatFreqs", [](RRClient& c) { return c.getSubcatFreqs(3001); },
     [](const RRClient& c) { return QString::number(c.SubcatFreqs.value(0).fid); }, "40001"},
    {"searchCountyFreq", [](RRClient& c) { return c.searchCountyFreq(1001, 0, {}); },
     [](const RRClient& c) { return c.CountyFreqSearch.value(0).callsign; }, "KDL123"},
    {"searchStateFreq", [](RRClient& c) { return c.searchStateFreq(101, 0, {}); },
     [](const RRClient& c) { return c.StateFreqSearch.value(0).callsign; }, "KDL123"},
    {"searchMetroFreq", [](RRClient& c) { return c.searchMetroFreq(601, 0, {}); },
     [](const RRClient& c) { return c.MetroFreqSearch.value(0).callsign; }, "KDL123"},
    {"getCountyFreqsByTag", [](RRClient& c) { return c.getCountyFreqsByTag(1001, 1); },
     [](const RRClient& c) { return QString::number(c.CountyFreqsByTag.value(0).fid); }, "40001"},
    {"getAgencyFreqsByTag", [](RRClient& c) { return c.getAgencyFreqsByTag(501, 1); },
     [](const RRClient& c) { return QString::number(c.AgencyFreqsByTag.value(0).fid); }, "40029"},
    {"getMetroArea", [](RRClient& c) { return c.getMetroArea(601); },
     [](const RRClient& c) { return c.MetroAreas.value(0).metroName; }, "Ashford-Birchwood"},
    {"getZipcodeInfo", [](RRClient& c) { return c.getZipcodeInfo(12345); },
     [](const RRClient& c) { return QString::number(c.ZipcodeInfo.lat); }, "44.52"},
    {"fccGetCallsign", [](RRClient& c) { return c.fccGetCallsign("KDL123"); },
     [](const RRClient& c) { return c.FccCallsign.licensee; }, "Ashford County"},
    {"fccGetRadioServiceCode", [](RRClient& c) { return c.fccGetRadioServiceCode("0"); },
     [](const RRClient& c) { return c.RadioServiceCodes.value(0).code; }, "PW"},
    {"fccGetProxCallsigns",
     [](RRClient& c) { return c.fccGetProxCallsigns(44.52, -70.11, 2, "mi"); },
     [](const RRClient& c) { return c.ProxCallsigns.value(0).callsign; }, "KDL123"},
    {"getTrsBySysid", [](RRClient& c) { return c.getTrsBySysid("1A2B"); },
     [](const RRClient& c) { return c.TrsBySysid.value(0).sName; }, "Demoland Regional Radio"},
    {"getTrsDetails", [](RRClient& c) { return c.getTrsDetails(7001); },
     [](const RRClient& c) { return c.TrsDetails.sName; }, "Demoland Regional Radio"},
    {"getTrsSites", [](RRClient& c) { return c.getTrsSites(7001); },
     [](const RRClient& c) { return QString::number(c.TrsSites.value(0).siteId); }, "8001"},
    {"getTrsTalkgroupCats", [](RRClient& c) { return c.getTrsTalkgroupCats(7001); },
     [](const RRClient& c) { return c.TgCats.value(0).tgCname; }, "Ashford County"},
    {"getTrsTalkgroups",
     [](RRClient& c) {
         c.TgCats = {TypTgCat{}};
         return c.getTrsTalkgroups(0, 7001, 0, 0, 0);
     },
     [](const RRClient& c) { return c.TgCats.value(0).Talkgroups.value(0).tgDescr; },
     "Sheriff Dispatch"},
    {"getUserData", [](RRClient& c) { return c.getUserData(); },
     [](const RRClient& c) { return c.UserData.subExpireDate; }, "12-31-2030"},
    {"getUserFeedBroadcasts", [](RRClient& c) { return c.getUserFeedBroadcasts(); },
     [](const RRClient& c) { return c.Feeds.value(0).hostname; }, "audio.demoland.example"},
};

} // namespace

class TstRRSudsReplies : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsTheReplyToSuds_data() {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(std::size(kCases)); ++i)
            QTest::newRow(kCases[i].op) << i;
    }

    void readsTheReplyToSuds() {
        QFETCH(int, index);
        const Case& c = kCases[index];
        const QByteArray reply = recording(QString::fromLatin1(c.op));
        QVERIFY(reply.contains(QByteArray(">") + c.value + "<"));
        HttpStub stub([&](const HttpRequest& r) -> HttpAnswer {
            if (r.method == "GET")
                return {200,
                        RRServiceDescription(QStringLiteral("http://127.0.0.1/soap2/"), false)};
            return {200, reply};
        });
        QTemporaryDir dir;
        ScriptedPrompts prompts{Answer::No};
        AppContext ctx{dir.path(), &prompts};
        ctx.settings.ServiceAddress = stub.base();
        RRClient& rr = ctx.component<RRClient>();
        rr.setCredentials(QStringLiteral("demo"), QStringLiteral("demo"));
        QVERIFY(rr.InitSoap());
        QVERIFY(c.call(rr));
        QCOMPARE(c.read(rr), QString::fromUtf8(c.value));
        QCOMPARE(ctx.errors.reportCount(), 0);
    }
};

QTEST_MAIN(TstRRSudsReplies)
#include "tst_rrsudsreplies.moc"
