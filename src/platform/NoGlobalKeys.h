#pragma once

#include "platform/GlobalKeyBackend.h"

namespace ostrel {

// A desktop that lets no application take keys system-wide: the shortcuts page says so.
class NoGlobalKeys : public GlobalKeyBackend {
public:
    bool isAvailable() const override { return false; }
    QList<int> grab(Combination) override { return {}; }
    void release() override {}
};

} // namespace ostrel
