#include "session/PresetKeys.h"

#include "session/DeskHeightDisplay.h"

#include <algorithm>

namespace ostrel {

namespace {

struct PresetText {
    const char* image;     // picture name stem, "_set" / "_unset" appended
    const char* saveTip;   // what the save sheet asks about
    const char* tipCm;     // the hover tip, centimetres
    const char* tipInches; // the hover tip, inches
};

constexpr PresetText kPresets[PresetKeys::kPresetCount] = {
    {"control_sit", QT_TRANSLATE_NOOP("ostrel::PresetKeys", "the sitting height"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "Sit height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "Sit height:%.1fin")},
    {"control_stand", QT_TRANSLATE_NOOP("ostrel::PresetKeys", "the standing height"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "Stand height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "Stand height:%.1fin")},
    {"control_M1", QT_TRANSLATE_NOOP("ostrel::PresetKeys", "the M1 height"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "M1 height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "M1 height:%.1fin")},
    {"control_M2", QT_TRANSLATE_NOOP("ostrel::PresetKeys", "the M2 height"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "M2 height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::PresetKeys", "M2 height:%.1fin")},
};

} // namespace

PresetKeys::PresetKeys(HeightSource currentHeight, QObject* parent)
    : QObject(parent), m_currentHeight(std::move(currentHeight)) {}

void PresetKeys::later(Scheduler::Duration delay, Task task) {
    Scheduler::instance().after(delay, this, [this, task = std::move(task)] { task(*this); });
}

HeldKeyOwner::Claim PresetKeys::claim(int type) {
    return HeldKeyOwner::instance().claim(HeldKeyOwner::Source::PresetKeys, type, this, {},
                                          directionOf(type));
}

// Where a preset key sends the desk from the shown height; 0 for other keys and unset presets.
int PresetKeys::directionOf(int type) const {
    const int slot = command::presetSlot(type);
    if (slot < 0 || memory(slot) < 1)
        return 0;
    return double(memory(slot)) * 10.0 > double(m_currentHeight()) ? 1 : -1;
}

// A timed key tap: the claim ends by itself, or sooner when another source takes the key.
void PresetKeys::tap(int type, Scheduler::Duration length) {
    const HeldKeyOwner::Claim tapped = claim(type);
    later(length, [tapped](PresetKeys&) { tapped.release(); });
}

bool PresetKeys::holdPresetKey(int slot) {
    if (memory(slot) < 1) {
        emit heightToastRequested(tr("Height presets not set"));
        return false;
    }
    m_held = claim(command::presetKey(slot));
    return true;
}

void PresetKeys::releasePresetKey() {
    m_held.releaseWhenHeard();
}

void PresetKeys::actionEnterMemoryKeyWithtype(int type) {
    tap(type, kPresetKeyTap);
}

void PresetKeys::actionSetMemoryKeyWithtype(int type) {
    m_isMemerySet = QStringLiteral("0");
    m_commandTypeMemery = type;
    tap(command::kMemoryKey, kMemoryKeyTap);
    later(kMemoryConfirmTimeout, [](PresetKeys& self) {
        if (self.m_isMemerySet == u"0")
            emit self.toastRequested(tr("Setting failed"));
    });
}

void PresetKeys::confirmMemoryKey() {
    // Only the first confirmation of a request counts; an "S-" from the desk's own keypad,
    // with no request from here, must not overwrite the recorded presets.
    if (m_isMemerySet != u"0" || m_commandTypeMemery == command::kNoKey)
        return;
    m_isMemerySet = QStringLiteral("1");
    tap(m_commandTypeMemery, kMemoryKeyTap);
    later(kMemoryKeyTap, [](PresetKeys& self) {
        emit self.toastRequested(tr("Setting successful"));
        self.actionMemoryKeySaveWithtype(self.m_commandTypeMemery);
    });
}

void PresetKeys::actionMemoryKeySaveWithtype(int type) {
    const float height = m_currentHeight();
    if (height == 0.0f)
        return;
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.memoryHeight =
        CurrentDeviceStore::presetsText(m_memory, command::presetSlot(type), height);
    CurrentDeviceStore::save(record);
    emit saved();
}

void PresetKeys::clearPresetsAfterReset() {
    if (std::none_of(m_memory.begin(), m_memory.end(), [](int preset) { return preset >= 1; }))
        return;
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.memoryHeight = std::string(CurrentDeviceStore::kNoPresets);
    CurrentDeviceStore::save(record);
    m_memory = {};
    later(Scheduler::Duration::zero(), [](PresetKeys& self) { emit self.presetsChanged(); });
}

QString PresetKeys::presetTipText(int slot) const {
    const int preset = memory(slot);
    if (preset == 0)
        return {};
    const PresetText& texts = kPresets[slot];
    if (DeskHeightDisplay::usesInches())
        return QString::asprintf(qPrintable(tr(texts.tipInches)),
                                 double(preset) / DeskHeightDisplay::kCmPerInch);
    return QString::asprintf(qPrintable(tr(texts.tipCm)), double(preset));
}

QString PresetKeys::presetSaveTip(int slot) {
    return tr(kPresets[slot].saveTip);
}

QString PresetKeys::presetImageName(int slot, bool set) {
    return QString::fromLatin1(kPresets[slot].image) +
           (set ? QStringLiteral("_set") : QStringLiteral("_unset"));
}

} // namespace ostrel
