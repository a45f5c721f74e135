#pragma once

#include <QHash>
#include <QString>
#include <functional>

class QWidget;

namespace ostrel {

// Screens replace one another in the home window without knowing each other's classes: the
// search screen opens the desk control screen, and the control screen goes back to search,
// although they live in different layers. The application registers a factory per screen name
// and a host that puts a new screen into the home window; tests register their own.
class OMScreenRouter {
public:
    using Factory = std::function<QWidget*()>;
    using Host = std::function<void(QWidget* screen)>; // takes ownership of the screen

    static OMScreenRouter& instance();

    void registerScreen(const QString& name, Factory factory);
    void setHost(Host host);
    // Builds the named screen and hands it to the host; returns it, or nullptr for an unknown
    // name or when no host is set (the screen is then not built).
    QWidget* show(const QString& name);
    void clear();

private:
    QHash<QString, Factory> m_factories;
    Host m_host;
};

// The screen names the router knows.
namespace screens {
inline constexpr char kBluetoothSearch[] = "BluetoothSearchVC";
inline constexpr char kNoBluetooth[] = "NoBluetoothVC";
inline constexpr char kDeskType[] = "DeskTypeVC";
inline constexpr char kDeskControl[] = "DeskControlVC";
} // namespace screens

} // namespace ostrel
