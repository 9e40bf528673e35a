// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrlocalserver.h"

#include "rrdescriptionwriter.h"

#include <QHttpServer>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QUrlQuery>
#include <cmath>
#include <vector>

namespace kestrel {

using soap::SoapMessage;
using soap::SoapValue;

struct RRLocalServer::Pending {
    std::vector<QHttpServerResponder> responders;
};

namespace {

const QByteArray kXmlUtf8 = QByteArrayLiteral("text/xml; charset=UTF-8");
const QByteArray kXmlLatin1 = QByteArrayLiteral("text/xml; charset=ISO-8859-1");
const QString kReturn = QStringLiteral("return");

// Faults go out as the public service sends them: HTTP 500, declared and encoded ISO-8859-1.
RRLocalServer::Reply faultReply(const QString& code, const QString& text) {
    soap::SoapFault fault;
    fault.faultcode = code;
    fault.faultstring = text;
    QString xml = QString::fromUtf8(soap::WriteFault(fault));
    xml.replace(QStringLiteral("encoding=\"UTF-8\""), QStringLiteral("encoding=\"ISO-8859-1\""));
    return {500, kXmlLatin1, xml.toLatin1()};
}

// ---- request parameters ---------------------------------------------------------------------

QString textParam(const SoapMessage& m, const char* name) {
    for (const SoapValue& p : m.params)
        if (p.name == QLatin1StringView(name))
            return p.isScalar() ? p.text.trimmed() : QString();
    return {};
}

qint32 intParam(const SoapMessage& m, const char* name) {
    return textParam(m, name).toInt();
}

double doubleParam(const SoapMessage& m, const char* name) {
    return textParam(m, name).toDouble();
}

// ---- answers --------------------------------------------------------------------------------

template <class T> SoapValue listReply(const QList<T>& list) {
    return WriteRecordList(list, kReturn);
}

template <class T> SoapValue recordReply(const T* record) {
    return record ? WriteRecord(*record, kReturn) : SoapValue::nil(kReturn);
}

// Records whose key equals `id`, or all of them when `id` is 0 (the code tables).
template <class T, class Key> QList<T> byId(const QList<T>& all, qint32 id, Key key) {
    if (id == 0)
        return all;
    QList<T> out;
    for (const T& r : all)
        if (key(r) == id)
            out.append(r);
    return out;
}

TypTrsSummary summaryOf(const RRSystem& s) {
    const TypTrsDetails& d = s.details;
    return {s.sid, d.sName, d.sType, d.sFlavor, d.sVoice, d.sCity, d.lastUpdated};
}

TypAgencySummary summaryOf(const RRAgencyEntry& a) {
    return {a.info.aid, a.info.agencyName, a.aType};
}

QList<qint32> subcatsOf(const QList<TypCat>& cats) {
    QList<qint32> out;
    for (const TypCat& c : cats)
        for (const TypSubcat& s : c.subcats)
            out.append(s.scid);
    return out;
}

// The subcategories of a set of counties: their own and those of the agencies in them.
QList<qint32> subcatsOfCounties(const RRDataSet& d, const QList<qint32>& ctids) {
    QList<qint32> out;
    for (const TypCountyInfo& c : d.counties)
        if (ctids.contains(c.ctid))
            out += subcatsOf(c.cats);
    for (const RRAgencyEntry& a : d.agencies)
        if (ctids.contains(a.info.ctid))
            out += subcatsOf(a.info.cats);
    return out;
}

bool hasTag(const QList<TypTag>& tags, qint32 tag) {
    for (const TypTag& t : tags)
        if (t.tagId == tag)
            return true;
    return false;
}

QList<TypFreq> freqsByTag(const RRDataSet& d, const QList<qint32>& scids, qint32 tag) {
    QList<TypFreq> out;
    for (const RRFreqEntry& f : d.freqs)
        if (scids.contains(f.scid) && hasTag(f.freq.tags, tag))
            out.append(f.freq);
    return out;
}

// A frequency search: `freq` in megahertz or hertz (0: any), `tone` a prefix (empty: any).
QList<TypSearchFreq> searchFreqs(const RRDataSet& d, const QList<qint32>& scids, double freq,
                                 const QString& tone) {
    QList<TypSearchFreq> out;
    const double hertz = FreqToHertz(freq);
    for (const RRFreqEntry& e : d.freqs) {
        const TypFreq& f = e.freq;
        if (!scids.contains(e.scid) || (hertz != 0 && std::abs(FreqToHertz(f.out) - hertz) >= 1) ||
            !f.tone.startsWith(tone, Qt::CaseInsensitive))
            continue;
        TypSearchFreq s{f.out,    f.in,   f.callsign, f.descr, f.alpha, f.tone, f.mode,
                        f.class_, f.tags, e.scid,     0,       0,       0};
        d.subcatOwner(e.scid, &s.ctid, &s.aid);
        out.append(s);
    }
    return out;
}

double distance(double lat1, double lon1, double lat2, double lon2, bool km) {
    constexpr double rad = 3.14159265358979323846 / 180;
    const double a = std::pow(std::sin((lat2 - lat1) * rad / 2), 2) +
                     std::cos(lat1 * rad) * std::cos(lat2 * rad) *
                         std::pow(std::sin((lon2 - lon1) * rad / 2), 2);
    const double earth = km ? 6371.0 : 3958.8;
    return std::round(2 * earth * std::asin(std::sqrt(a)) * 100) / 100;
}

SoapValue result(const RRDataSet& d, const QString& op, const SoapMessage& m, const RRUser* user,
                 bool classic) {
    const auto sys = [&] { return d.system(intParam(m, "sid")); };
    if (op == u"getTrsTalkgroups") {
        QList<TypTalkgroup> out;
        const qint32 cid = intParam(m, "tgCid"), tag = intParam(m, "tgTag"),
                     dec = intParam(m, "tgDec");
        if (const RRSystem* s = sys())
            for (const TypTalkgroup& tg : s->talkgroups)
                if ((cid == 0 || tg.tgCid == cid) && (tag == 0 || hasTag(tg.tags, tag)) &&
                    (dec == 0 || tg.tgDec == dec))
                    out.append(tg);
        return listReply(out);
    }
    if (op == u"getTrsTalkgroupCats")
        return listReply(sys() ? sys()->tgCats : QList<TypTgCat>());
    if (op == u"getTrsDetails")
        return recordReply(sys() ? &sys()->details : nullptr);
    if (op == u"getTrsBySysid") {
        QList<TypTrsSummary> out;
        const QString id = textParam(m, "sysid");
        for (const RRSystem& s : d.systems)
            for (const TypSysid& x : s.details.sysid)
                if (!id.isEmpty() && x.sysid.compare(id, Qt::CaseInsensitive) == 0) {
                    out.append(summaryOf(s));
                    break;
                }
        return listReply(out);
    }
    if (op == u"getTrsSites") {
        SoapValue v = listReply(sys() ? sys()->sites : QList<TypSite>());
        if (classic) // the first generation names the list "siteFeqs"
            for (SoapValue& site : v.children)
                if (SoapValue* f = site.child(u"siteFreqs"))
                    f->name = QStringLiteral("siteFeqs");
        return v;
    }
    if (op == u"getTag")
        return listReply(byId(d.tags, intParam(m, "id"), [](const TypTag& t) { return t.tagId; }));
    if (op == u"getMode")
        return listReply(
            byId(d.modes, intParam(m, "mode"), [](const TypMode& t) { return t.mode; }));
    if (op == u"getTrsType")
        return listReply(
            byId(d.trsTypes, intParam(m, "id"), [](const TypTrsType& t) { return t.sType; }));
    if (op == u"getTrsFlavor")
        return listReply(
            byId(d.trsFlavors, intParam(m, "id"), [](const TypTrsFlavor& t) { return t.sFlavor; }));
    if (op == u"getTrsVoice")
        return listReply(
            byId(d.trsVoices, intParam(m, "id"), [](const TypTrsVoice& t) { return t.sVoice; }));
    if (op == u"getCountryList")
        return listReply(d.countries);
    if (op == u"getCountryInfo") {
        QList<TypState> out;
        for (const RRStateEntry& s : d.states)
            if (s.coid == intParam(m, "coid"))
                out.append(s.state);
        return listReply(out);
    }
    if (op == u"getStateInfo") {
        const RRStateEntry* s = d.state(intParam(m, "stid"));
        if (!s)
            return SoapValue::nil(kReturn);
        TypStateInfo info{s->state.stid, s->state.stateName, s->stateEntityType, {}, {}, {}};
        for (const RRSystem& sys : d.systems)
            if (sys.details.sState.contains(info.stid))
                info.trsList.append(summaryOf(sys));
        for (const RRAgencyEntry& a : d.agencies) // statewide agencies
            if (a.info.stid == info.stid && a.info.ctid == 0)
                info.agencyList.append(summaryOf(a));
        for (const TypCountyInfo& c : d.counties)
            if (c.stid == info.stid)
                info.countyList.append({c.ctid, c.countyName, c.countyHeader});
        return recordReply(&info);
    }
    if (op == u"getCountyInfo") {
        const TypCountyInfo* c = d.county(intParam(m, "ctid"));
        if (!c)
            return SoapValue::nil(kReturn);
        TypCountyInfo info = *c;
        for (const RRSystem& sys : d.systems)
            if (sys.details.sCounty.contains(info.ctid))
                info.trsList.append(summaryOf(sys));
        for (const RRAgencyEntry& a : d.agencies)
            if (a.info.ctid == info.ctid)
                info.agencyList.append(summaryOf(a));
        return recordReply(&info);
    }
    if (op == u"getAgencyInfo") {
        const RRAgencyEntry* a = d.agency(intParam(m, "aid"));
        return recordReply(a ? &a->info : nullptr);
    }
    if (op == u"getSubcatFreqs") {
        QList<TypFreq> out;
        for (const RRFreqEntry& f : d.freqs)
            if (f.scid == intParam(m, "scid"))
                out.append(f.freq);
        return listReply(out);
    }
    if (op == u"searchCountyFreq")
        return listReply(searchFreqs(d, subcatsOfCounties(d, {intParam(m, "ctid")}),
                                     doubleParam(m, "freq"), textParam(m, "tone")));
    if (op == u"searchStateFreq" || op == u"searchMetroFreq") {
        QList<qint32> ctids;
        if (op == u"searchStateFreq") {
            const qint32 stid = intParam(m, "stid");
            for (const TypCountyInfo& c : d.counties)
                if (c.stid == stid)
                    ctids.append(c.ctid);
        } else {
            for (const RRMetroEntry& metro : d.metros)
                if (metro.area.mid == intParam(m, "mid"))
                    ctids = metro.counties;
        }
        QList<qint32> scids = subcatsOfCounties(d, ctids);
        if (op == u"searchStateFreq")
            for (const RRAgencyEntry& a : d.agencies)
                if (a.info.stid == intParam(m, "stid") && a.info.ctid == 0)
                    scids += subcatsOf(a.info.cats);
        return listReply(searchFreqs(d, scids, doubleParam(m, "freq"), textParam(m, "tone")));
    }
    if (op == u"getCountyFreqsByTag") {
        const TypCountyInfo* c = d.county(intParam(m, "ctid"));
        return listReply(
            freqsByTag(d, c ? subcatsOf(c->cats) : QList<qint32>(), intParam(m, "tag")));
    }
    if (op == u"getAgencyFreqsByTag") {
        const RRAgencyEntry* a = d.agency(intParam(m, "aid"));
        return listReply(
            freqsByTag(d, a ? subcatsOf(a->info.cats) : QList<qint32>(), intParam(m, "tag")));
    }
    if (op == u"getMetroArea") {
        QList<TypMetroArea> all;
        for (const RRMetroEntry& metro : d.metros)
            all.append(metro.area);
        return listReply(
            byId(all, intParam(m, "mid"), [](const TypMetroArea& a) { return a.mid; }));
    }
    if (op == u"getZipcodeInfo") {
        for (const TypZipcode& z : d.zipcodes)
            if (z.zipCode == intParam(m, "zipcode"))
                return recordReply(&z);
        return SoapValue::nil(kReturn);
    }
    if (op == u"fccGetCallsign") {
        for (const TypFccCallsign& c : d.callsigns)
            if (c.callsign.compare(textParam(m, "callsign"), Qt::CaseInsensitive) == 0)
                return recordReply(&c);
        return SoapValue::nil(kReturn);
    }
    if (op == u"fccGetRadioServiceCode") {
        const QString code = textParam(m, "code");
        QList<TypRadioService> out;
        for (const TypRadioService& r : d.radioServices)
            // "0", like the other code tables' id 0, asks for the whole table.
            if (code.isEmpty() || code == u"0" || r.code.compare(code, Qt::CaseInsensitive) == 0)
                out.append(r);
        return listReply(out);
    }
    if (op == u"fccGetProxCallsigns") {
        const double lat = doubleParam(m, "lat"), lon = doubleParam(m, "lon");
        const bool km = textParam(m, "unit").startsWith(u'k', Qt::CaseInsensitive);
        QList<TypProxCallsign> out;
        for (TypProxCallsign c : d.proxCallsigns) {
            c.distance = distance(lat, lon, c.lat, c.lon, km);
            if (c.distance <= doubleParam(m, "range"))
                out.append(c);
        }
        return listReply(out);
    }
    if (op == u"getUserData") {
        const TypUserData data{user ? user->username : QString(),
                               user ? user->subExpireDate : QString()};
        return recordReply(&data);
    }
    if (op == u"getUserFeedBroadcasts") {
        QList<TypFeed> out;
        for (const RRFeedEntry& f : d.feeds)
            if (f.username.isEmpty() || (user && f.username == user->username))
                out.append(f.feed);
        return listReply(out);
    }
    return SoapValue::nil(kReturn);
}

} // namespace

RRLocalServer::RRLocalServer(RRDataSet data, QObject* parent)
    : QObject(parent), m_data(std::move(data)), m_http(std::make_unique<QHttpServer>()),
      m_pending(std::make_unique<Pending>()) {
    // Every path is answered the same way: the base folder ("/soap2/", "/soap/", "/") with
    // "?wsdl" for the description, and "index.php" under it for the operations.
    m_http->setMissingHandler(
        [this](const QHttpServerRequest& request, QHttpServerResponder&& responder) {
            const Reply reply = handle(request);
            if (reply.hang) {
                m_pending->responders.push_back(std::move(responder));
                return;
            }
            responder.write(reply.body, reply.contentType,
                            QHttpServerResponder::StatusCode(reply.status));
        });
}

RRLocalServer::~RRLocalServer() = default;

quint16 RRLocalServer::listen(const QHostAddress& address, quint16 port) {
    m_port = m_http->listen(address, port);
    m_address = address;
    return m_port;
}

QString RRLocalServer::baseUrl(bool classic) const {
    QString host = m_address.toString();
    if (m_address.protocol() == QAbstractSocket::IPv6Protocol)
        host = QLatin1Char('[') + host + QLatin1Char(']');
    return QStringLiteral("http://%1:%2/%3/")
        .arg(host)
        .arg(m_port)
        .arg(classic ? QStringLiteral("soap") : QStringLiteral("soap2"));
}

RRLocalServer::Reply RRLocalServer::handle(const QHttpServerRequest& request) {
    const QUrl url = request.url();
    const QString path = url.path();
    const bool ours = path.endsWith(u'/') || path.endsWith(u"/index.php");
    if (ours && request.method() == QHttpServerRequest::Method::Post) {
        m_lastRequest = request.body();
        m_lastSoapAction = request.value("SOAPAction");
        ++m_requestCount;
        Q_EMIT requestPosted(m_lastRequest);
        if (m_hook)
            if (std::optional<Reply> canned = m_hook(m_lastRequest))
                return *canned;
        return answer(m_lastRequest, m_lastSoapAction);
    }
    if (ours && request.method() == QHttpServerRequest::Method::Get) {
        const QUrlQuery query(url);
        if (query.hasQueryItem(QStringLiteral("wsdl")) ||
            query.hasQueryItem(QStringLiteral("WSDL")))
            return describe(
                url.adjusted(QUrl::RemoveQuery | QUrl::RemoveFragment | QUrl::RemoveFilename)
                    .toString(),
                query.queryItemValue(QStringLiteral("v")));
        return {200, QByteArrayLiteral("text/plain; charset=UTF-8"),
                QByteArrayLiteral("Local frequency database: the service description is at "
                                  "?wsdl, operations are posted to index.php.\n")};
    }
    return {404, QByteArrayLiteral("text/plain; charset=UTF-8"), QByteArrayLiteral("Not found\n")};
}

RRLocalServer::Reply RRLocalServer::describe(const QString& location,
                                             const QString& version) const {
    // Only the first generation (asked for by number, or at its own "/soap/" endpoint) spells the
    // site frequency list the old way; elsewhere a description without a number matches the
    // replies, which follow the current generation unless the login names version 1.
    const bool classic =
        version == u"1" || (version.isEmpty() && location.endsWith(QStringLiteral("/soap/")));
    return {200, kXmlUtf8, RRServiceDescription(location, classic)};
}

RRLocalServer::Reply RRLocalServer::answer(const QByteArray& requestBody,
                                           const QByteArray& soapAction) const {
    SoapMessage request;
    QString why;
    if (!soap::ReadEnvelope(requestBody, request, &why))
        return faultReply(QStringLiteral("Client"), QStringLiteral("Bad request: ") + why);

    // The body element is named after the input message ("getTagRequest"); a bare operation
    // name or the SOAPAction's "#operation" are understood too.
    QString name = request.method;
    if (!FindRROperation(name) && name.endsWith(u"Request"))
        name.chop(7);
    if (!FindRROperation(name)) {
        const QString action = QString::fromUtf8(soapAction).remove(u'"');
        const QString fromAction = action.mid(action.lastIndexOf(u'#') + 1);
        if (FindRROperation(fromAction))
            name = fromAction;
    }
    const RROperation* op = FindRROperation(name);
    if (!op)
        return faultReply(QStringLiteral("Client"),
                          QStringLiteral("Operation '%1' is not defined").arg(request.method));

    // Like the public service: a request lacking any part of its message, or carrying an empty
    // application key, is refused with HTTP 500 and no body at all.
    const auto part = [&](QLatin1StringView partName) -> const SoapValue* {
        for (const SoapValue& p : request.params)
            if (p.name == partName)
                return &p;
        return nullptr;
    };
    for (const RRParam& p : op->params)
        if (!part(QLatin1StringView(p.name)))
            return {500, kXmlUtf8, QByteArray()};
    const SoapValue* auth = op->needsLogin ? part(QLatin1StringView("authInfo")) : nullptr;
    const SoapValue* appKey = auth ? auth->child(u"appKey") : nullptr;
    if (op->needsLogin && (!appKey || appKey->text.trimmed().isEmpty()))
        return {500, kXmlUtf8, QByteArray()};

    const RRUser* user = nullptr;
    bool classic = false;
    if (op->needsLogin) {
        const SoapValue* username = auth ? auth->child(u"username") : nullptr;
        const SoapValue* password = auth ? auth->child(u"password") : nullptr;
        const SoapValue* version = auth ? auth->child(u"version") : nullptr;
        user = username ? m_data.user(username->text) : nullptr;
        if (!user || !password || password->text != user->password)
            return faultReply(QStringLiteral("AUTH"),
                              QStringLiteral("Invalid Username or Password.  Make sure you are "
                                             "logging in with your username and not your "
                                             "email address."));
        classic = version && version->text.trimmed() == u"1";
    }

    SoapMessage reply;
    reply.method = name + QStringLiteral("Response");
    reply.methodNS = QString::fromLatin1(kRRServiceNamespace);
    reply.params.append(result(m_data, name, request, user, classic));
    return {200, kXmlUtf8, soap::WriteEnvelope(reply)};
}

} // namespace kestrel
