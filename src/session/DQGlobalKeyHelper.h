#pragma once

#include "platform/GlobalKeyBackend.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <string>

namespace ostrel {

// The registry of the desk's global hot keys: the arrows and the digits 1-4 with one modifier
// combination, taken from the desktop through the platform's key backend. A press posts
// "GlobalKeyPushName" with the key's name ("GlobalKeyUp", "GlobalKeyOne", ...); the desk
// session turns that into key commands.
class DQGlobalKeyHelper : public QObject {
    Q_OBJECT
public:
    // One registry for the process.
    static DQGlobalKeyHelper& shareInstance();

    // Drops the keys held so far, then takes them with the combination (0 Shift,
    // 1 Ctrl + Super, 2 Alt + Super).
    void addDeskGlobalHotKeyWithCombineKeyType(int type);
    void removeDeskGlobalHotKey();
    // Adds with the stored combination when the stored switch is on, else does nothing.
    void actionAddGlobalKey();

    // "1" (Alt + Cmd) gives 2, "2" (Ctrl + Cmd) gives 1, anything else 0 (Shift).
    static int combineKeyType(const std::string& combinationkey);
    // The name posted for a key identifier, empty for an identifier that is none of the keys.
    static QString nameForId(int id);

    bool isAvailable() const;
    bool isRegistered() const { return m_registered; }
    // Identifiers of the keys another application holds, from the last registration.
    const QList<int>& unavailableKeys() const { return m_unavailable; }

signals:
    // Keys were taken or let go.
    void registrationChanged();

private:
    DQGlobalKeyHelper() = default;
    void keyPressed(int id);

    // The backend the keys were taken from, so that they are let go there.
    QPointer<GlobalKeyBackend> m_grabbed;
    bool m_registered = false;
    QList<int> m_unavailable;
};

} // namespace ostrel
