// SPDX-License-Identifier: GPL-3.0-or-later
#include "webcredentials.h"

#include <QEventLoop>
#include <QTimer>
#include <qt6keychain/keychain.h>

namespace kestrel {

namespace {
const QString kService = QStringLiteral("KestrelManager");
const QString kKey = QStringLiteral("WebWord");
} // namespace

WebCredentials::WebCredentials(AppContext& ctx) : m_ctx(ctx) {
    if (qEnvironmentVariable("KESTREL_SECRET_STORE") == u"none")
        m_enabled = false;
}

bool WebCredentials::run(QKeychain::Job* job, bool* notFound) {
    // The job deletes itself when it ends, also after we stopped waiting for it.
    job->setAutoDelete(true);
    job->setInsecureFallback(false);
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    bool finished = false;
    QKeychain::Error error = QKeychain::OtherError;
    QObject::connect(job, &QKeychain::Job::finished, &loop, [&](QKeychain::Job* j) {
        finished = true;
        error = j->error();
        loop.quit();
    });
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(m_timeoutMs);
    job->start();
    if (!finished)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (notFound)
        *notFound = finished && error == QKeychain::EntryNotFound;
    if (!finished || (error != QKeychain::NoError && error != QKeychain::EntryNotFound))
        m_storeDead = true; // no store here: do not wait for it again in this run
    return finished && error == QKeychain::NoError;
}

QString WebCredentials::password() {
    if (storeUsable()) {
        auto* job = new QKeychain::ReadPasswordJob(kService);
        job->setKey(kKey);
        QString text;
        // The guard ends the connection should the job outlive this call (a time-out).
        QObject guard;
        QObject::connect(job, &QKeychain::Job::finished, &guard, [&text](QKeychain::Job* j) {
            text = static_cast<QKeychain::ReadPasswordJob*>(j)->textData();
        });
        if (run(job))
            return text;
    }
    return m_ctx.registry.WebWord;
}

void WebCredentials::storePlain(const QString& password) {
    m_ctx.registry.WebWord = password;
    Save_Setting({}, password, kKey);
    m_lastInStore = false;
    if (!password.isEmpty() && !m_warned) {
        m_warned = true;
        m_ctx.prompts().message(
            QStringLiteral("No secret store is available: the password is stored unencrypted in "
                           "%1, readable only by you.")
                .arg(RegistryFilePath()),
            QStringLiteral("Kestrel Manager"), Icon::Information, Buttons::Ok);
    }
}

void WebCredentials::remember(const QString& user, const QString& password) {
    m_ctx.registry.WebName = user;
    Save_Setting({}, user, QStringLiteral("WebName"));
    if (storeUsable()) {
        auto* job = new QKeychain::WritePasswordJob(kService);
        job->setKey(kKey);
        job->setTextData(password);
        if (run(job)) {
            // Nothing of the password stays in the plain store.
            m_ctx.registry.WebWord.clear();
            Save_Setting({}, QString(), kKey);
            m_lastInStore = true;
            return;
        }
    }
    storePlain(password);
}

void WebCredentials::forget() {
    if (storeUsable()) {
        auto* job = new QKeychain::DeletePasswordJob(kService);
        job->setKey(kKey);
        run(job);
    }
    m_ctx.registry.WebWord.clear();
    Save_Setting({}, QString(), kKey);
}

} // namespace kestrel
