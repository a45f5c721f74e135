#pragma once

#include <QObject>
#include <chrono>
#include <memory>

namespace ostrel {

// Whether the user is at the computer: away after a while without input or while the screen is
// locked, back at the first input or unlock. What the desktop cannot tell counts as present, so
// a desktop without any of this behaves as if the user never left.
class Presence : public QObject {
    Q_OBJECT
public:
    using Duration = std::chrono::milliseconds;
    static constexpr Duration kDefaultAwayAfter = std::chrono::minutes(5);

    using QObject::QObject;

    static std::unique_ptr<Presence> forDesktop();

    virtual bool isPresent() const = 0;
    // How long without input makes the user away.
    virtual void setAwayAfter(Duration idle) = 0;

signals:
    void presentChanged(bool present);
};

} // namespace ostrel
