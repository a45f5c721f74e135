#pragma once

#include <QWidget>
#include <functional>

class QPushButton;
class QVBoxLayout;

namespace ostrel {

class DeviceManagement;
class OMPageHeader;

// How the device pages open and close one another over the screen that hosts them.
struct DevicePageHost {
    std::function<void(QWidget* page)> push; // takes ownership
    std::function<void()> pop;               // closes the page on top
};

// One of the device pages: a title with a way back over the page's content. While it shows, it
// also shows the outcome of a desk switch as a toast.
class DevicePage : public QWidget {
    Q_OBJECT
public:
    QString title() const;
    QPushButton* backButton() const;
    // Closes this page; the one below shows again.
    void actionBack() const;

protected:
    DevicePage(DevicePageHost host, DeviceManagement* management, const QString& title);

    const DevicePageHost& host() const { return m_host; }
    DeviceManagement* management() const { return m_management; }
    QVBoxLayout* contentLayout() const { return m_content; }

private:
    void showStatus(const QString& text);

    DevicePageHost m_host;
    DeviceManagement* m_management;
    OMPageHeader* m_header;
    QVBoxLayout* m_content;
};

} // namespace ostrel
