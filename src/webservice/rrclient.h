// SPDX-License-Identifier: GPL-3.0-or-later
// The frequency database's web-service client: obtains and parses the service description,
// runs the queries one at a time over HTTP (through the configured proxy) and keeps their
// result stores for the import windows. One client lives in the application context:
// `ctx.component<RRClient>()`.
#pragma once

#include "core/appcontext.h"
#include "rrdescription.h"
#include "rrrecords.h"
#include "soapenvelope.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <functional>
#include <optional>

namespace kestrel {

// What Get_CommandInfo found for the current command.
struct CommandInfo {
    QString Name;
    QString InMsg; // message references as written, with their four-character prefix
    QString OutMsg;
    QList<WsdlPart> InParts;
    QList<WsdlPart> OutParts;
    WsdlBindingOp BindingOp;
    WsdlType ResultType; // the type named like the output message
    QString ArrayType;   // its array type text
    qint16 InPartCnt() const { return qint16(InParts.size()); }
    qint16 OutPartCnt() const { return qint16(OutParts.size()); }
};

// The built-in application key (8 digits, chosen when the program is built).
QString BuiltInAppKey();

class RRClient : public QObject, public Component {
    Q_OBJECT
public:
    explicit RRClient(AppContext& ctx);
    ~RRClient() override;

    // ---- connection -----------------------------------------------------------------------
    // The base address ("http://127.0.0.1:9000/soap2/"): the override when one is set (for one
    // run of the command line), otherwise the settings' derived service address.
    QString baseUrl() const;
    void setBaseUrlOverride(const QString& url) { m_baseOverride = url; }
    // The login sent in every request.
    void setCredentials(const QString& user, const QString& password) {
        m_user = user;
        m_password = password;
    }
    const QString& userName() const { return m_user; }
    // Test seam: every time-out is multiplied by this (1 = 60 s for a request).
    void setTimeScale(double scale) { m_timeScale = scale; }
    bool busy() const { return m_busy; }
    // True when the description gave operations (InitSoap can succeed with text that is not one).
    bool descriptionLoaded() const { return !Wsdl.Operations.isEmpty(); }
    // True when the loaded description names the operation: the address answers it.
    bool offers(RRCommands cmd) const;

    // ---- description --------------------------------------------------------------------
    bool InitSoap();
    void CleanSoap();
    void RRSoapParse();
    bool GetHTTP(const QString& url, const QString& user, const QString& password);

    QString AppKey;     // decimal text of the application key in use
    QString VersionStr; // decimal text of the version
    QString WsdlFile;   // full path of the cache file
    QString WsdlText;   // the whole description
    QString HttpReply;  // text of the last GET
    SoapDescription Wsdl;
    const QDomDocument& wsdlDocument() const { return m_wsdlDoc; }

    // ---- requests -----------------------------------------------------------------------
    bool Get_CommandInfo(RRCommands cmd);
    bool Get_CommandInfo(int cmd);
    void Set_Objects();
    void Clear_Objects();
    void Add_AuhInfo();
    bool SetHTTP();
    void Report_Return(const QString& rtnName);

    CommandInfo CurrCmnd;
    soap::SoapMessage Env; // the request being built, then the reply read
    // The last envelope: the request while it is sent, the reply once read, or the request after
    // a failed send.
    QString LastEnvelope;
    // The fault the last reply carried; empty when it carried none (or nothing was answered).
    const std::optional<soap::SoapFault>& lastFault() const { return m_lastFault; }
    // True when the last reply was the service's fault for a wrong user name or password.
    bool loginRefused() const;

