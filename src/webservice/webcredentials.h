// SPDX-License-Identifier: GPL-3.0-or-later
// The remembered web-service login: the user name ("WebName") in the settings store, the
// password ("WebWord") in the desktop's secret store. Where no secret store answers (a server
// without a desktop session, CI), the password goes to the settings store, a file only its owner
// may read, and the user is told once that it is kept unencrypted.
#pragma once

#include "core/appcontext.h"

namespace QKeychain {
class Job;
}

namespace kestrel {

class WebCredentials : public Component {
public:
    explicit WebCredentials(AppContext& ctx);

    QString userName() const { return m_ctx.registry.WebName; }
    // The remembered password, empty when there is none.
    QString password();
    // Stores both, as the login window's "Remember Me" does.
    void remember(const QString& user, const QString& password);
    // Removes the remembered password from both stores.
    void forget();

    // True when the last password stored went to the secret store.
    bool inSecretStore() const { return m_lastInStore; }

    // Test seams: a disabled secret store fails every call at once, as where none exists (also
    // set by the environment variable KESTREL_SECRET_STORE=none); the time-out bounds a store
    // that does not answer.
    void setSecretStoreEnabled(bool enabled) { m_enabled = enabled; }
    void setSecretStoreTimeout(int ms) { m_timeoutMs = ms; }

private:
    bool storeUsable() const { return m_enabled && !m_storeDead; }
    // Runs a job and waits for it (bounded); false when the store did not answer or failed.
    bool run(QKeychain::Job* job, bool* notFound = nullptr);
    void storePlain(const QString& password);

    AppContext& m_ctx;
    bool m_enabled = true;
    bool m_storeDead = false;
    bool m_warned = false;
    bool m_lastInStore = false;
    int m_timeoutMs = 3000;
};

} // namespace kestrel
