#pragma once

namespace ostrel::config {

// Opened by the error screen's help button.
inline constexpr char kSupportUrl[] = "https://ostrel.example.com/support";
// The single-instance service on the session bus; a second launch asks it to show the window.
inline constexpr char kDBusService[] = "com.ostrel.motion";
inline constexpr char kDBusPath[] = "/com/ostrel/motion";
// Also spelled out in SingleInstance's class info, which moc needs as a literal.
inline constexpr char kDBusInterface[] = "com.ostrel.motion.Application";

} // namespace ostrel::config
