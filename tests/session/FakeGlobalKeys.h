#pragma once

#include "platform/GlobalKeyBackend.h"
#include "platform/Platform.h"
#include "session/DQGlobalKeyHelper.h"

#include <QStringList>

namespace ostrel::test {

// The desktop's key service, recording what the registry asks of it; `press` is a user typing a
// taken key. The real services run against Xvfb and a portal stand-in in the application tests.
class FakeGlobalKeys : public GlobalKeyBackend {
public:
    bool isAvailable() const override { return true; }
    QList<int> grab(Combination combination) override {
        calls << QStringLiteral("grab %1").arg(combination);
        held = true;
        return takenByOthers;
    }
    void release() override {
        if (held)
            calls << QStringLiteral("release");
        held = false;
    }
    void press(int id) {
        if (held)
            emit activated(id);
    }

    QStringList calls;
    bool held = false;
    QList<int> takenByOthers;
};

// Installs a fake for the life of the test; its keys are let go at the end.
struct FakeGlobalKeysInstalled {
    ~FakeGlobalKeysInstalled() { DQGlobalKeyHelper::shareInstance().removeDeskGlobalHotKey(); }
    FakeGlobalKeys fake;
    FakeGlobalKeys* keys = &fake;
    PlatformOverride<GlobalKeyBackend> installed{fake};
};

} // namespace ostrel::test
