#pragma once

#include "platform/Autostart.h"

#include <QString>

namespace ostrel {

// "Start at login" as the desktop's XDG autostart entry. The file being there is the setting;
// nothing else records it.
class AutostartEntry : public Autostart {
public:
    static constexpr char kFileName[] = "com.ostrel.motion.desktop";

    static QString filePath();
    bool isEnabled() const override;
    // Writes or removes the entry; false when the file system refused.
    bool setEnabled(bool enabled) override;
    // The entry's text, starting `program` hidden.
    static QByteArray contents(const QString& program);
};

} // namespace ostrel
