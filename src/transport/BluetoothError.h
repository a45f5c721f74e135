#pragma once

#include <QString>
#include <optional>

namespace ostrel {

// A transport failure: a fixed numeric code with the message text as its domain. Where a code
// is derived from a platform error, the platform's text is kept and only the code replaced.
struct BluetoothError {
    int code = 0;
    QString domain;

    static BluetoothError of(int code, const char* text) {
        return BluetoothError{code, QString::fromLatin1(text)};
    }
    BluetoothError withCode(int newCode) const { return BluetoothError{newCode, domain}; }
    friend bool operator==(const BluetoothError&, const BluetoothError&) = default;
};

// "Error or none", as every transport callback reports it.
using OptionalError = std::optional<BluetoothError>;

} // namespace ostrel
