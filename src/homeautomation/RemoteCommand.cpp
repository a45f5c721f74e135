#include "homeautomation/RemoteCommand.h"

#include "session/DeskSession.h"
#include "session/PresetKeys.h"

#include <QCoreApplication>
#include <cmath>

namespace ostrel {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("ostrel::RemoteCommand", text);
}

} // namespace

RemoteCommand::Outcome RemoteCommand::run(const Context& context,
                                          const DeskEntities::Command& command,
                                          const QByteArray& payload) {
    if (command.button == DeskEntities::Button::Stop) {
        if (context.session)
            context.session->stopMoving();
        return {true, {}};
    }
    if (!context.controlAllowed)
        return refused(tr("Control from Home Assistant is not allowed."));
    if (!context.session || !context.session->isConnected() || command.deskId != context.liveDeskId)
        return refused(tr("The desk is not connected."));
    if (command.button)
        return recallPreset(*context.session, int(*command.button));

    bool ok = false;
    const double cm =
        payload.size() <= kLongestPayload ? payload.trimmed().toDouble(&ok) : std::nan("");
    if (!ok || !std::isfinite(cm))
        return refused(tr("The target height is not a number."));
    return moveTo(*context.session, cm);
}

RemoteCommand::Outcome RemoteCommand::recallPreset(DeskSession& session, int slot) {
    const int cm = session.presetKeys().memory(slot);
    if (cm < 1)
        return refused(tr("The preset is not set."));
    return moveTo(session, cm);
}

RemoteCommand::Outcome RemoteCommand::moveTo(DeskSession& session, double cm) {
    const GoToHeight::Limits limits = session.limits();
    const long tenths = std::lround(cm * 10);
    // Checked here as well, so a far-off number never reaches an int.
    const GoToHeight::Refusal refusal = tenths < limits.minHeight || tenths > limits.maxHeight
                                            ? GoToHeight::Refusal::OutOfRange
                                            : session.moveTo(int(tenths));
    if (refusal == GoToHeight::Refusal::None)
        return {true, {}};
    return refused(GoToHeight::refusalText(refusal, limits, false));
}

} // namespace ostrel
