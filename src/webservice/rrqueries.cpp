// SPDX-License-Identifier: GPL-3.0-or-later
// The query operations: each sends its parameters through the request frame and maps the reply
// into its store through the record tables.
#include "rrclient.h"

namespace kestrel {

using soap::SoapValue;

namespace {

SoapValue Int(const char* name, qint32 v) {
    return SoapValue::integer(QString::fromLatin1(name), v);
}
SoapValue Dbl(const char* name, double v) {
    return SoapValue::dbl(QString::fromLatin1(name), v);
}
SoapValue Str(const char* name, const QString& v) {
    return SoapValue::string(QString::fromLatin1(name), v);
}

} // namespace

template <class T>
bool RRClient::listQuery(RRCommands cmd, QList<SoapValue> params, QList<T>& store) {
    SoapValue* result = request(cmd, std::move(params), [&] { store.clear(); });
    if (!result)
        return false;
    ReadRecordList(*result, store);
    Clear_Objects();
    return !store.isEmpty();
}

template <class T> bool RRClient::recordQuery(RRCommands cmd, QList<SoapValue> params, T& store) {
    // Emptied like a list: after a failure nothing of the previous record is shown as this one.
    SoapValue* result = request(cmd, std::move(params), [&] { store = T{}; });
    if (!result)
        return false;
    const bool isStruct = result->isStruct();
    if (isStruct)
        ReadRecord(*result, store);
    Clear_Objects();
    return isStruct;
}

bool RRClient::getTrsTalkgroupCats(qint32 sid) {
    if (!listQuery(RRCommands::getTrsTalkgroupCats, {Int("sid", sid)}, TgCats))
        return false;
    for (TypTgCat& c : TgCats)
        if (c.tgCname.isEmpty())
            c.tgCname = QStringLiteral("All");
    return true;
}

bool RRClient::getTrsTalkgroups(qint16 catIndex, qint32 sid, qint32 tgCid, qint32 tgTag,
                                qint32 tgDec) {
    if (catIndex < 0 || catIndex >= TgCats.size()) {
        m_ctx.errors.ReportError(QStringLiteral("RRSoap - getTrsTalkgroups"), 1,
                                 err::SubscriptOutOfRange,
                                 QStringLiteral("Subscript out of range"));
        return false;
    }
    QList<TypTalkgroup>& store = TgCats[catIndex].Talkgroups;
    if (!listQuery(RRCommands::getTrsTalkgroups,
                   {Int("sid", sid), Int("tgCid", tgCid), Int("tgTag", tgTag), Int("tgDec", tgDec)},
                   store))
        return false;
    for (TypTalkgroup& tg : store)
        lookUpTags(tg.tags);
    return true;
}

bool RRClient::getTrsDetails(qint32 sid) {
    return recordQuery(RRCommands::getTrsDetails, {Int("sid", sid)}, TrsDetails);
}

bool RRClient::getTrsBySysid(const QString& sysid) {
    return listQuery(RRCommands::getTrsBySysid, {Str("sysid", sysid)}, TrsBySysid);
}

bool RRClient::getTrsSites(qint32 sid) {
    SoapValue* result =
        request(RRCommands::getTrsSites, {Int("sid", sid)}, [&] { TrsSites.clear(); });
    if (!result)
        return false;
    // The first-generation service spells the sites' frequency list "siteFeqs".
    if (m_ctx.settings.DBaseVersion == 1)
        for (SoapValue& site : result->children) {
            for (qsizetype i = site.children.size() - 1; i >= 0; --i)
                if (site.children[i].name == u"siteFreqs")
                    site.children.removeAt(i);
            if (SoapValue* feqs = site.child(u"siteFeqs"))
                feqs->name = QStringLiteral("siteFreqs");
        }
    ReadRecordList(*result, TrsSites);
    Clear_Objects();
    return !TrsSites.isEmpty();
}

bool RRClient::getTag(qint32 id) {
    return listQuery(RRCommands::getTag, {Int("id", id)}, Tags);
}

bool RRClient::getMode(qint32 mode) {
    return listQuery(RRCommands::getMode, {Int("mode", mode)}, Modes);
}

bool RRClient::getTrsType(qint32 id) {
    return listQuery(RRCommands::getTrsType, {Int("id", id)}, TrsTypes);
}

bool RRClient::getTrsFlavor(qint32 id) {
    return listQuery(RRCommands::getTrsFlavor, {Int("id", id)}, TrsFlavors);
}

bool RRClient::getTrsVoice(qint32 id) {
    return listQuery(RRCommands::getTrsVoice, {Int("id", id)}, TrsVoices);
}

bool RRClient::getCountryList() {
    return listQuery(RRCommands::getCountryList, {}, Countries);
}

// From version 9 on the service answers a CountryInfo record whose stateList holds the states;
// a client that names no version gets the bare list.
bool RRClient::getCountryInfo(qint32 coid) {
    SoapValue* result =
        request(RRCommands::getCountryInfo, {Int("coid", coid)}, [&] { States.clear(); });
    if (!result)
        return false;
    const SoapValue* list = result->isStruct() ? result->child(u"stateList") : result;
    if (list)
        ReadRecordList(*list, States);
    else
        States.clear();
    Clear_Objects();
    return !States.isEmpty();
}

bool RRClient::getStateInfo(qint32 stid) {
    return recordQuery(RRCommands::getStateInfo, {Int("stid", stid)}, StateInfo);
}

bool RRClient::getCountyInfo(qint32 ctid) {
    return recordQuery(RRCommands::getCountyInfo, {Int("ctid", ctid)}, CountyInfo);
}

bool RRClient::getAgencyInfo(qint32 aid) {
    return recordQuery(RRCommands::getAgencyInfo, {Int("aid", aid)}, AgencyInfo);
}

bool RRClient::getSubcatFreqs(qint32 scid) {
    if (!listQuery(RRCommands::getSubcatFreqs, {Int("scid", scid)}, SubcatFreqs))
        return false;
    for (TypFreq& f : SubcatFreqs)
        lookUpTags(f.tags);
    return true;
}

namespace {
template <class F> bool withTags(bool ok, QList<F>& store, const RRClient& c) {
    if (ok)
        for (F& f : store)
            for (TypTag& t : f.tags)
                t.tagDescr = c.Get_TagDescr(t.tagId);
    return ok;
}
} // namespace

bool RRClient::searchCountyFreq(qint32 ctid, double freq, const QString& tone) {
    return withTags(listQuery(RRCommands::searchCountyFreq,
                              {Int("ctid", ctid), Dbl("freq", freq), Str("tone", tone)},
                              CountyFreqSearch),
                    CountyFreqSearch, *this);
}

bool RRClient::searchStateFreq(qint32 stid, double freq, const QString& tone) {
    return withTags(listQuery(RRCommands::searchStateFreq,
                              {Int("stid", stid), Dbl("freq", freq), Str("tone", tone)},
                              StateFreqSearch),
                    StateFreqSearch, *this);
}

bool RRClient::searchMetroFreq(qint32 mid, double freq, const QString& tone) {
    return withTags(listQuery(RRCommands::searchMetroFreq,
                              {Int("mid", mid), Dbl("freq", freq), Str("tone", tone)},
                              MetroFreqSearch),
                    MetroFreqSearch, *this);
}

bool RRClient::getCountyFreqsByTag(qint32 ctid, qint32 tag) {
    return withTags(listQuery(RRCommands::getCountyFreqsByTag, {Int("ctid", ctid), Int("tag", tag)},
                              CountyFreqsByTag),
                    CountyFreqsByTag, *this);
}

bool RRClient::getAgencyFreqsByTag(qint32 aid, qint32 tag) {
    if (!withTags(listQuery(RRCommands::getAgencyFreqsByTag, {Int("aid", aid), Int("tag", tag)},
                            AgencyFreqsByTag),
                  AgencyFreqsByTag, *this))
        return false;
    for (TypFreq& f : AgencyFreqsByTag)
        if (f.mode.isEmpty())
            f.mode = QStringLiteral("1");
    return true;
}

bool RRClient::getMetroArea(qint32 mid) {
    return listQuery(RRCommands::getMetroArea, {Int("mid", mid)}, MetroAreas);
}

bool RRClient::getZipcodeInfo(qint32 zipcode) {
    return recordQuery(RRCommands::getZipcodeInfo, {Int("zipcode", zipcode)}, ZipcodeInfo);
}

bool RRClient::fccGetCallsign(const QString& callsign) {
    return recordQuery(RRCommands::fccGetCallsign, {Str("callsign", callsign)}, FccCallsign);
}

bool RRClient::fccGetRadioServiceCode(const QString& code) {
    return listQuery(RRCommands::fccGetRadioServiceCode, {Str("code", code)}, RadioServiceCodes);
}

bool RRClient::fccGetProxCallsigns(double lat, double lon, qint32 range, const QString& unit) {
    return listQuery(RRCommands::fccGetProxCallsigns,
                     {Dbl("lat", lat), Dbl("lon", lon), Int("range", range), Str("unit", unit)},
                     ProxCallsigns);
}

bool RRClient::getUserData() {
    return recordQuery(RRCommands::getUserData, {}, UserData);
}

bool RRClient::getUserFeedBroadcasts() {
    return listQuery(RRCommands::getUserFeedBroadcasts, {}, Feeds);
}

} // namespace kestrel