    // ---- queries (true when the reply gave records; stores emptied before sending) ---------
    bool getTrsTalkgroupCats(qint32 sid);
    bool getTrsTalkgroups(qint16 catIndex, qint32 sid, qint32 tgCid, qint32 tgTag, qint32 tgDec);
    bool getTrsDetails(qint32 sid);
    bool getTrsBySysid(const QString& sysid);
    bool getTrsSites(qint32 sid);
    bool getTag(qint32 id);
    bool getMode(qint32 mode);
    bool getTrsType(qint32 id);
    bool getTrsFlavor(qint32 id);
    bool getTrsVoice(qint32 id);
    bool getCountryList();
    bool getCountryInfo(qint32 coid);
    bool getStateInfo(qint32 stid);
    bool getCountyInfo(qint32 ctid);
    bool getAgencyInfo(qint32 aid);
    bool getSubcatFreqs(qint32 scid);
    bool searchCountyFreq(qint32 ctid, double freq, const QString& tone);
    bool searchStateFreq(qint32 stid, double freq, const QString& tone);
    bool searchMetroFreq(qint32 mid, double freq, const QString& tone);
    bool getCountyFreqsByTag(qint32 ctid, qint32 tag);
    bool getAgencyFreqsByTag(qint32 aid, qint32 tag);
    bool getMetroArea(qint32 mid);
    bool getZipcodeInfo(qint32 zipcode);
    bool fccGetCallsign(const QString& callsign);
    bool fccGetRadioServiceCode(const QString& code);
    bool fccGetProxCallsigns(double lat, double lon, qint32 range, const QString& unit);
    bool getUserData();
    bool getUserFeedBroadcasts();

    // Result stores; a list's count is its size.
    QList<TypTgCat> TgCats;
    TypTrsDetails TrsDetails;
    QList<TypTrsSummary> TrsBySysid;
    QList<TypSite> TrsSites;
    QList<TypTag> Tags;
    QList<TypMode> Modes;
    QList<TypTrsType> TrsTypes;
    QList<TypTrsFlavor> TrsFlavors;
    QList<TypTrsVoice> TrsVoices;
    QList<TypCountry> Countries;
    QList<TypState> States;
    TypStateInfo StateInfo;
    TypCountyInfo CountyInfo;
    TypAgencyInfo AgencyInfo;
    QList<TypFreq> SubcatFreqs;
    QList<TypSearchFreq> CountyFreqSearch;
    QList<TypSearchFreq> StateFreqSearch;
    QList<TypSearchFreq> MetroFreqSearch;
    QList<TypFreq> CountyFreqsByTag;
    QList<TypFreq> AgencyFreqsByTag;
    QList<TypMetroArea> MetroAreas;
    TypZipcode ZipcodeInfo;
    TypFccCallsign FccCallsign;
    QList<TypRadioService> RadioServiceCodes;
    QList<TypProxCallsign> ProxCallsigns;
    TypUserData UserData;
    QList<TypFeed> Feeds;

    // Lookups over the stores.
    QString Get_StateName(qint32 stid) const;  // "Unknown" when not in States
    QString Get_CountyName(qint32 ctid) const; // over StateInfo's counties; "Unknown"
    QString Get_TagDescr(qint32 tagId) const;  // over Tags; "Unknown Tag:" + id

private:
    struct Transfer;
    // Sends one HTTP request and waits for its end; false (with *error naming the address) on a
    // network failure, a time-out or an oversized reply. HTTP error statuses keep their body.
    bool transfer(Transfer& t);
    // The request frame: Get_CommandInfo, the envelope with `params` and authInfo, emptying the
    // store, SetHTTP, the reply check. Returns the result value (inside Env) or null.
    soap::SoapValue* request(RRCommands cmd, QList<soap::SoapValue> params,
                             const std::function<void()>& emptyStore);
    template <class T>
    bool listQuery(RRCommands cmd, QList<soap::SoapValue> params, QList<T>& store);
    template <class T> bool recordQuery(RRCommands cmd, QList<soap::SoapValue> params, T& store);
    void lookUpTags(QList<TypTag>& tags) const;
    QString versionText() const;
    QString statusSentence(int status) const;

    AppContext& m_ctx;
    QNetworkAccessManager* m_nam;
    QDomDocument m_wsdlDoc;
    QString m_baseOverride;
    QString m_user;
    QString m_password;
    double m_timeScale = 1.0;
    bool m_busy = false;
    std::optional<soap::SoapFault> m_lastFault;
};

} // namespace kestrel
