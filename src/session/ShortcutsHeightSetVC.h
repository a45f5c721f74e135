#pragma once

#include "session/OMSheetWindow.h"

#include <functional>

class QLabel;
class QPushButton;

namespace ostrel {

// The sheet that asks before the current height is stored as a preset: "Whether to set the
// current height to" the preset's picture and name, with Cancel and Confirm. One window serves
// every request; a new request reconfigures it.
class ShortcutsHeightSetVC : public OMSheetWindow {
    Q_OBJECT
public:
    static constexpr QSize kSize{330, 169};
    using ConfirmFn = std::function<void()>;
    // Tests answer the sheet at once (click its buttons) and return true; false shows it.
    using Presenter = std::function<bool(ShortcutsHeightSetVC& sheet)>;

    // Finds or creates the sheet over `host`'s window, configures it and presents it.
    static ShortcutsHeightSetVC* present(QWidget* host, const QString& imageIcon,
                                         const QString& tip, ConfirmFn confirmFn);
    // Returns the previous presenter; nullptr restores on-screen presentation.
    static Presenter setPresenter(Presenter presenter);

    explicit ShortcutsHeightSetVC(QWidget* parent = nullptr);

    void setViewContentWithImageIcon(const QString& imageIcon, const QString& tip,
                                     ConfirmFn confirmFn);
    void actionConfirm();
    void actionCancel();

    QString tip() const;
    QString imageIcon() const { return m_imageIcon; }
    QPushButton* confirmButton() const { return m_confirm; }
    QPushButton* cancelButton() const { return m_cancel; }

protected:
    void cancelSheet() override { actionCancel(); }

private:
    QLabel* m_icon;
    QLabel* m_tip;
    QPushButton* m_cancel;
    QPushButton* m_confirm;
    QString m_imageIcon;
    ConfirmFn m_confirmFn;
};

} // namespace ostrel
