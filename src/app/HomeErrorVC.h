#pragma once

#include <QWidget>
#include <cstdint>

class QLabel;

namespace ostrel {

// What the desk's fault means to the user, in a window of its own. Created once for the first
// fault; later faults only bring that window back with its first texts.
class HomeErrorVC : public QWidget {
    Q_OBJECT
public:
    // The codes 0-37 that a reset of the desk clears.
    static constexpr std::uint64_t kResetCodeMask = 0x3F07F0FB80;
    static constexpr long kCodeChildLock = 0xCCCC;
    static constexpr long kCodeReset = 0xFFFF;
    static constexpr long kCodeSlideDown = 0xEEEE;

    explicit HomeErrorVC(long errorCode, QWidget* parent = nullptr);

    long errorCode() const { return m_errorCode; }
    static QString errorCodeText(long code);
    static QString titleText(long code);
    static bool isResetCode(long code);

    // Opens the error window for `errorCode`, or brings the one already open to the front.
    static HomeErrorVC* showError(long errorCode);
    static QString windowIdentifier();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void actionHelp();
    void actionUnderstood();

    long m_errorCode;
};

} // namespace ostrel
