#pragma once

#include "core/Scheduler.h"
#include "protocol/CommandType.h"
#include "session/HeldKeyOwner.h"
#include "store/CurrentDeviceStore.h"

#include <QObject>
#include <QString>
#include <functional>

namespace ostrel {

// The four height presets (slot 0..3 = Sit, Stand, M1, M2, whole cm, 0 = not set) and the key
// sequences that recall and store them. Storing is a conversation with the desk: the memory key,
// the desk's "S-" confirmation, then the preset key, after which the shown height is recorded.
class PresetKeys : public QObject {
    Q_OBJECT
public:
    static constexpr int kPresetCount = command::kPresetCount;
    static constexpr Scheduler::Duration kMemoryKeyTap{100};
    static constexpr Scheduler::Duration kMemoryConfirmTimeout{2000};
    static constexpr Scheduler::Duration kPresetKeyTap{700};

    using HeightSource = std::function<float()>; // the shown height, tenths of a cm, 0 = unknown

    explicit PresetKeys(HeightSource currentHeight, QObject* parent = nullptr);

    const CurrentDeviceStore::Presets& presets() const { return m_memory; }
    int memory(int slot) const { return m_memory[std::size_t(slot)]; }
    void setPresets(const CurrentDeviceStore::Presets& presets) { m_memory = presets; }
    const QString& isMemerySet() const { return m_isMemerySet; }
    int commandTypeMemery() const { return m_commandTypeMemery; }

    // Holds the slot's preset key; an unset preset sends nothing and returns false.
    bool holdPresetKey(int slot);
    // Lets the held preset key go, once the desk has heard it: a tap must move the desk too.
    void releasePresetKey();
    // A timed tap of a preset key.
    void actionEnterMemoryKeyWithtype(int type);
    void actionSetMemoryKeyWithtype(int type);
    // The desk shows "S-": it took the memory key.
    void confirmMemoryKey();
    void actionMemoryKeySaveWithtype(int type);
    // The desk was reset and lost its presets.
    void clearPresetsAfterReset();

    // "Sit height:72.0cm" and the like, or empty for an unset preset.
    QString presetTipText(int slot) const;
    static QString presetSaveTip(int slot);
    static QString presetImageName(int slot, bool set);

signals:
    void presetsChanged();
    // A preset was recorded; the session reloads the record.
    void saved();
    void toastRequested(const QString& text);
    void heightToastRequested(const QString& text);

private:
    using Task = std::function<void(PresetKeys&)>;
    void later(Scheduler::Duration delay, Task task);
    HeldKeyOwner::Claim claim(int type);
    int directionOf(int type) const;
    void tap(int type, Scheduler::Duration length);

    HeightSource m_currentHeight;
    CurrentDeviceStore::Presets m_memory{};
    QString m_isMemerySet = QStringLiteral("0");
    int m_commandTypeMemery = command::kNoKey;
    HeldKeyOwner::Claim m_held;
};

} // namespace ostrel
