#pragma once

#include "platform/Presence.h"
#include "platform/PresenceSource.h"

#include <memory>
#include <vector>

namespace ostrel {

// The user's presence from every source the desktop offers: away while any of them says so.
class DesktopPresence : public Presence {
    Q_OBJECT
public:
    explicit DesktopPresence(QObject* parent = nullptr);

    // Takes `source` over and tells it the current idle limit.
    void add(std::unique_ptr<PresenceSource> source);

    bool isPresent() const override { return m_present; }
    void setAwayAfter(Duration idle) override;

private:
    void reconsider();

    std::vector<std::unique_ptr<PresenceSource>> m_sources;
    Duration m_awayAfter = kDefaultAwayAfter;
    bool m_present = true;
};

} // namespace ostrel
