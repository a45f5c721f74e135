#include "session/ActivityFeed.h"

#include "session/ActivityRecorder.h"
#include "session/DeskLink.h"
#include "session/DeskSession.h"
#include "session/LiveSession.h"
#include "session/PresetKeys.h"

namespace ostrel {

ActivityFeed::ActivityFeed(ActivityRecorder& recorder, QObject* parent)
    : QObject(parent), m_recorder(recorder) {
    LiveSession& live = LiveSession::instance();
    connect(&live, &LiveSession::currentChanged, this, &ActivityFeed::follow);
    follow(live.current());
}

void ActivityFeed::follow(DeskSession* session) {
    for (const QMetaObject::Connection& connection : m_followed)
        disconnect(connection);
    m_followed.clear();
    m_session = session;
    if (!session) {
        m_recorder.setDesk({});
        return;
    }
    m_followed = {
        connect(session, &DeskSession::deskLinkChanged, &m_recorder, &ActivityRecorder::setDesk),
        connect(session, &DeskSession::heightReported, &m_recorder, &ActivityRecorder::setHeight),
        connect(&session->presetKeys(), &PresetKeys::presetsChanged, this,
                &ActivityFeed::presetsChanged),
    };
    m_recorder.setDesk(session->isConnected() ? session->link().blutoothName() : QString());
    presetsChanged();
}

void ActivityFeed::presetsChanged() {
    if (m_session)
        m_recorder.setPresets(m_session->presetKeys().memory(0), m_session->presetKeys().memory(1));
}

} // namespace ostrel
