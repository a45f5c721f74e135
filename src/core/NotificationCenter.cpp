#include "NotificationCenter.h"

#include <algorithm>

namespace ostrel {

NotificationCenter& NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

void NotificationCenter::addObserver(QObject* context, const QString& name, Handler handler) {
    m_observers.push_back(Observer{m_nextId++, context, name, std::move(handler)});
}

void NotificationCenter::removeObserver(QObject* context) {
    std::erase_if(m_observers, [&](const Observer& o) { return o.context == context; });
}

void NotificationCenter::removeObserver(QObject* context, const QString& name) {
    std::erase_if(m_observers,
                  [&](const Observer& o) { return o.context == context && o.name == name; });
}

bool NotificationCenter::isRegistered(std::uint64_t id) const {
    return std::any_of(m_observers.begin(), m_observers.end(),
                       [id](const Observer& o) { return o.id == id; });
}

void NotificationCenter::post(const QString& name, const QVariant& object) {
    std::erase_if(m_observers, [](const Observer& o) { return o.context.isNull(); });
    // Handlers may add or remove observers while we deliver: work on a snapshot and skip any
    // observer that was removed (or whose context died) by an earlier handler.
    const std::vector<Observer> snapshot = m_observers;
    for (const Observer& observer : snapshot) {
        if (observer.name != name || observer.context.isNull() || !isRegistered(observer.id))
            continue;
        observer.handler(object);
    }
}

} // namespace ostrel
