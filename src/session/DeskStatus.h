#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <string>

namespace ostrel {

// What the desk's display says about the desk beyond its height: an error code, the child lock,
// a reset request or the slide-down warning, in words for the control screen, with the code the
// error screen shows. It reads the classification of every display frame and speaks only when
// the status changes.
class DeskStatus : public QObject {
    Q_OBJECT
public:
    enum class Kind { None, Error, ChildLock, Reset, SlideDown };

    // The error screen's codes for the states that have no number.
    static constexpr long kCodeChildLock = 0xCCCC;
    static constexpr long kCodeReset = 0xFFFF;
    static constexpr long kCodeSlideDown = 0xEEEE;
    // An error whose code is not a number ("E2B").
    static constexpr long kCodeUnreadable = -1;
    // The codes 0-37 that a reset of the desk clears.
    static constexpr std::uint64_t kResetCodeMask = 0x3F07F0FB80;

    explicit DeskStatus(QObject* parent = nullptr) : QObject(parent) {}

    // One display frame as classified: the child-lock flag and the result text.
    void displayShown(bool locked, const std::string& result);

    Kind kind() const { return m_kind; }
    // Empty while the desk reports nothing beyond its height.
    const QString& text() const { return m_text; }
    // The code the error screen shows for the current fault.
    long errorCode() const { return m_errorCode; }

    static Kind kindOf(bool locked, const std::string& result);
    static long errorCodeOf(Kind kind, const std::string& result);
    static bool needsReset(long code);
    // What happened, and the one thing to do where there is one.
    static QString describe(Kind kind, long code, const std::string& result);

signals:
    void statusChanged(const QString& text);
    // A fault the desk was not showing just before: the error screen is due.
    void faultAppeared(long errorCode);

private:
    Kind m_kind = Kind::None;
    std::string m_result; // the error text behind the status, to tell one code from another
    QString m_text;
    long m_errorCode = 0;
};

} // namespace ostrel
