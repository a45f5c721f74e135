#pragma once

#include "settings/OMSettingPage.h"
#include "store/CurrentDeviceStore.h"
#include "store/OMBluetoothModel.h"
#include "store/Object_SystemSetting.h"

#include <array>

class QLabel;
class QPushButton;

namespace ostrel {

class MemoryKeySequence;
class OMImageButton;
class OMSwitchButton;
class PresetBarView;
class SettingRowView;

// Presets and anti-collision: the four presets with their heights and bars, each stored from the
// desk's current height; anti-collision on or off and its sensitivity; help on anti-collision and
// on the desk's automatic reset.
class ViewIntelligentControl : public OMSettingPage {
    Q_OBJECT
public:
    // Sections top to bottom: Standing, Sitting, M1, M2 (tags 1000..1003).
    static constexpr int kSectionCount = 4;
    static constexpr int kFirstTag = 1000;

    explicit ViewIntelligentControl(DeskControlVC* fatherVC);

    const OMBluetoothModel& record() const { return m_objectBluetooth; }
    QLabel* presetLabel(int section) const { return m_sections[std::size_t(section)].value; }
    PresetBarView* presetBar(int section) const { return m_sections[std::size_t(section)].bar; }
    QPushButton* currentAltitudeButton(int section) const {
        return m_sections[std::size_t(section)].store;
    }
    OMSwitchButton* antiSwitch() const { return m_antiSwitch; }
    SettingRowView* sensitivityRow() const { return m_sensitivityRow; }
    OMImageButton* antiHelpButton() const { return m_antiHelp; }
    OMImageButton* resetHelpButton() const { return m_resetHelp; }
    MemoryKeySequence& keySequence() const { return *m_sequence; }

    // Tag 1000 stores Stand, 1001 Sit, 1002 M1, any other M2.
    void actionSetCurrentHeight(int tag);
    void actionSetMemoryKeyWithtype(int key);
    void actionAntiSwitch();
    void actionSelectSensitivity();
    void actionAntiHelp();
    void actionResetHelp();
    void refreshContentByDeviceInfo();

private:
    struct Section {
        QLabel* value = nullptr;
        PresetBarView* bar = nullptr;
        QPushButton* store = nullptr;
    };

    QWidget* buildContent();
    QWidget* buildPresetSection(int section, QWidget* parent);
    QWidget* buildAntiCollision(QWidget* parent);
    QWidget* buildAutomaticReset(QWidget* parent);
    QString presetText(int section, float preset) const;
    double barFraction(float preset) const;

    OMBluetoothModel m_objectBluetooth;
    Object_SystemSetting m_objectSystemSetting;
    CurrentDeviceStore::Presets m_memory{};
    std::array<Section, kSectionCount> m_sections{};
    OMSwitchButton* m_antiSwitch = nullptr;
    OMImageButton* m_antiHelp = nullptr;
    OMImageButton* m_resetHelp = nullptr;
    SettingRowView* m_sensitivityRow = nullptr;
    MemoryKeySequence* m_sequence;
};

} // namespace ostrel
