#pragma once

#include "protocol/CommandType.h"
#include "session/PageStack.h"

#include <QPointer>
#include <QWidget>
#include <functional>

class QLabel;

namespace ostrel {

class CountdownView;
class DeskControlHeader;
class DeskReleaseRow;
class DeskSession;
class DeskStatusLine;
class HomeFunctionBtn;
class OMDeskPicture;
class OMHoverButton;
class OMImageButton;
class PresetButtonRow;
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
    CountdownView* countdownView() const;
    StandingProgressView* standingProgress() const { return m_standing; }
    HomeFunctionBtn* upButton() const { return m_up; }
    HomeFunctionBtn* downButton() const { return m_down; }
    OMHoverButton* presetButton(int slot) const;
    // Presses, long presses and hovers of the presets.
    PresetButtonRow* presetRow() const { return m_presets; }
    OMHoverButton* settingsButton() const;
    OMImageButton* lightStripButton() const;
    OMImageButton* helpButton() const;
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
    void actionShowHelp();
    void bluetoothBreakTip();
    // Shows the error screen: made once, for the first fault's code, and afterwards only
    // brought back to the front, whatever the code.
    void jumpErrorVC();
    // Asks for a height and moves the desk there.
    void actionGoToHeight();

    // Pages opened from this screen replace its content until they close; the session keeps
    // running underneath. The screen takes ownership of a pushed view.
    void pushViewControlWithView(QWidget* view) { m_pages->push(view); }
    // Closes the topmost page; the control content itself never goes.
    void popViewControl() { m_pages->pop(); }
    // The page on top, or nullptr while the control content shows.
    QWidget* topView() const { return m_pages->top(); }
    int pageCount() const { return m_pages->pageCount(); }

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
    QWidget* buildHeight();
    QWidget* buildMoveButtons();
    void connectHeader();
    void connectSession();
    void connectReminder();
    void setTabOrderTopToBottom();
    // A released desk takes no keys: the controls that send them rest.
    void showDeskReleased(bool released);
    // The reminder's alert; a key held from the screen cannot outlast it opening.
    void actionAlarmNotificationAlert(bool isRepeat);
    void showHeight(const QString& text);

    DeskSession* m_session;
    SitStandReminder* m_reminder;
    DeskControlHeader* m_header = nullptr;
    StandingProgressView* m_standing = nullptr;
    PageStack* m_pages = nullptr;
    QLabel* m_height = nullptr;
    QString m_heightText;
    DeskStatusLine* m_status = nullptr;
    DeskReleaseRow* m_release = nullptr;
    QPointer<QWidget> m_errorWindow;
    OMDeskPicture* m_picture = nullptr;
    HomeFunctionBtn* m_up = nullptr;
    HomeFunctionBtn* m_down = nullptr;
    PresetButtonRow* m_presets = nullptr;
    bool m_breakTipShowing = false;
};

} // namespace ostrel
