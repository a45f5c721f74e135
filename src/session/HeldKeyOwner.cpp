#include "session/HeldKeyOwner.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothResultHandle.h"
#include "protocol/CommandType.h"
#include "transport/RBBluetoothManager.h"

#include <utility>

namespace ostrel {

namespace {

BluetoothResultHandle& handle() {
    return BluetoothResultHandle::sharedInstance();
}

Scheduler::Duration now() {
    return Scheduler::instance().now();
}

bool linked() {
    return RBBluetoothManager::sharedInstance().isConnect();
}

// Keys after which the desk goes on by itself once they are released.
bool startsSelfMove(int type) {
    return type == command::kTargetHeight || command::presetSlot(type) >= 0;
}

} // namespace

// ---- Claim ----

bool HeldKeyOwner::Claim::isActive() const {
    return instance().owns(*this);
}

void HeldKeyOwner::Claim::hold(int type, int direction) const {
    HeldKeyOwner& owner = instance();
    if (owner.owns(*this))
        owner.answer(type, direction);
}

void HeldKeyOwner::Claim::release() const {
    instance().letGo(*this);
}

void HeldKeyOwner::Claim::releaseWhenHeard() const {
    const Claim claim = *this;
    instance().afterPolls(claim, kShortestPress, [claim] { claim.release(); });
}

void HeldKeyOwner::Claim::stop() const {
    HeldKeyOwner& owner = instance();
    if (!owner.owns(*this))
        return;
    const int direction = owner.selfMoveDirection();
    owner.letGo(*this);
    owner.tapToStop(direction);
}

// ---- Owner ----

HeldKeyOwner::HeldKeyOwner() {
    // Whoever hears of the loss first, nothing held may wait for the next link.
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(notifications::kBluetoothDisconnected),
        [this](const QVariant&) { releaseAll(); });
}

HeldKeyOwner& HeldKeyOwner::instance() {
    static HeldKeyOwner* owner = new HeldKeyOwner; // lives as long as the classifier it writes
    return *owner;
}

HeldKeyOwner::Claim HeldKeyOwner::claim(Source source, int type, QObject* context, Ended ended,
                                        int direction) {
    endCurrent(Ending::TakenOver);
    m_current = {m_nextId++, source, context, std::move(ended), 0};
    answer(type, direction);
    return Claim(m_current.id);
}

void HeldKeyOwner::releaseAll() {
    endCurrent(Ending::LetGo);
    m_stopping = Stopping::No;
    m_stopWatch.cancel();
    write(command::kNoKey, 0);
    m_selfMoving = false;
}

void HeldKeyOwner::stopAll(Ending why) {
    if (m_stopping != Stopping::No) {
        endCurrent(why);
        m_deferredType = command::kNoKey; // already stopping: only what waited for it goes
        return;
    }
    const int direction = selfMoveDirection();
    endCurrent(why);
    write(command::kNoKey, 0);
    tapToStop(direction);
}

void HeldKeyOwner::releaseThen(std::function<void()> then) {
    stopAll(Ending::LetGo);
    waitUntilHeard(now() + kHearingLimit, std::move(then));
}

void HeldKeyOwner::heightReported(int reported) {
    if (reported != m_lastHeight && m_lastHeight != 0) {
        if (m_selfMoving) {
            m_selfDirection = reported > m_lastHeight ? 1 : -1;
            m_selfMoved = true;
        }
        m_lastChangeAt = now();
    }
    m_lastHeight = reported;
}

void HeldKeyOwner::answer(int type, int direction) {
    if (m_stopping == Stopping::No) {
        write(type, direction);
        return;
    }
    m_deferredType = type;
    m_deferredDirection = direction;
}

void HeldKeyOwner::write(int type, int direction) {
    m_releaseWatch.cancel();
    send(type, direction);
}

