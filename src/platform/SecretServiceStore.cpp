#include "platform/SecretServiceStore.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QtConcurrent/QtConcurrentRun>

// GLib names a struct member "signals"; Qt's keyword macro must not rewrite it.
#undef signals
#include <libsecret/secret.h>

namespace ostrel {

namespace {

Q_LOGGING_CATEGORY(lcSecrets, "ostrel.secrets")

const SecretSchema* schema() {
    static const SecretSchema kSchema = {
        "com.ostrel.motion.Secret",
        SECRET_SCHEMA_NONE,
        {{"key", SECRET_SCHEMA_ATTRIBUTE_STRING}, {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr};
    return &kSchema;
}

bool succeeded(GError* error, const char* what) {
    if (!error)
        return true;
    qCWarning(lcSecrets) << what << "failed:" << error->message;
    g_error_free(error);
    return false;
}

// Runs `work` off the GUI thread; `done` gets its result on the context's thread, unless the
// context is gone by then.
template <class Result>
void offThread(QObject* context, std::function<Result()> work, std::function<void(Result)> done) {
    auto* watcher = new QFutureWatcher<Result>(context);
    QObject::connect(watcher, &QFutureWatcher<Result>::finished, context,
                     [watcher, done = std::move(done)] {
                         done(watcher->result());
                         watcher->deleteLater();
                     });
    watcher->setFuture(QtConcurrent::run(std::move(work)));
}

} // namespace

bool SecretServiceStore::isRunning() {
    const QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(QStringLiteral("org.freedesktop.secrets"));
}

void SecretServiceStore::load(const QString& key, QObject* context, Loaded done) {
    offThread<std::optional<QString>>(
        context,
        [key = key.toStdString()]() -> std::optional<QString> {
            GError* error = nullptr;
            gchar* found =
                secret_password_lookup_sync(schema(), nullptr, &error, "key", key.c_str(), nullptr);
            if (!succeeded(error, "Reading a secret") || !found)
                return std::nullopt;
            QString secret = QString::fromUtf8(found);
            secret_password_free(found);
            return secret;
        },
        std::move(done));
}

void SecretServiceStore::store(const QString& key, const QString& secret, QObject* context,
                               Stored done) {
    offThread<bool>(
        context,
        [key = key.toStdString(), secret = secret.toStdString()] {
            GError* error = nullptr;
            if (secret.empty()) {
                secret_password_clear_sync(schema(), nullptr, &error, "key", key.c_str(), nullptr);
                return succeeded(error, "Removing a secret");
            }
            const std::string label = "Ostrel Motion: " + key;
            secret_password_store_sync(schema(), SECRET_COLLECTION_DEFAULT, label.c_str(),
                                       secret.c_str(), nullptr, &error, "key", key.c_str(),
                                       nullptr);
            return succeeded(error, "Storing a secret");
        },
        std::move(done));
}

} // namespace ostrel
