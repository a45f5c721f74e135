#include "TimerHandle.h"

namespace ostrel {

TimerHandle::TimerHandle(std::function<void()> cancel)
    : m_state(std::make_shared<State>(State{std::move(cancel)})) {}

void TimerHandle::cancel() {
    if (!m_state || !m_state->cancel)
        return;
    auto cancel = std::move(m_state->cancel);
    m_state->cancel = nullptr;
    cancel();
}

} // namespace ostrel
