#pragma once

#include <QString>

namespace ostrel {

// "Start at login": the desktop's XDG autostart entry that starts the application hidden in the
// tray when the user logs in. The file being there is the setting; nothing else records it.
class AutostartEntry {
public:
    static constexpr char kFileName[] = "com.ostrel.motion.desktop";

    static QString filePath();
    static bool isEnabled();
    // Writes or removes the entry; false when the file system refused.
    static bool setEnabled(bool enabled);
    // The entry's text, starting `program` hidden.
    static QByteArray contents(const QString& program);
};

} // namespace ostrel
