#pragma once

#include "platform/BluetoothAccess.h"

#include <QDBusConnection>

namespace ostrel {

// Whether BlueZ will serve this application at all. QtBluetooth reports a stack that is not
// running and one whose bus policy refuses the user (Debian lets in the "bluetooth" group) both
// as "no adapter"; asking BlueZ directly tells them apart, so the user can be told what to do.
// NotRunning: no BlueZ on the system bus, or no system bus; Refused: BlueZ is there but its
// policy turns this user away.
class BluezAccess : public BluetoothAccess {
public:
    static Problem check(const QDBusConnection& systemBus = QDBusConnection::systemBus());

    Problem problem() const override { return check(); }
};

} // namespace ostrel
