#pragma once

#include <functional>
#include <map>

class QWidget;

namespace ostrel {

class DeskControlVC;

// The pages that other features hang on the settings menu. Each feature registers a factory for
// its page; until one does, the menu opens a page saying the feature is coming. Tests register
// their own.
class SettingsPages {
public:
    enum class Page { SitStand, Device, Shortcuts, HomeAutomation };
    using Factory = std::function<QWidget*(DeskControlVC* fatherVC)>;

    static SettingsPages& instance();

    void registerPage(Page page, Factory factory);
    // The registered page, or the "coming" page under the page's title.
    QWidget* create(Page page, DeskControlVC* fatherVC) const;
    void clear();

private:
    std::map<Page, Factory> m_factories;
};

} // namespace ostrel
