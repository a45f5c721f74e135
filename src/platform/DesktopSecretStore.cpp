#include "platform/DesktopSecretStore.h"

namespace ostrel {

void DesktopSecretStore::load(const QString& key, QObject* context, Loaded done) {
    if (!SecretServiceStore::isRunning()) {
        m_files.load(key, context, std::move(done));
        return;
    }
    m_service.load(key, context,
                   [files = m_files, key, context,
                    done = std::move(done)](std::optional<QString> secret) mutable {
                       if (secret)
                           done(std::move(secret));
                       else
                           files.load(key, context, std::move(done));
                   });
}

// Once the service holds the password, a copy left in a file would come back, stale, should the
// service not run some day.
void DesktopSecretStore::store(const QString& key, const QString& secret, QObject* context,
                               Stored done) {
    if (!SecretServiceStore::isRunning()) {
        m_files.store(key, secret, context, std::move(done));
        return;
    }
    m_service.store(key, secret, context,
                    [files = m_files, key, context, done = std::move(done)](bool ok) mutable {
                        if (!ok) {
                            done(false);
                            return;
                        }
                        files.store(key, {}, context,
                                    [done = std::move(done)](bool) { done(true); });
                    });
}

} // namespace ostrel
