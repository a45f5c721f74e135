#pragma once

#include "platform/SecretStore.h"

namespace ostrel {

// Secrets in the desktop's secret service (GNOME Keyring, KWallet) through libsecret. libsecret's
// calls wait for the service, so they run on a worker thread and answer on the caller's.
class SecretServiceStore : public SecretStore {
public:
    void load(const QString& key, QObject* context, Loaded done) override;
    void store(const QString& key, const QString& secret, QObject* context, Stored done) override;

    // Whether a secret service answers on the session bus right now.
    static bool isRunning();
};

} // namespace ostrel
