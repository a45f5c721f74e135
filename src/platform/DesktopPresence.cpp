#include "platform/DesktopPresence.h"

#include <algorithm>

namespace ostrel {

DesktopPresence::DesktopPresence(QObject* parent) : Presence(parent) {}

void DesktopPresence::add(std::unique_ptr<PresenceSource> source) {
    source->setIdleLimit(m_awayAfter);
    connect(source.get(), &PresenceSource::awayChanged, this, &DesktopPresence::reconsider);
    m_sources.push_back(std::move(source));
    reconsider();
}

void DesktopPresence::setAwayAfter(Duration idle) {
    m_awayAfter = idle;
    for (const auto& source : m_sources)
        source->setIdleLimit(idle);
}

void DesktopPresence::reconsider() {
    const bool present = std::none_of(m_sources.begin(), m_sources.end(),
                                      [](const auto& source) { return source->isAway(); });
    if (present == m_present)
        return;
    m_present = present;
    emit presentChanged(present);
}

} // namespace ostrel
