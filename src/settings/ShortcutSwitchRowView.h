#pragma once

#include <QWidget>
#include <functional>

class QLabel;

namespace ostrel {

class OMSwitchButton;

// The row that switches the global shortcuts on and off.
class ShortcutSwitchRowView : public QWidget {
    Q_OBJECT
public:
    using ChangeFn = std::function<void(const QString& status)>;

    explicit ShortcutSwitchRowView(QWidget* parent = nullptr);

    // `status` "1" shows the switch on; `changeFn` hears the new status after each flip.
    void setRowViewWithTitle(const QString& title, const QString& status, ChangeFn changeFn);
    // Shows `status` without telling anyone.
    void setStatus(const QString& status);
    OMSwitchButton* switchButton() const { return m_switch; }
    QString status() const { return m_status; }

    void actionSwitch();

private:
    QLabel* m_title;
    OMSwitchButton* m_switch;
    QString m_status;
    ChangeFn m_changeFn;
};

} // namespace ostrel
