#pragma once

#include "session/OMSheetWindow.h"

#include <functional>

class QLabel;
class QPushButton;

namespace ostrel {

// The reminder's alert inside the application, a sheet over the home window. Repeating: "Whether
// to continue the reminder?" with Cancel and Confirm; single: "Please stand/sit for a while" with
// one centred "Now", which answers as Cancel does. One window, reconfigured by each reminder.
class NotificationAlert : public OMSheetWindow {
    Q_OBJECT
public:
    static constexpr QSize kSize{334, 142};
    using Fn = std::function<void()>;

    static QString identifier();
    // Finds or creates the alert over `host`'s window, configures it and shows it.
    static NotificationAlert* present(QWidget* host, bool isRepeat, Fn confirmFn, Fn cancelFn);
    // The open alert, or nullptr.
    static NotificationAlert* current();
    // Takes the alert away, if it is up.
    static void dismiss();

    explicit NotificationAlert(QWidget* parent = nullptr);

    void setViewContentWithIsRepeat(bool isRepeat, Fn confirmFn, Fn cancelFn);
    void actionConfirm();
    void actionCancel();

    QString text() const;
    QPushButton* confirmButton() const { return m_confirm; }
    QPushButton* cancelButton() const { return m_cancel; }

protected:
    void cancelSheet() override { actionCancel(); }

private:
    QLabel* m_text;
    QPushButton* m_cancel;
    QPushButton* m_confirm;
    Fn m_confirmFn;
    Fn m_cancelFn;
};

} // namespace ostrel
