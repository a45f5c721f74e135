#pragma once

// The names under which subsystems meet through NotificationCenter. The texts are stored and
// compared as they stand; do not reword them.
namespace ostrel::notifications {

inline constexpr char kBluetoothConnected[] = "NOTIFICATION_NAME_BLUETOOTH_CONNECTED";
inline constexpr char kBluetoothDisconnected[] = "NOTIFICATION_NAME_BLUETOOTH_DISCONNECTED";
inline constexpr char kReconnect[] = "NOTIFICATION_NAME_RECONNECT";
inline constexpr char kGlobeBlueToothIsConnect[] = "Notification_Globe_BlueTooth_IsConnect";
inline constexpr char kDeleteCurrentDevice[] = "Notification_DeleteCurrentDevice";
inline constexpr char kMemoryKeyChange[] = "NOTIFICATION_NAME_MEMORYKEYCHANGE";
inline constexpr char kLightColorStatusChange[] = "NOTIFICATION_NAME_LIGHTCOLORSTATUSCHANGE";
inline constexpr char kUnitChange[] = "Notification_UnitChange";
inline constexpr char kSensitivityChange[] = "Notification_SensitivityChange";
inline constexpr char kTimeManagerStart[] = "Notification_TimeManager_Start";
inline constexpr char kTimeManagerStop[] = "Notification_TimeManager_Stop";
inline constexpr char kTimeManagerRunning[] = "Notification_TimeManager_Running";
inline constexpr char kGlobalKeyPushName[] = "GlobalKeyPushName";

} // namespace ostrel::notifications
