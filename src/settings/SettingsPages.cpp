#include "settings/SettingsPages.h"

#include "settings/ComingSoonPage.h"

#include <QCoreApplication>

namespace ostrel {

namespace {

QString placeholderTitle(SettingsPages::Page page) {
    switch (page) {
    case SettingsPages::Page::SitStand:
        return QCoreApplication::translate("ostrel::ViewSetting", "Sit-stand alternation");
    case SettingsPages::Page::Device:
        return QCoreApplication::translate("ostrel::ViewSetting", "Device");
    case SettingsPages::Page::Shortcuts:
        return QCoreApplication::translate("ostrel::ViewSystemSetting", "Shortcut keys");
    case SettingsPages::Page::HomeAutomation:
        return QCoreApplication::translate("ostrel::ViewSystemSetting", "Home automation");
    }
    return {};
}

} // namespace

SettingsPages& SettingsPages::instance() {
    static SettingsPages pages;
    return pages;
}

void SettingsPages::registerPage(Page page, Factory factory) {
    m_factories[page] = std::move(factory);
}

QWidget* SettingsPages::create(Page page, DeskControlVC* fatherVC) const {
    if (const auto found = m_factories.find(page); found != m_factories.end())
        return found->second(fatherVC);
    return new ComingSoonPage(fatherVC, placeholderTitle(page));
}

void SettingsPages::clear() {
    m_factories.clear();
}

} // namespace ostrel
