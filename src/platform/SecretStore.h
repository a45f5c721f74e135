#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace ostrel {

// Passwords the application keeps for the user, under a short key ("mqtt"). Never in a settings
// file. Answers come later, on the caller's thread, and only while `context` lives: a secret
// service may take its time (an unlock prompt), and the window must not wait for it.
class SecretStore {
public:
    using Loaded = std::function<void(std::optional<QString> secret)>; // nullopt: none stored
    using Stored = std::function<void(bool ok)>;

    virtual ~SecretStore() = default;

    virtual void load(const QString& key, QObject* context, Loaded done) = 0;
    // An empty secret removes the stored one.
    virtual void store(const QString& key, const QString& secret, QObject* context,
                       Stored done) = 0;

    // The desktop's secret service whenever one runs on the session bus, else files in the
    // application's data folder that only the user may read. Asked for through Platform.
    static std::unique_ptr<SecretStore> forDesktop();
};

} // namespace ostrel
