#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace ostrel {

// "Remember my desk": with the setting on, the desk current when the application last ran stays
// current across the launch, under the desk model whose bound-device list holds it, and desk
// search links it by itself. A desk no model's list holds any more (it was deleted) is not
// remembered. With the setting off nothing here answers.
class RememberedDesk {
public:
    static bool isOn();
    // The current desk's model among `models`; none when off, when there is no current desk,
    // or when no model's bound list holds it.
    static std::optional<QString> modelOfCurrentDesk(const QStringList& models);
    // The current desk's name, when on and bound under the current model; empty otherwise.
    static QString name();
};

} // namespace ostrel
