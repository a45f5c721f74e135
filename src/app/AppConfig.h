#pragma once

namespace ostrel::config {

// The single-instance service on the session bus; a second launch asks it to show the window.
inline constexpr char kDBusService[] = "com.ostrel.motion";
inline constexpr char kDBusPath[] = "/com/ostrel/motion";
// Also spelled out in SingleInstance's class info, which moc needs as a literal.
inline constexpr char kDBusInterface[] = "com.ostrel.motion.Application";
// The desk for scripts, under the same name; versioned, so a changed interface gets a new name.
// Also spelled out in DeskBusAdaptor's class info.
inline constexpr char kDeskPath[] = "/com/ostrel/Motion";
inline constexpr char kDeskInterface[] = "com.ostrel.Motion.Desk1";
inline constexpr char kNotConnectedError[] = "com.ostrel.Motion.Error.NotConnected";
inline constexpr char kHeightUnknownError[] = "com.ostrel.Motion.Error.HeightUnknown";
inline constexpr char kPresetNotSetError[] = "com.ostrel.Motion.Error.PresetNotSet";

} // namespace ostrel::config
