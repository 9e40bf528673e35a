// SPDX-License-Identifier: GPL-3.0-or-later
#include "httpprobe.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

namespace kestrel {

bool ProbeHttp(const QString& url, int timeoutMs) {
    const QUrl target(url);
    if (!target.isValid() || target.scheme().isEmpty())
        return false;
    QNetworkAccessManager nam;
    QNetworkRequest request(target);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply* reply = nam.get(request);
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    bool answered = false;
    // The status line is enough: the body of a large page need not arrive.
    QObject::connect(reply, &QNetworkReply::metaDataChanged, &loop, [&] {
        if (reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid()) {
            answered = true;
            loop.quit();
        }
    });
    QObject::connect(reply, &QNetworkReply::finished, &loop, [&] {
        answered = answered || reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
        loop.quit();
    });
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(timeoutMs);
    if (!reply->isFinished() && !answered)
        loop.exec();
    reply->abort();
    delete reply;
    return answered;
}

} // namespace kestrel
