#pragma once

#include <QString>

namespace ostrel {

// The desk model the user is working with ("D5", "D5Plus", ...). The application sets it when
// the user picks a model; the store uses it to keep a separate bound-device list per model.
class CurrentDeskModel {
public:
    static QString name(); // "D5" until the application sets another
    static void setName(const QString& name);
};

} // namespace ostrel
