#pragma once

#include "Tour.h"
#include "TourNavigator.h"

#include <deque>

namespace ostrel {

// The tour's steps through the settings, each page reached the way a user reaches it: the
// settings pages, the sit-stand reminder with its countdown and both forms of its alert, and the
// device pages.
class SettingsTour {
public:
    explicit SettingsTour(const TourNavigator& navigator) : m_nav(navigator) {}

    std::deque<Step> settingsPages() const;
    std::deque<Step> reminder() const;
    // The list once a scan has found the other demo desk, the bound desk's details, and its
    // rename page.
    std::deque<Step> devices() const;

private:
    const TourNavigator& m_nav;
};

} // namespace ostrel
