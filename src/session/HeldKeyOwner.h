#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <QPointer>
#include <cstdint>
#include <functional>

namespace ostrel {

// The one writer of the key the desk's polls are answered with. Whatever wants to press a key
// (a button on the screen, a hot-key movement, a move to a height, a preset or memory-key
// sequence, a settings page) claims it and gets a Claim that only it holds. A newer claim ends
// the one before and tells its source, so no source goes on believing it moves the desk.
// Losing the link, switching desks, ending the session and quitting end every claim.
//
// A key only ever reaches the desk as the answer to one of its polls. A desk that moves by itself
// (to a target height, to a preset) ignores "no key"; it is stopped by answering its next poll
// with the key of its own direction, then no key, never with the opposite key. The desk takes no
// key held on from that tap as a new press, so a claim made while the stop is under way gets the
// desk only once the desk has heard the no key.
class HeldKeyOwner : public QObject {
    Q_OBJECT
public:
    // The longest wait for the desk to hear a key before the owner goes on without it.
    static constexpr Scheduler::Duration kHearingLimit{1000};
    static constexpr Scheduler::Duration kAnswerCheck{10};
    // A desk whose height changed this recently is still on its way.
    static constexpr Scheduler::Duration kMovingWithin{500};
    // A press, however short, is answered to this many polls: a desk may not act on one.
    static constexpr std::uint64_t kShortestPress = 2;

    enum class Source { Screen, HotKey, GoToHeight, PresetKeys, Settings };
    // Why a claim ended without its source letting it go.
    enum class Ending { TakenOver, Stopped, LetGo };
    using Ended = std::function<void(Ending)>;

    // A source's hold on the key. Copies refer to the same claim; once it has ended (released,
    // taken over, or ended by the owner) every operation on it does nothing.
    class Claim {
    public:
        Claim() = default;
        bool isActive() const;
        // Holds another key within the claim. `direction` (+1 up, -1 down) says where the key
        // sends a desk that then moves by itself: a preset or the target height.
        void hold(int type, int direction = 0) const;
        void release() const;
        // Releases once the desk has heard the key kShortestPress times.
        void releaseWhenHeard() const;
        // Releases and stops a desk that moves by itself.
        void stop() const;

    private:
        friend class HeldKeyOwner;
        explicit Claim(std::uint64_t id) : m_id(id) {}
        std::uint64_t m_id = 0;
    };

    static HeldKeyOwner& instance();

    // Ends the claim that holds the key now (telling its source) and holds `type` for `source`.
    // `ended` runs only while `context` lives.
    Claim claim(Source source, int type, QObject* context, Ended ended = {}, int direction = 0);
    // The link is gone or replaced: every claim ends, nothing is sent.
    void releaseAll();
    // Every claim ends, and a desk that moves by itself is stopped.
    void stopAll(Ending why = Ending::Stopped);
    // Every claim ends and the desk is stopped; `then` runs once the desk has answered a poll
    // with no key (at once when it already has or no desk is linked), or after kHearingLimit.
    void releaseThen(std::function<void()> then);

    // Every height the desk reports: tells whether and which way it moves.
    void heightReported(int reported);

signals:
    // The key the desk's polls are answered with changed (0: none), whoever claimed it.
    void keyChanged(int type);

private:
    struct Current {
        std::uint64_t id = 0;
        Source source = Source::Screen;
        QPointer<QObject> context;
        Ended ended;
        std::uint64_t pollsAtHold = 0;
    };

    HeldKeyOwner();
    bool owns(const Claim& claim) const { return claim.m_id != 0 && claim.m_id == m_current.id; }
    // The current claim's key: written now, or once a stop under way is over.
    void answer(int type, int direction);
    // Writes a new key and drops any wait for the previous one to be heard.
    void write(int type, int direction);
    void send(int type, int direction);
    void endCurrent(Ending why);
    void letGo(const Claim& claim);
    void tapToStop(int direction);
    void advanceStop();
    int selfMoveDirection();
    bool deskHeardNoKey() const;
    void afterPolls(const Claim& claim, std::uint64_t polls, std::function<void()> then);
    void waitUntilHeard(Scheduler::Duration deadline, std::function<void()> then);

    Current m_current;
    std::uint64_t m_nextId = 1;
    std::uint64_t m_noKeySincePolls = 0;
    TimerHandle m_releaseWatch;

    // A stop of the desk's own move: the tap's key until a poll hears it, then no key until a
    // poll hears that; what the current claim holds meanwhile waits in m_deferred*.
    enum class Stopping { No, Tapping, Untapping };
    Stopping m_stopping = Stopping::No;
    std::uint64_t m_pollsAtTap = 0;
    Scheduler::Duration m_stopDeadline{};
    TimerHandle m_stopWatch;
    int m_deferredType = 0;
    int m_deferredDirection = 0;

    // A desk on a move of its own, and which way it goes.
    bool m_selfMoving = false;
    bool m_selfMoved = false;
    int m_selfDirection = 0;
    Scheduler::Duration m_selfSince{};
    int m_lastHeight = 0;
    Scheduler::Duration m_lastChangeAt{};
};

} // namespace ostrel
