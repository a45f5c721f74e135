#include "platform/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace ostrel {

QString AutostartEntry::filePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/autostart/") + QLatin1String(kFileName);
}

bool AutostartEntry::isEnabled() const {
    return QFile::exists(filePath());
}

QByteArray AutostartEntry::contents(const QString& program) {
    // Quoted, so a path with spaces stays one argument; the desktop entry format escapes '"',
    // '`', '$' and '\' inside quotes.
    QString quoted = program;
    for (const char special : {'\\', '"', '`', '$'})
        quoted.replace(QLatin1Char(special), QStringLiteral("\\") + QLatin1Char(special));
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=Ostrel Motion\n"
                          "Comment=Start Ostrel Motion in the tray\n"
                          "Exec=\"%1\" --hidden\n"
                          "Icon=com.ostrel.motion\n"
                          "Terminal=false\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(quoted)
        .toUtf8();
}

bool AutostartEntry::setEnabled(bool enabled) {
    const QString path = filePath();
    if (!enabled)
        return !QFile::exists(path) || QFile::remove(path);
    if (!QDir().mkpath(QFileInfo(path).path()))
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(contents(QCoreApplication::applicationFilePath()));
    return file.commit();
}

} // namespace ostrel
