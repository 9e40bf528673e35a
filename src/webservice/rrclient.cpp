// SPDX-License-Identifier: GPL-3.0-or-later
#include "rrclient.h"

#include "core/filereport.h"

#include <QAuthenticator>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QScopeGuard>
#include <QTimer>

#ifndef KESTREL_RR_APPKEY
#define KESTREL_RR_APPKEY 10000001
#endif

namespace kestrel {

using soap::SoapMessage;
using soap::SoapValue;

namespace {

// The number web-service failures are reported with (an automation error, as the SOAP layer
// raises them).
constexpr int kServiceError = 440;
constexpr int kRequestTimeoutMs = 60000;
constexpr qint64 kCacheMinBytes = 48000;

bool isAppKey(const QString& s) {
    return s.size() == 8 && std::all_of(s.begin(), s.end(), [](QChar c) { return c.isDigit(); });
}

} // namespace

QString BuiltInAppKey() {
    static_assert(KESTREL_RR_APPKEY >= 10000000 && KESTREL_RR_APPKEY <= 99999999,
                  "the application key has 8 digits");
    return QString::number(qint32(KESTREL_RR_APPKEY));
}

struct RRClient::Transfer {
    QString url;
    bool post = false;
    QByteArray body;
    QByteArray soapAction;
    QString user, password;
    // results
    QByteArray reply;
    int httpStatus = 0;
    QString error;
};

RRClient::RRClient(AppContext& ctx) : m_ctx(ctx), m_nam(new QNetworkAccessManager(this)) {
    m_user = ctx.registry.WebName;
}

RRClient::~RRClient() = default;

QString RRClient::baseUrl() const {
    return m_baseOverride.isEmpty() ? m_ctx.settings.ServiceAddress : m_baseOverride;
}

QString RRClient::versionText() const {
    return m_ctx.settings.DBaseVersion == 999 ? QStringLiteral("latest")
                                              : QString::number(m_ctx.settings.DBaseVersion);
}

// ---- transport ------------------------------------------------------------------------------

bool RRClient::transfer(Transfer& t) {
    if (m_busy) {
        t.error = QStringLiteral("Another request to the web service is still running; "
                                 "this one (%1) was not sent")
                      .arg(t.url);
        return false;
    }
    m_busy = true;
    const auto done = qScopeGuard([this] { m_busy = false; });

    const ProgramSettings& s = m_ctx.settings;
    if (s.DBaseProxyUse)
        m_nam->setProxy(
            QNetworkProxy(QNetworkProxy::HttpProxy, s.DBaseProxyAdr, quint16(s.DBaseProxyPrt)));
    else
        m_nam->setProxy(QNetworkProxy(QNetworkProxy::NoProxy));

    QNetworkRequest req{QUrl(t.url)};
    req.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                     QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply* reply;
    if (t.post) {
        req.setHeader(QNetworkRequest::ContentTypeHeader,
                      QByteArrayLiteral("text/xml; charset=utf-8"));
        req.setRawHeader("SOAPAction", '"' + t.soapAction + '"');
        reply = m_nam->post(req, t.body);
    } else {
        reply = m_nam->get(req);
    }
    const std::unique_ptr<QNetworkReply, void (*)(QNetworkReply*)> owner(
        reply, [](QNetworkReply* r) { r->deleteLater(); });

    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    bool tooLarge = false;
    bool askedOnce = false;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(reply, &QNetworkReply::downloadProgress, &loop, [&](qint64 received, qint64 total) {
        if (received > soap::kMaxEnvelopeBytes || total > soap::kMaxEnvelopeBytes) {
            tooLarge = true;
            reply->abort();
        }
    });
    connect(m_nam, &QNetworkAccessManager::authenticationRequired, &loop,
            [&](QNetworkReply* r, QAuthenticator* auth) {
                if (r != reply || askedOnce)
                    return; // a second challenge means the login was refused
                askedOnce = true;
                auth->setUser(t.user);
                auth->setPassword(t.password);
            });
    timer.start(int(kRequestTimeoutMs * m_timeScale));
    if (!reply->isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);

    if (!reply->isFinished()) {
        reply->abort();
        t.error = QStringLiteral("The web service at %1 did not answer within %2 seconds; "
                                 "try again later or check the address.")
                      .arg(baseUrl())
                      .arg(kRequestTimeoutMs / 1000);
        return false;
    }
    if (tooLarge) {
        t.error = QStringLiteral("The reply from %1 is larger than %2 bytes and was refused; "
                                 "check the address.")
                      .arg(baseUrl())
                      .arg(soap::kMaxEnvelopeBytes);
        return false;
    }
    t.httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    t.reply = reply->readAll();
    if (reply->error() != QNetworkReply::NoError && t.httpStatus == 0) {
        t.error = QStringLiteral("The web service at %1 cannot be reached (%2); check the "
                                 "address and that the service is running, then try again.")
                      .arg(baseUrl(), reply->errorString());
        return false;
    }
    return true;
}

bool RRClient::GetHTTP(const QString& url, const QString& user, const QString& password) {
    return Trap(m_ctx.errors, "RRSoapHtmlGet", [&](Stmt& s) {
        s.at(1);
        Transfer t;
        t.url = url;
        t.user = user;
        t.password = password;
        if (!transfer(t))
            throw ExpectedFailure(t.error);
        s.at(2);
        if (t.httpStatus >= 400)
            throw ExpectedFailure(statusSentence(t.httpStatus));
        s.at(3);
        HttpReply = soap::DecodeXmlText(t.reply);
        return true;
    });
}

QString RRClient::statusSentence(int status) const {
    return QStringLiteral("The web service at %1 answered with HTTP status %2; check the "
                          "address and try again.")
        .arg(baseUrl())
        .arg(status);
}

bool RRClient::loginRefused() const {
    // The code may carry a namespace prefix ("SOAP-ENV:AUTH").
    return m_lastFault && m_lastFault->faultcode.section(u':', -1).trimmed() == u"AUTH";
}

bool RRClient::SetHTTP() {
    const QString op = CurrCmnd.Name;
    Transfer t;
    t.post = true;
    t.url = baseUrl() + QStringLiteral("index.php");
    t.soapAction = CurrCmnd.BindingOp.soapAction.toUtf8();
    t.body = soap::WriteEnvelope(Env);
    LastEnvelope = QString::fromUtf8(t.body);
    m_lastFault.reset();
    if (!transfer(t)) {
        m_ctx.errors.Tell(t.error);
        return false;
    }
    SoapMessage reply;
    QString error;
    const bool parsed = soap::ReadEnvelope(t.reply, reply, &error);
    if (parsed && reply.isFault) {
        m_lastFault = reply.fault;
        Env = reply;
        LastEnvelope = QString::fromUtf8(soap::WriteEnvelope(Env));
        const soap::SoapFault& f = reply.fault;
        m_ctx.errors.Tell(
            loginRefused()
                ? QStringLiteral("The web service at %1 refused the user name or password; "
                                 "check both and log in again.")
                      .arg(baseUrl())
                : QStringLiteral("The web service at %1 could not answer %2 (%3); try again "
                                 "later.")
                      .arg(baseUrl(), op, f.faultstring.trimmed()));
        return false;
    }
    if (!parsed || t.httpStatus >= 400) {
        m_ctx.errors.Tell(t.httpStatus >= 400
                              ? statusSentence(t.httpStatus)
                              : QStringLiteral("The address %1 did not answer as the web service "
                                               "does (%2); check the address.")
                                    .arg(baseUrl(), error));
        return false;
    }
    Env = std::move(reply);
    LastEnvelope = QString::fromUtf8(soap::WriteEnvelope(Env));
    return true;
}

// ---- description ----------------------------------------------------------------------------

void RRClient::CleanSoap() {
    Trap(m_ctx.errors, "ModRRSoap -> CleanSoap", [&] {
        Wsdl = SoapDescription{};
        m_wsdlDoc = QDomDocument();
        CurrCmnd = CommandInfo{};
    });
}

void RRClient::RRSoapParse() {
    Trap(m_ctx.errors, "RRSoapParse", [&] { ParseDescription(WsdlText, Wsdl, m_wsdlDoc); });
}

bool RRClient::InitSoap() {
    return Trap(m_ctx.errors, "ModRRSoap -> InitSoap", [&](Stmt& s) {
        s.at(1);
        CleanSoap();
        const ProgramSettings& set = m_ctx.settings;
        AppKey = isAppKey(set.AppKey) ? set.AppKey : BuiltInAppKey();
        VersionStr = QString::number(set.DBaseVersion);
        s.at(2);
        if (set.DBaseIndex == 0)
            WsdlFile =
                m_ctx.appDir() + QStringLiteral("/RR_Soap") + VersionStr + QStringLiteral(".wsdl");
        else if (set.DBaseIndex == 1)
            WsdlFile =
                m_ctx.appDir() + QStringLiteral("/Local") + VersionStr + QStringLiteral(".wsdl");
        s.at(3);
        WsdlText.clear();
        const QFileInfo info(WsdlFile);
        const qint64 size = info.exists() ? info.size() : 0;
        bool result = false;
        if (size > 0) {
            s.at(4);
            QFile f(WsdlFile);
            if (!f.open(QIODevice::ReadOnly))
                throw KestrelError(err::FileIO, f.errorString());
            QByteArray bytes = f.read(soap::kMaxEnvelopeBytes + 1);
            f.close();
            bytes.replace("\r", "").replace("\n", "");
            WsdlText = soap::DecodeXmlText(bytes);
            if (size > kCacheMinBytes) {
                result = true;
            } else {
                QFile::remove(WsdlFile);
                m_ctx.prompts().message(WsdlText, QStringLiteral("Kestrel Manager"),
                                        Icon::Information, Buttons::Ok);
                WsdlText.clear();
            }
        } else {
            s.at(5);
            QString url = baseUrl() + QStringLiteral("?wsdl");
            if (set.DBaseVersion == 999)
                url += QStringLiteral("&v=latest");
            else if (set.DBaseVersion != 1)
                url += QStringLiteral("&v=") + VersionStr;
            if (GetHTTP(url, m_user, m_password)) {
                WsdlText = HttpReply;
                // The cache is written in UTF-8, whatever the fetched text declared. A failed
                // write is noted like any other; the fetched text is used all the same.
                QByteArray fixed = HttpReply.toUtf8();
                if (fixed.startsWith("<?xml")) {
                    const qsizetype end = fixed.indexOf("?>");
                    if (end > 0)
                        fixed.replace(0, end + 2, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
                }
                SaveBytes(m_ctx, fixed, WsdlFile);
                result = true;
            }
        }
        s.at(6);
        if (!WsdlText.isEmpty())
            RRSoapParse();
        return result;
    });
}

// ---- the request frame ----------------------------------------------------------------------

bool RRClient::Get_CommandInfo(RRCommands cmd) {
    return Get_CommandInfo(int(cmd));
}

bool RRClient::Get_CommandInfo(int cmd) {
    return Trap(m_ctx.errors, "ModRRSoap -> Get_CommandInfo", [&](Stmt& s) {
        s.at(1);
        CurrCmnd = CommandInfo{};
        CurrCmnd.Name = RRCommandName(cmd);
        if (CurrCmnd.Name.isEmpty())
            return false;
        s.at(2);
        bool foundOp = false, foundIn = false, foundOut = false, foundBinding = false;
        for (const WsdlOperation& o : Wsdl.Operations)
            if (o.name == CurrCmnd.Name) {
                CurrCmnd.InMsg = o.input;
                CurrCmnd.OutMsg = o.output;
                foundOp = true;
                break;
            }
        if (!foundOp)
            return false;
        s.at(3);
        const QString in = CurrCmnd.InMsg.mid(4);
        const QString out = CurrCmnd.OutMsg.mid(4);
        for (const WsdlMessage& m : Wsdl.Messages) {
            if (!foundIn && m.name == in) {
                CurrCmnd.InParts = m.Parts;
                foundIn = true;
            }
            if (!foundOut && m.name == out) {
                CurrCmnd.OutParts = m.Parts;
                foundOut = true;
            }
        }
        s.at(4);
        for (const WsdlBindingOp& b : Wsdl.BindingOps)
            if (b.name == CurrCmnd.Name) {
                CurrCmnd.BindingOp = b;
                foundBinding = true;
                break;
            }
        s.at(5);
        for (const WsdlType& t : Wsdl.Types)
            if (t.name == out) {
                CurrCmnd.ResultType = t;
                CurrCmnd.ArrayType = t.arrayType;
                break;
            }
        return foundIn && foundOut && foundBinding;
    });
}

void RRClient::Set_Objects() {
    Trap(m_ctx.errors, "ModSOAP -> Set_Objects", [&] { Env = SoapMessage{}; });
}

void RRClient::Clear_Objects() {
    Env = SoapMessage{};
}

void RRClient::Add_AuhInfo() {
    Trap(m_ctx.errors, "ModSOAP -> Add_AuhInfo", [&] {
        if (AppKey.isEmpty())
            AppKey = isAppKey(m_ctx.settings.AppKey) ? m_ctx.settings.AppKey : BuiltInAppKey();
        SoapValue auth =
            SoapValue::structure(QStringLiteral("authInfo"), QStringLiteral("tns:authInfo"));
        auth.add(SoapValue::string(QStringLiteral("username"), m_user));
        auth.add(SoapValue::string(QStringLiteral("password"), m_password));
        auth.add(SoapValue::string(QStringLiteral("appKey"), AppKey));
        auth.add(SoapValue::string(QStringLiteral("version"), versionText()));
        auth.add(SoapValue::string(QStringLiteral("style"), QStringLiteral("rpc")));
        Env.params.append(std::move(auth));
    });
}

void RRClient::Report_Return(const QString& rtnName) {
    m_ctx.errors.ReportError(
        QStringLiteral("ReportRtn-") + rtnName + QStringLiteral(" - ") + CurrCmnd.Name, 8,
        kServiceError, QStringLiteral("Unexpected reply element ") + rtnName);
}

SoapValue* RRClient::request(RRCommands cmd, QList<SoapValue> params,
                             const std::function<void()>& emptyStore) {
    const QByteArray label = (QStringLiteral("RRSoap - ") + RRCommandName(cmd)).toUtf8();
    return Trap(m_ctx.errors, label.constData(), [&](Stmt& s) -> SoapValue* {
        s.at(1);
        // Refused before anything shared is touched: the running request owns CurrCmnd and Env.
        if (m_busy)
            throw KestrelError(kServiceError,
                               QStringLiteral("Another request to the web service is still "
                                              "running; %1 was not sent")
                                   .arg(RRCommandName(cmd)));
        if (!Get_CommandInfo(cmd))
            return nullptr;
        s.at(2);
        Set_Objects();
        s.at(3);
        Env.method = CurrCmnd.InMsg.mid(4);
        Env.methodNS = Wsdl.TargetNS;
        s.at(4);
        if (cmd == RRCommands::getCountryList) {
            // The one parameter is named with the whole message reference and left empty.
            Env.params = {SoapValue::string(CurrCmnd.InMsg, QString())};
        } else {
            Env.params = std::move(params);
            s.at(5);
            Add_AuhInfo();
        }
        s.at(6);
        emptyStore();
        s.at(7);
        // A failure earlier in the same action (the service went away): the store is emptied
        // but the request is not sent again.
        if (m_ctx.errors.failedInAction() || !SetHTTP()) {
            Clear_Objects();
            return nullptr;
        }
        s.at(8);
        if (Env.method != CurrCmnd.OutMsg.mid(4)) {
            Report_Return(Env.method);
            Clear_Objects();
            return nullptr;
        }
        s.at(9);
        if (Env.params.isEmpty() || Env.params.first().isNil()) {
            Clear_Objects();
            return nullptr;
        }
        return &Env.params.first();
    });
}

bool RRClient::offers(RRCommands cmd) const {
    const QString name = RRCommandName(int(cmd));
    return std::any_of(Wsdl.Operations.begin(), Wsdl.Operations.end(),
                       [&](const WsdlOperation& o) { return o.name == name; });
}

// ---- lookups --------------------------------------------------------------------------------

QString RRClient::Get_StateName(qint32 stid) const {
    for (const TypState& st : States)
        if (st.stid == stid)
            return st.stateName;
    return QStringLiteral("Unknown");
}

QString RRClient::Get_CountyName(qint32 ctid) const {
    for (const TypCountySummary& c : StateInfo.countyList)
        if (c.ctid == ctid)
            return c.countyName;
    return QStringLiteral("Unknown");
}

QString RRClient::Get_TagDescr(qint32 tagId) const {
    for (const TypTag& t : Tags)
        if (t.tagId == tagId)
            return t.tagDescr;
    return QStringLiteral("Unknown Tag:") + QString::number(tagId);
}

void RRClient::lookUpTags(QList<TypTag>& tags) const {
    for (TypTag& t : tags)
        t.tagDescr = Get_TagDescr(t.tagId);
}

} // namespace kestrel
