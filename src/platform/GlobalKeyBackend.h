#pragma once

#include <QList>
#include <QObject>
#include <array>
#include <memory>

namespace ostrel {

// The desktop's way of taking keys system-wide (X11 grabs, the Wayland portal). It takes the six
// desk keys with one modifier combination and reports a press by the key's identifier.
class GlobalKeyBackend : public QObject {
    Q_OBJECT
public:
    // Modifier combinations, as stored: Shift, Ctrl + Super, Alt + Super.
    enum Combination { kShift = 0, kCtrlSuper = 1, kAltSuper = 2 };

    struct Key {
        int id;              // the identifier reported on a press
        const char* trigger; // the key's name in shortcut triggers ("Up", "1")
    };
    static constexpr std::array<Key, 6> kKeys{{
        {126, "Up"},
        {125, "Down"},
        {18, "1"},
        {19, "2"},
        {20, "3"},
        {21, "4"},
    }};

    using QObject::QObject;

    // The portal on a Wayland session that offers it, X11 grabs on an X server, else none.
    static std::unique_ptr<GlobalKeyBackend> forDesktop();

    // Whether this desktop lets the application take keys at all.
    virtual bool isAvailable() const = 0;
    // Takes every key with the combination's modifiers; answers the identifiers of the keys
    // another client already holds.
    virtual QList<int> grab(Combination combination) = 0;
    // Lets every taken key go; nothing taken is fine.
    virtual void release() = 0;

signals:
    void activated(int id);
};

} // namespace ostrel
