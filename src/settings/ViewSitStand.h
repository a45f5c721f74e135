#pragma once

#include "settings/OMSettingPage.h"
#include "store/OMBluetoothModel.h"

#include <functional>

namespace ostrel {

class OMSwitchButton;
class SettingRowView;

// The sit-stand reminder of the current desk: on or off, its interval and its sound, written to
// the desk's record at once and reaching the running countdown; and whether reminders wait while
// the user is away, an application setting.
class ViewSitStand : public OMSettingPage {
    Q_OBJECT
public:
    explicit ViewSitStand(DeskControlVC* fatherVC);

    const OMBluetoothModel& record() const { return m_record; }
    OMSwitchButton* sitStandSwitch() const { return m_sitStand; }
    SettingRowView* intervalRow() const { return m_interval; }
    OMSwitchButton* soundSwitch() const { return m_sound; }
    OMSwitchButton* pauseAwaySwitch() const { return m_pauseAway; }

    // Turning the reminder on turns its sound on too; off stops the countdown.
    void actionSitStandSwitch();
    // Opens the interval choice, only while the reminder is on.
    void actionSelectInterval();
    // The interval choice's answer (choice 0-3, minutes, repeating).
    void intervalChosen(int selection, int minutes, bool repeat);
    // Only while the reminder is on.
    void actionSoundSwitch();
    void actionPauseAwaySwitch();
    void refreshContentView();

private:
    void initData();
    void initView();
    bool isOn() const;
    // Applies one change to the stored record and keeps what was saved.
    void change(const std::function<void(OMBluetoothModel&)>& apply);

    OMBluetoothModel m_record;
    OMSwitchButton* m_sitStand = nullptr;
    SettingRowView* m_interval = nullptr;
    OMSwitchButton* m_sound = nullptr;
    OMSwitchButton* m_pauseAway = nullptr;
};

} // namespace ostrel
