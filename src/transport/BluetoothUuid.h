#pragma once

#include <QString>

namespace ostrel {

// GATT identifiers are compared in one textual form: upper case, and the four-digit short form
// for anything on the Bluetooth base UUID ("0000180d-0000-1000-8000-00805f9b34fb" is "180D").
class BluetoothUuid {
public:
    static QString normalized(const QString& uuid);
    static bool same(const QString& a, const QString& b) { return normalized(a) == normalized(b); }
    // The first wrapper in `list` whose UUID() is `uuid`, or null.
    template <typename List>
    static typename List::value_type findIn(const List& list, const QString& uuid) {
        for (const auto& item : list) {
            if (same(item->UUID(), uuid))
                return item;
        }
        return {};
    }
    // A peripheral identifier the platform can name: a UUID or a Bluetooth device address.
    static bool isValidIdentifier(const QString& identifier);
};

} // namespace ostrel
