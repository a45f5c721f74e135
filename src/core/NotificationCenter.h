#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

namespace ostrel {

// In-process named notifications between subsystems that do not call each other.
// Each observer belongs to a context object and is dropped when that object dies, so a closed
// screen is never called back. Delivery is synchronous, in order of registration.
class NotificationCenter {
public:
    using Handler = std::function<void(const QVariant& object)>;

    static NotificationCenter& defaultCenter();

    void addObserver(QObject* context, const QString& name, Handler handler);
    void removeObserver(QObject* context);
    void removeObserver(QObject* context, const QString& name);
    void post(const QString& name, const QVariant& object = {});

private:
    struct Observer {
        std::uint64_t id;
        QPointer<QObject> context;
        QString name;
        Handler handler;
    };

    bool isRegistered(std::uint64_t id) const;

    std::vector<Observer> m_observers;
    std::uint64_t m_nextId = 1;
};

} // namespace ostrel
