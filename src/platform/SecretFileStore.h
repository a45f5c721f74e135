#pragma once

#include "platform/SecretStore.h"

namespace ostrel {

// Secrets in files of their own ("<key>.secret" in a folder), mode 0600, replaced atomically:
// the fallback where no secret service runs.
class SecretFileStore : public SecretStore {
public:
    explicit SecretFileStore(QString folder) : m_folder(std::move(folder)) {}

    void load(const QString& key, QObject* context, Loaded done) override;
    void store(const QString& key, const QString& secret, QObject* context, Stored done) override;

    QString pathFor(const QString& key) const;

private:
    QString m_folder;
};

} // namespace ostrel
