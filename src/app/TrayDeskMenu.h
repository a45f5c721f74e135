#pragma once

#include <QList>
#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QString>
#include <array>

class QAction;
class QMenu;
class QSystemTrayIcon;

namespace ostrel {

class DeskSession;

// The desk in the tray: the icon's tooltip names the desk and its live height, and the menu
// gains, above its own items, that height as a disabled line, the presets that are set (each
// with its height), Stop, and Release desk / Connect desk. They drive the session of the control
// screen that is showing through the same moves the session bus uses, and are disabled while no
// desk is connected; the release item only needs a session.
class TrayDeskMenu : public QObject {
    Q_OBJECT
public:
    static constexpr int kPresetCount = 4;

    TrayDeskMenu(QSystemTrayIcon* icon, QMenu* menu, QObject* parent = nullptr);

    QAction* heightLine() const { return m_height; }
    QAction* presetAction(int slot) const { return m_presets[std::size_t(slot)]; }
    QAction* stopAction() const { return m_stop; }
    QAction* releaseAction() const { return m_release; }
    QString toolTip() const;

private:
    void follow(DeskSession* session);
    bool connected() const;
    QString notLinkedText() const;
    void refresh();
    void heightShown(const QString& text);
    void recall(int slot);
    void stop();
    void toggleRelease();

    QSystemTrayIcon* m_icon;
    QAction* m_height;
    std::array<QAction*, kPresetCount> m_presets{};
    QAction* m_stop;
    QAction* m_release;
    QString m_heightText; // as the control screen shows it; empty until the desk reports one
    QPointer<DeskSession> m_session;
    QList<QMetaObject::Connection> m_followed;
};

} // namespace ostrel
