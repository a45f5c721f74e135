#pragma once

#include "homeautomation/DeskEntities.h"

#include <QByteArray>
#include <QString>

namespace ostrel {

class DeskSession;

// A command from Home Assistant, carried out through the same moves as a script's: the session's
// move to a height (with its watchdogs and stops) for the number and the preset buttons, and the
// session's stop. Whatever cannot be carried out is refused with a reason, and nothing is held.
class RemoteCommand {
public:
    // Longer than any height anyone types: the rest of such a payload is not read.
    static constexpr qsizetype kLongestPayload = 16;

    struct Outcome {
        bool accepted = false;
        QString reason; // why it was refused
    };

    struct Context {
        DeskSession* session = nullptr; // the connected desk's session, if any
        QString liveDeskId;             // its entities' id
        bool controlAllowed = false;
    };

    // Stop is always obeyed, whichever desk it names and whatever the switch says.
    static Outcome run(const Context& context, const DeskEntities::Command& command,
                       const QByteArray& payload);

private:
    static Outcome moveTo(DeskSession& session, double cm);
    static Outcome recallPreset(DeskSession& session, int slot);
    static Outcome refused(const QString& reason) { return {false, reason}; }
};

} // namespace ostrel
