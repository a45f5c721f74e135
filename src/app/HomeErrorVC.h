#pragma once

#include "session/DeskStatus.h"

#include <QWidget>

class QLabel;
class QUrl;

namespace ostrel {

// What the desk's fault means to the user, in a window of its own. The control screen makes it
// once, for the first fault; later faults only bring that window back with its first texts.
class HomeErrorVC : public QWidget {
    Q_OBJECT
public:
    static constexpr long kCodeChildLock = DeskStatus::kCodeChildLock;
    static constexpr long kCodeReset = DeskStatus::kCodeReset;
    static constexpr long kCodeSlideDown = DeskStatus::kCodeSlideDown;

    explicit HomeErrorVC(long errorCode, QWidget* parent = nullptr);

    long errorCode() const { return m_errorCode; }
    static QString errorCodeText(long code);
    static QString titleText(long code);
    static bool isResetCode(long code);

    // A new error window for `errorCode`, centred and not yet shown. Closing it only hides it:
    // whoever made it shows it again for later faults, and deletes it.
    static QWidget* makeWindow(long errorCode);
    // The help page shipped with the application, in the language in use, as a local file.
    static QUrl helpPage();
    static QString windowIdentifier();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void actionHelp();
    void actionUnderstood();

    long m_errorCode;
};

} // namespace ostrel