// The only write of the answer to the desk's polls.
void HeldKeyOwner::send(int type, int direction) {
    const int previous = handle().currentCommandType();
    m_current.pollsAtHold = handle().setCurrentCommandType(type);
    if (type == command::kNoKey) {
        // The desk has heard no key once a poll was answered after the last key went.
        if (previous != command::kNoKey)
            m_noKeySincePolls = m_current.pollsAtHold;
    } else if (startsSelfMove(type)) {
        m_selfMoving = true;
        m_selfMoved = false;
        m_selfDirection = direction;
        m_selfSince = now();
    } else if (type == command::kUpKey || type == command::kDownKey) {
        m_selfMoving = false; // a held key ends any move of the desk's own
    }
    if (type != previous)
        emit keyChanged(type);
}

void HeldKeyOwner::endCurrent(Ending why) {
    Current ended = std::exchange(m_current, {});
    m_releaseWatch.cancel();
    if (ended.id != 0 && ended.ended && ended.context)
        ended.ended(why);
}

void HeldKeyOwner::letGo(const Claim& claim) {
    if (!owns(claim))
        return;
    m_current = {};
    answer(command::kNoKey, 0);
}

void HeldKeyOwner::tapToStop(int direction) {
    if (direction == 0 || !linked())
        return;
    m_deferredType = command::kNoKey;
    write(direction > 0 ? command::kUpKey : command::kDownKey, 0);
    m_stopping = Stopping::Tapping;
    m_pollsAtTap = handle().answeredPolls();
    m_stopDeadline = now() + kHearingLimit;
    m_stopWatch = Scheduler::instance().every(kAnswerCheck, this, [this] { advanceStop(); });
}

void HeldKeyOwner::advanceStop() {
    if (m_stopping == Stopping::Tapping &&
        (handle().answeredPolls() != m_pollsAtTap || now() >= m_stopDeadline)) {
        send(command::kNoKey, 0);
        m_stopping = Stopping::Untapping;
        m_stopDeadline = now() + kHearingLimit;
    }
    if (m_stopping == Stopping::Untapping && (deskHeardNoKey() || now() >= m_stopDeadline)) {
        m_stopping = Stopping::No;
        m_stopWatch.cancel();
        if (m_deferredType != command::kNoKey)
            send(std::exchange(m_deferredType, command::kNoKey), m_deferredDirection);
    }
}

// Which way the desk goes by itself now, 0 when it does not: it stands once its height has not
// changed for a while, or when a move it was sent on never started.
int HeldKeyOwner::selfMoveDirection() {
    if (!m_selfMoving)
        return 0;
    const bool settled =
        m_selfMoved ? now() - m_lastChangeAt > kMovingWithin : now() - m_selfSince > kHearingLimit;
    if (settled)
        m_selfMoving = false;
    return m_selfMoving ? m_selfDirection : 0;
}

// A fresh classifier (a new process, a test) counts from zero again: any difference means polls
// were answered since.
bool HeldKeyOwner::deskHeardNoKey() const {
    return handle().currentCommandType() == command::kNoKey &&
           handle().answeredPolls() != m_noKeySincePolls;
}

void HeldKeyOwner::afterPolls(const Claim& claim, std::uint64_t polls, std::function<void()> then) {
    if (!owns(claim))
        return;
    const Scheduler::Duration deadline = now() + kHearingLimit;
    auto heard = [this, claim, polls, deadline] {
        return !owns(claim) ||
               (m_stopping == Stopping::No &&
                handle().answeredPolls() - m_current.pollsAtHold >= polls) ||
               now() >= deadline;
    };
    if (heard()) {
        then();
        return;
    }
    m_releaseWatch = Scheduler::instance().every(kAnswerCheck, this, [this, heard, then] {
        if (!heard())
            return;
        m_releaseWatch.cancel();
        then();
    });
}

void HeldKeyOwner::waitUntilHeard(Scheduler::Duration deadline, std::function<void()> then) {
    if (!linked() || deskHeardNoKey() || now() >= deadline) {
        then();
        return;
    }
    Scheduler::instance().after(kAnswerCheck, this, [this, deadline, then = std::move(then)] {
        waitUntilHeard(deadline, then);
    });
}

} // namespace ostrel
