#pragma once

#include "platform/SecretFileStore.h"
#include "platform/SecretServiceStore.h"

namespace ostrel {

// Picks the place at every request rather than once: the desktop's secret service whenever it
// answers, else files. A secret service that starts after the application is used from then on;
// a password kept in a file while none ran is still found, and moves into the service the next
// time it is stored.
class DesktopSecretStore : public SecretStore {
public:
    explicit DesktopSecretStore(QString folder) : m_files(std::move(folder)) {}

    void load(const QString& key, QObject* context, Loaded done) override;
    void store(const QString& key, const QString& secret, QObject* context, Stored done) override;

    const SecretFileStore& files() const { return m_files; }

private:
    SecretServiceStore m_service;
    SecretFileStore m_files;
};

} // namespace ostrel
