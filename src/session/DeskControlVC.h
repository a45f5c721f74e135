#pragma once

#include "protocol/CommandType.h"

#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>

class QLabel;
class QStackedLayout;

namespace ostrel {

class CountdownView;
class DeskReleaseRow;
class DeskSession;
class DeskStatusLine;
class HomeFunctionBtn;
class OMDeskPicture;
class OMHoverButton;
class OMImageButton;
class SitStandReminder;
class StandingProgressView;

// The desk control screen: the live height, the desk picture, Up and Down held to move, the four
// presets (click to recall, long press to save) and the settings entry. All behaviour is the
// session's; this screen only forwards the user's gestures and shows what the session reports.
class DeskControlVC : public QWidget {
    Q_OBJECT
public:
    static constexpr int kPresetCount = command::kPresetCount;
    static constexpr int kHeightPointSize = 60;
    static constexpr int kUnitPointSize = 24;
    static constexpr QSize kPreferredSize{420, 640};

    // Makes the error screen's window for a fault code; the shell installs it.
    using ErrorScreenFactory = std::function<QWidget*(long errorCode)>;

    explicit DeskControlVC(QWidget* parent = nullptr);
    ~DeskControlVC() override;

    static void setErrorScreenFactory(ErrorScreenFactory factory);

    DeskSession& session() const { return *m_session; }
    SitStandReminder& reminder() const { return *m_reminder; }
    CountdownView* countdownView() const { return m_countdown; }
    StandingProgressView* standingProgress() const { return m_standing; }
    HomeFunctionBtn* upButton() const { return m_up; }
    HomeFunctionBtn* downButton() const { return m_down; }
    OMHoverButton* presetButton(int slot) const { return m_presets[std::size_t(slot)]; }
    OMHoverButton* settingsButton() const { return m_settings; }
    OMImageButton* lightStripButton() const { return m_lightStrip; }
    OMImageButton* helpButton() const { return m_help; }
    OMDeskPicture* deskPicture() const { return m_picture; }
    // Clicked, it asks for a height to go to.
    QLabel* heightLabel() const { return m_height; }
    // The height as shown: number and unit are drawn in two sizes.
    QString heightText() const;
    QString tipText() const;
    // What the desk reports beyond its height, in words; hidden while there is nothing.
    DeskStatusLine* statusLine() const { return m_status; }
    // Release desk / Connect desk.
    DeskReleaseRow* releaseRow() const { return m_release; }
    // The error screen this screen opened, if any.
    QWidget* errorWindow() const { return m_errorWindow; }

    QSize sizeHint() const override { return kPreferredSize.expandedTo(QWidget::sizeHint()); }

    void touchDwon(HomeFunctionBtn* button);
    void touchUp(HomeFunctionBtn* button);
    void touchHoverDwon(OMHoverButton* button);
    void touchHoverUp(OMHoverButton* button);
    void longHoverPress(OMHoverButton* button);
    void hoverStart(OMHoverButton* button);
    void hoverEnd(OMHoverButton* button);
    void actionShowHelp();
    void bluetoothBreakTip();
    // Shows the error screen: made once, for the first fault's code, and afterwards only
    // brought back to the front, whatever the code.
    void jumpErrorVC();
    // Asks for a height and moves the desk there.
    void actionGoToHeight();

    // Pages opened from this screen replace its content until they close; the session keeps
    // running underneath. The screen takes ownership of a pushed view.
    void pushViewControlWithView(QWidget* view);
    // Closes the topmost page; the control content itself never goes.
    void popViewControl();
    // The page on top, or nullptr while the control content shows.
    QWidget* topView() const;
    int pageCount() const;

signals:
    // The settings screens live elsewhere; whoever hosts this screen opens them.
    void settingsRequested();
    void lightStripRequested();
    // The presets help sheet asked to customise the presets.
    void intelligentControlRequested();
    // Today's standing time was clicked: the activity page.
    void activityRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildControlView();
    QWidget* buildHeader();
    QWidget* buildHeight();
    QWidget* buildMoveButtons();
    QWidget* buildPresetButtons();
    void connectSession();
    void connectReminder();
    void setTabOrderTopToBottom();
    void showPresetsReleased();
    // A released desk takes no keys: the controls that send them rest.
    void showDeskReleased(bool released);
    // The reminder's alert; a key held from the screen cannot outlast it opening.
    void actionAlarmNotificationAlert(bool isRepeat);
    void showHeight(const QString& text);
    void refreshPresetImages();
    int slotOf(const QObject* button) const;
    void showTipLabelInView(OMHoverButton* button);
    void hideTipLabel();

    DeskSession* m_session;
    SitStandReminder* m_reminder;
    CountdownView* m_countdown = nullptr;
    StandingProgressView* m_standing = nullptr;
    QStackedLayout* m_stack = nullptr;
    QLabel* m_height = nullptr;
    QString m_heightText;
    QLabel* m_tip = nullptr;
    DeskStatusLine* m_status = nullptr;
    DeskReleaseRow* m_release = nullptr;
    QPointer<QWidget> m_errorWindow;
    OMDeskPicture* m_picture = nullptr;
    HomeFunctionBtn* m_up = nullptr;
    HomeFunctionBtn* m_down = nullptr;
    std::array<OMHoverButton*, kPresetCount> m_presets{};
    OMHoverButton* m_settings = nullptr;
    OMImageButton* m_lightStrip = nullptr;
    OMImageButton* m_help = nullptr;
    bool m_breakTipShowing = false;
};

} // namespace ostrel
