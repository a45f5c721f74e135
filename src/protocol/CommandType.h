#pragma once

// The command type held in the classifier: it picks the answer to every keypad poll of the
// desk, so a key is held exactly as long as its type stays set. 5 and 6 answer with the target
// height and the tabletop thickness, the rest of 0..14 with constant frames.
namespace ostrel::command {

inline constexpr int kNoKey = 0;
inline constexpr int kUpKey = 1;
inline constexpr int kDownKey = 2;
inline constexpr int kDeviceInfoRequest = 4;
inline constexpr int kTargetHeight = 5;
inline constexpr int kTabletopThickness = 6;
inline constexpr int kSitKey = 9; // the preset keys: Sit, Stand, M1, M2
inline constexpr int kStandKey = 10;
inline constexpr int kM1Key = 11;
inline constexpr int kM2Key = 12;
inline constexpr int kMemoryKey = 13;
inline constexpr int kAnswerCount = 15;

inline constexpr int kPresetCount = kM2Key - kSitKey + 1;

// The preset key of slot 0..3 (Sit, Stand, M1, M2).
constexpr int presetKey(int slot) {
    return kSitKey + slot;
}
// The slot of a preset key, or -1 for any other type.
constexpr int presetSlot(int type) {
    return type >= kSitKey && type <= kM2Key ? type - kSitKey : -1;
}

} // namespace ostrel::command
