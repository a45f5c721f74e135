#pragma once

#include "BluetoothModel.h"

namespace ostrel {

// Desks are recognised by their advertised name alone.
class BluetoothFilter {
public:
    // The family whose head the name contains (case-sensitive, anywhere in the name), tested in
    // a fixed order; a null name or no head gives 0. "QJW" is tested before "QJWK", so QJWK
    // desks are driven as type 2.
    static BluetoothType getBluetoothTypeWithPeriperalName(const QString& name);
    // Whether the name contains any head of the type; a type outside 0-9 accepts nothing.
    static bool scanRuleWithType(BluetoothType type, const QString& periperalName);
};

} // namespace ostrel
