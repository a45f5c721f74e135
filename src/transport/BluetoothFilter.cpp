#include "BluetoothFilter.h"

#include <algorithm>

namespace ostrel {

namespace {

bool containsAnyHead(BluetoothType type, const QString& name) {
    const BluetoothModel model(type);
    const QStringList& heads = model.bluetoothHeadArray();
    return std::any_of(heads.begin(), heads.end(),
                       [&](const QString& head) { return name.contains(head, Qt::CaseSensitive); });
}

} // namespace

BluetoothType BluetoothFilter::getBluetoothTypeWithPeriperalName(const QString& name) {
    if (name.isNull())
        return 0;
    // Types 1 to 9 in order; the first family with a matching head wins.
    for (BluetoothType type = 1; type <= 9; ++type) {
        if (containsAnyHead(type, name))
            return type;
    }
    return 0;
}

bool BluetoothFilter::scanRuleWithType(BluetoothType type, const QString& periperalName) {
    return containsAnyHead(type, periperalName);
}

} // namespace ostrel
