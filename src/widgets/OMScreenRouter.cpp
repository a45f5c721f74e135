#include "OMScreenRouter.h"

namespace ostrel {

OMScreenRouter& OMScreenRouter::instance() {
    static OMScreenRouter router;
    return router;
}

void OMScreenRouter::registerScreen(const QString& name, Factory factory) {
    m_factories.insert(name, std::move(factory));
}

void OMScreenRouter::setHost(Host host) {
    m_host = std::move(host);
}

QWidget* OMScreenRouter::show(const QString& name) {
    const auto factory = m_factories.constFind(name);
    if (factory == m_factories.constEnd() || !m_host)
        return nullptr;
    QWidget* screen = (*factory)();
    m_host(screen);
    return screen;
}

void OMScreenRouter::clear() {
    m_factories.clear();
    m_host = nullptr;
}

} // namespace ostrel
