// SPDX-License-Identifier: GPL-3.0-or-later
// A tiny HTTP server on 127.0.0.1 for the web-service tests: records every request and answers
// through a handler, which may also stay silent or cut its reply short.
#pragma once

#include <QMap>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>

namespace kestrel::test {

struct HttpRequest {
    QByteArray method;
    QByteArray target;                    // path and query
    QMap<QByteArray, QByteArray> headers; // lower-case names
    QByteArray body;
};

struct HttpAnswer {
    enum class Mode { Full, Silent, CutHalf };
    int status = 200;
    QByteArray body;
    QByteArray contentType = "text/xml; charset=UTF-8";
    Mode mode = Mode::Full;
};

class HttpStub : public QObject {
public:
    using Handler = std::function<HttpAnswer(const HttpRequest&)>;

    explicit HttpStub(Handler handler) : m_handler(std::move(handler)) {
        m_server.listen(QHostAddress::LocalHost, 0);
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* s = m_server.nextPendingConnection())
                connect(s, &QTcpSocket::readyRead, this, [this, s] { onData(s); });
        });
    }
    quint16 port() const { return m_server.serverPort(); }
    QString base() const { return QStringLiteral("http://127.0.0.1:%1/soap2/").arg(port()); }
    const QList<HttpRequest>& requests() const { return m_requests; }
    void setHandler(Handler h) { m_handler = std::move(h); }

private:
    void onData(QTcpSocket* s) {
        QByteArray& buf = m_buffers[s];
        buf += s->readAll();
        const qsizetype headEnd = buf.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        HttpRequest r;
        const QList<QByteArray> lines = buf.left(headEnd).split('\n');
        const QList<QByteArray> first = lines.value(0).trimmed().split(' ');
        r.method = first.value(0);
        r.target = first.value(1);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines[i].indexOf(':');
            if (colon > 0)
                r.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                 lines[i].mid(colon + 1).trimmed());
        }
        const qsizetype length = r.headers.value("content-length").toLongLong();
        if (buf.size() < headEnd + 4 + length)
            return;
        r.body = buf.mid(headEnd + 4, length);
        m_buffers.remove(s);
        m_requests.append(r);
        const HttpAnswer a = m_handler(r);
        if (a.mode == HttpAnswer::Mode::Silent)
            return; // the connection stays open, unanswered
        QByteArray out = "HTTP/1.1 " + QByteArray::number(a.status) +
                         (a.status == 200 ? " OK" : " Error") +
                         "\r\nContent-Type: " + a.contentType +
                         "\r\nContent-Length: " + QByteArray::number(a.body.size()) +
                         "\r\nConnection: close\r\n\r\n";
        out += a.mode == HttpAnswer::Mode::CutHalf ? a.body.left(a.body.size() / 2) : a.body;
        s->write(out);
        s->disconnectFromHost();
    }

    QTcpServer m_server;
    Handler m_handler;
    QList<HttpRequest> m_requests;
    QMap<QTcpSocket*, QByteArray> m_buffers;
};

} // namespace kestrel::test
