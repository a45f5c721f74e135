#include "transport/screens/DevicePage.h"

#include "transport/RBBluetoothManager.h"
#include "transport/screens/DeviceManagement.h"
#include "widgets/OMPageHeader.h"
#include "widgets/SJHUD.h"

#include <QVBoxLayout>

namespace ostrel {

namespace {
// "Connecting" stays up for as long as a connection attempt may take.
constexpr Scheduler::Duration kStatusDuration{(RBBluetoothManager::kDefaultTimeOut + 1) * 1000};
} // namespace

DevicePage::DevicePage(DevicePageHost host, DeviceManagement* management, const QString& title)
    : m_host(std::move(host)), m_management(management),
      m_header(new OMPageHeader(title, tr("Back"), this)), m_content(m_header->layOutPage(this)) {
    connect(m_header, &OMPageHeader::backClicked, this, &DevicePage::actionBack);
    if (m_management) {
        connect(m_management, &DeviceManagement::statusChanged, this, &DevicePage::showStatus);
        connect(m_management, &DeviceManagement::messageRequested, this,
                [this](const QString& text) {
                    if (isVisible())
                        SJHUD::showMessage(text, this);
                });
    }
}

QString DevicePage::title() const {
    return m_header->title();
}

QPushButton* DevicePage::backButton() const {
    return m_header->backButton();
}

void DevicePage::actionBack() const {
    if (m_host.pop)
        m_host.pop();
}

void DevicePage::showStatus(const QString& text) {
    // An empty status is followed at once by the outcome, which replaces the toast.
    if (isVisible() && !text.isEmpty())
        SJHUD::showMessage(text, this, kStatusDuration);
}

} // namespace ostrel
