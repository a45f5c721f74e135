#include "session/GoToHeight.h"

#include "protocol/BluetoothResultHandle.h"
#include "protocol/CommandType.h"
#include "session/DeskHeightDisplay.h"

#include <algorithm>
#include <cmath>

namespace ostrel {

namespace {

// From this report on, the display shows whole units, rounded.
constexpr int kWholeUnitsFrom = 1000;
constexpr int kHalfWholeUnit = 5;

BluetoothResultHandle& handle() {
    return BluetoothResultHandle::sharedInstance();
}

Scheduler::Duration now() {
    return Scheduler::instance().now();
}

} // namespace

GoToHeight::GoToHeight(QObject* parent) : QObject(parent) {}

GoToHeight::~GoToHeight() {
    m_watchdog.cancel();
    m_deadline.cancel();
}

GoToHeight::Refusal GoToHeight::start(int targetTenthsCm, int reported, Limits limits) {
    if (reported <= 0)
        return Refusal::HeightUnknown;
    if (targetTenthsCm < limits.minHeight || targetTenthsCm > limits.maxHeight)
        return Refusal::OutOfRange;
    m_scale = reported < DeskHeightDisplay::kInchReportLimit ? DeskHeightDisplay::kCmPerInch : 1.0;
    m_target = static_cast<int>(std::lround(targetTenthsCm / m_scale));
    m_direction = m_target > reported ? 1 : -1;
    // A new target replaces the old one at the desk's next poll; only a move that ends here
    // needs stopping.
    if (isMoving()) {
        if (within(reported))
            end(Ending::Stopped);
        else
            finish(Ending::Stopped);
    }
    m_last = reported;
    m_moved = false;
    m_lastReportAt = now();
    emit started();
    if (within(reported)) {
        finish(Ending::Arrived);
        return Refusal::None;
    }
    handle().setTargetHeight(m_target);
    m_claim = HeldKeyOwner::instance().claim(
        HeldKeyOwner::Source::GoToHeight, command::kTargetHeight, this,
        [this](HeldKeyOwner::Ending why) {
            if (isMoving())
                finish(endingFor(why));
        },
        m_direction);
    m_phase = Phase::Target; // only now: taking over from a move of ours is no take-over
    armWatchdog(kReactionLimit);
    const double travelMs =
        (limits.maxHeight - limits.minHeight) / kSlowestTenthsCmPerSecond * 1000.0;
    m_deadline = Scheduler::instance().after(Scheduler::Duration(static_cast<long>(travelMs)) +
                                                 kTravelMargin,
                                             this, [this] { end(Ending::TimedOut); });
    return Refusal::None;
}

QString GoToHeight::refusalText(Refusal refusal, Limits limits, bool inches) {
    switch (refusal) {
    case Refusal::HeightUnknown:
        return tr("The desk's height is not known yet: move it a little first.");
    case Refusal::OutOfRange:
        return tr("The desk moves between %1 and %2.")
            .arg(DeskHeightDisplay::heightText(limits.minHeight, inches),
                 DeskHeightDisplay::heightText(limits.maxHeight, inches));
    case Refusal::None:
        break;
    }
    return {};
}

void GoToHeight::heightReported(int reported) {
    if (!isMoving())
        return;
    const Scheduler::Duration at = now();
    m_reportInterval = at - m_lastReportAt;
    m_lastReportAt = at;
    noteChange(reported);
    if (m_phase == Phase::Target && within(reported)) {
        // The desk finishes its own move; only our command ends here.
        m_claim.release();
        finish(Ending::Arrived);
    } else if (m_phase == Phase::Keys) {
        checkKeys(reported);
    }
}

void GoToHeight::stop() {
    if (isMoving())
        end(Ending::Stopped);
}

void GoToHeight::abort() {
    if (isMoving())
        end(Ending::Aborted);
}

GoToHeight::Ending GoToHeight::endingFor(HeldKeyOwner::Ending why) {
    switch (why) {
    case HeldKeyOwner::Ending::TakenOver:
        return Ending::TookOver;
    case HeldKeyOwner::Ending::Stopped:
        return Ending::Stopped;
    case HeldKeyOwner::Ending::LetGo:
        break;
    }
    return Ending::Aborted;
}

// A desk on a move of its own ignores "no key": it has to be stopped.
void GoToHeight::end(Ending ending) {
    if (m_phase == Phase::Target)
        m_claim.stop();
    else
        m_claim.release();
    finish(ending);
}

void GoToHeight::finish(Ending ending) {
    m_watchdog.cancel();
    m_deadline.cancel();
    m_phase = Phase::Idle;
    m_firstChange.reset();
    m_lastChange.reset();
    emit finished(ending);
}

void GoToHeight::armWatchdog(Scheduler::Duration delay) {
    m_watchdog.cancel();
    m_watchdog = Scheduler::instance().after(delay, this, [this] { watchdogFired(); });
}

void GoToHeight::watchdogFired() {
    if (m_phase == Phase::Target && !m_moved) {
        driveWithKeys();
        return;
    }
    if (m_phase == Phase::Coasting) {
        // Only a display that shows tenths tells how far the desk really coasted.
        const bool tenths = m_last < kWholeUnitsFrom;
        if (tenths)
            m_overshoot = std::max(0.0, m_direction * (m_last - m_releasedAt));
        // A rounded reading may be half a unit from where the desk stands.
        finish(within(m_last, tenths ? 0 : kHalfWholeUnit) ? Ending::Arrived : Ending::Stalled);
        return;
    }
    end(Ending::Stalled);
}

void GoToHeight::driveWithKeys() {
    m_phase = Phase::Keys;
    m_claim.hold(m_direction > 0 ? command::kUpKey : command::kDownKey);
    armWatchdog(kStallLimit);
}

void GoToHeight::noteChange(int reported) {
    if (reported == m_last)
        return;
    m_moved = true;
    m_last = reported;
    if (m_phase == Phase::Keys) {
        const Change change{now(), reported};
        if (!m_firstChange)
            m_firstChange = change;
        m_lastChange = change;
    }
    armWatchdog(m_phase == Phase::Coasting ? kSettleTime : kStallLimit);
}

void GoToHeight::checkKeys(int reported) {
    const bool passed = m_direction * (reported - m_target) >= 0;
    const double estimate = estimatedHeight();
    if (!passed && m_direction * (estimate - m_target) + overshoot() < 0)
        return;
    m_claim.release();
    m_releasedAt = estimate;
    m_phase = Phase::Coasting;
    armWatchdog(kSettleTime);
}

// Where the desk is now: the display changed when the desk crossed into the shown value, and
// it has moved on at the measured speed since, up to the next change of the display.
double GoToHeight::estimatedHeight() const {
    const std::optional<double> perMs = speed();
    if (!perMs)
        return m_last;
    const double crossing = crossingInto(m_lastChange->reported);
    const double span = m_lastChange->reported >= kWholeUnitsFrom ? 2 * kHalfWholeUnit : 1;
    const double moved = *perMs * double((now() - m_lastChange->at).count());
    return crossing + m_direction * std::min(moved, span);
}

double GoToHeight::crossingInto(int reported) const {
    const bool rounded =
        reported > kWholeUnitsFrom || (reported == kWholeUnitsFrom && m_direction < 0);
    return reported - (rounded ? m_direction * kHalfWholeUnit : 0);
}

// The desk runs on until it hears the released key at its next poll: one report interval at
// its speed, until a finished move has shown the real distance.
double GoToHeight::overshoot() const {
    if (m_overshoot)
        return *m_overshoot;
    return speed().value_or(0.0) * double(m_reportInterval.count());
}

// Report units per millisecond, measured between display changes of this move.
std::optional<double> GoToHeight::speed() const {
    if (!m_lastChange || !m_firstChange || m_lastChange->at == m_firstChange->at)
        return std::nullopt;
    return std::abs(double(m_lastChange->reported - m_firstChange->reported)) /
           double((m_lastChange->at - m_firstChange->at).count());
}

bool GoToHeight::within(double reported, double slack) const {
    return (std::abs(reported - m_target) - slack) * m_scale <= kToleranceTenthsCm;
}

} // namespace ostrel
