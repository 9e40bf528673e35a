// SPDX-License-Identifier: GPL-3.0-or-later
// A local stand-in for the frequency database's web service: answers every query operation over
// HTTP from a data set, serves its description at "?wsdl", and checks the login of each request
// as the public service does. For users without an account and for the tests.
#pragma once

#include "rrdataset.h"

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <functional>
#include <memory>
#include <optional>

class QHttpServer;
class QHttpServerRequest;

namespace kestrel {

// The default address: http://127.0.0.1:9000/soap2/ (and /soap/ for the first generation).
inline constexpr quint16 kRRServeDefaultPort = 9000;

class RRLocalServer : public QObject {
    Q_OBJECT
public:
    // An HTTP reply as the server sends it.
    struct Reply {
        int status = 200;
        QByteArray contentType;
        QByteArray body;
        bool hang = false; // never answer (only from a reply hook)
    };

    explicit RRLocalServer(RRDataSet data = RRDataSet::demo(), QObject* parent = nullptr);
    ~RRLocalServer() override;

    // Starts listening; port 0 picks a free one. Returns the port, 0 when it cannot listen.
    quint16 listen(const QHostAddress& address = QHostAddress(QHostAddress::LocalHost),
                   quint16 port = 0);
    quint16 port() const { return m_port; }
    // "http://127.0.0.1:PORT/soap2/" ("/soap/" with classic) for the address listened on.
    QString baseUrl(bool classic = false) const;

    // The body and SOAPAction header of the last request posted, and how many were posted.
    QByteArray lastRequest() const { return m_lastRequest; }
    QByteArray lastSoapAction() const { return m_lastSoapAction; }
    int requestCount() const { return m_requestCount; }

    const RRDataSet& data() const { return m_data; }

    // What a posted envelope is answered with (no network).
    Reply answer(const QByteArray& requestBody, const QByteArray& soapAction = {}) const;
    // The description for a "?wsdl" request: `version` is the "v" query value (empty: first
    // generation), `location` the service address written into it.
    Reply describe(const QString& location, const QString& version) const;

    // A seam for tests of the client's failure handling: when set, every posted request is
    // answered by the hook's reply instead (cut, malformed, Latin-1, never answered, ...).
    using ReplyHook = std::function<std::optional<Reply>(const QByteArray& requestBody)>;
    void setReplyHook(ReplyHook hook) { m_hook = std::move(hook); }

Q_SIGNALS:
    void requestPosted(const QByteArray& body);

private:
    Reply handle(const QHttpServerRequest& request);

    RRDataSet m_data;
    QHostAddress m_address;
    quint16 m_port = 0;
    QByteArray m_lastRequest;
    QByteArray m_lastSoapAction;
    int m_requestCount = 0;
    ReplyHook m_hook;
    std::unique_ptr<QHttpServer> m_http;
    struct Pending; // replies held back by the hook; released before the server goes
    std::unique_ptr<Pending> m_pending;
};

} // namespace kestrel
