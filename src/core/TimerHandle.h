#pragma once

#include <functional>
#include <memory>

namespace ostrel {

// A cancellable reference to a job handed to a Scheduler. Copies refer to the same job;
// a default-constructed handle refers to none. Cancelling a finished job does nothing.
class TimerHandle {
public:
    TimerHandle() = default;
    explicit TimerHandle(std::function<void()> cancel);

    void cancel();
    bool isNull() const { return !m_state; }

private:
    struct State {
        std::function<void()> cancel;
    };
    std::shared_ptr<State> m_state;
};

} // namespace ostrel
