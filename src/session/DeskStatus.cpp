#include "session/DeskStatus.h"

#include "protocol/BluetoothResultHandle.h"

#include <algorithm>

namespace ostrel {

namespace {

// The error texts the classifier raises: "E" with the code, or the slide-down pattern it
// reports as an error.
constexpr char kSlideDownError[] = "-OL";

bool isErrorText(const std::string& result) {
    return !result.empty() && result.front() == 'E';
}

} // namespace

DeskStatus::Kind DeskStatus::kindOf(bool locked, const std::string& result) {
    if (locked)
        return Kind::ChildLock;
    if (result == "RST")
        return Kind::Reset;
    if (result == BluetoothResultHandle::kSlideDown || result == kSlideDownError)
        return Kind::SlideDown;
    if (isErrorText(result))
        return Kind::Error;
    return Kind::None;
}

long DeskStatus::errorCodeOf(Kind kind, const std::string& result) {
    switch (kind) {
    case Kind::ChildLock:
        return kCodeChildLock;
    case Kind::Reset:
        return kCodeReset;
    case Kind::SlideDown:
        return kCodeSlideDown;
    case Kind::Error: {
        const std::string digits = result.substr(1);
        const bool number =
            !digits.empty() && digits.size() <= 4 &&
            std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
        return number ? std::stol(digits) : kCodeUnreadable;
    }
    case Kind::None:
        break;
    }
    return 0;
}

bool DeskStatus::needsReset(long code) {
    return code >= 0 && code <= 37 && ((kResetCodeMask >> code) & 1U) != 0;
}

QString DeskStatus::describe(Kind kind, long code, const std::string& result) {
    switch (kind) {
    case Kind::None:
        return {};
    case Kind::ChildLock:
        return tr("Child lock (LOC): the desk ignores its keys until it is unlocked on the desk.");
    case Kind::Reset:
        return tr("Reset needed (RST): hold Down until the desk reaches its lowest position.");
    case Kind::SlideDown:
        return tr("Slide-down warning (-0L): the desk is sinking by itself.");
    case Kind::Error:
        break;
    }
    const QString shown = QString::fromStdString(result);
    if (code == 1 || code == 2)
        return tr("Error %1: the desk is overheated. Wait 18 minutes before using it.").arg(shown);
    if (code == 3 || code == 4)
        return tr("Error %1: the desk needs to back off automatically.").arg(shown);
    if (needsReset(code))
        return tr("Error %1: the desk needs a reset. Hold Down until it reaches its lowest "
                  "position.")
            .arg(shown);
    if (code == 30)
        return tr("Error %1: the six-axis sensor has failed.").arg(shown);
    return tr("Error %1: the desk reports a fault.").arg(shown);
}

void DeskStatus::displayShown(bool locked, const std::string& result) {
    const Kind kind = kindOf(locked, result);
    // Every frame comes here: compare before building anything.
    if (kind == m_kind && (kind != Kind::Error || result == m_result))
        return;
    const bool wasFault = m_kind != Kind::None;
    m_kind = kind;
    m_result = kind == Kind::Error ? result : std::string();
    m_errorCode = errorCodeOf(kind, result);
    m_text = describe(kind, m_errorCode, result);
    emit statusChanged(m_text);
    if (kind != Kind::None && !wasFault)
        emit faultAppeared(m_errorCode);
}

} // namespace ostrel
