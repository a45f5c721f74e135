#include "app/TrayDeskMenu.h"

#include "session/DeskHeightDisplay.h"
#include "session/DeskLink.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "session/GoToHeight.h"
#include "session/LiveSession.h"
#include "session/PresetKeys.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace ostrel {

TrayDeskMenu::TrayDeskMenu(QSystemTrayIcon* icon, QMenu* menu, QObject* parent)
    : QObject(parent), m_icon(icon) {
    QAction* first = menu->actions().value(0);
    m_height = new QAction(menu);
    m_height->setEnabled(false);
    menu->insertAction(first, m_height);
    for (int slot = 0; slot < kPresetCount; ++slot) {
        QAction* preset = new QAction(menu);
        connect(preset, &QAction::triggered, this, [this, slot] { recall(slot); });
        menu->insertAction(first, preset);
        m_presets[std::size_t(slot)] = preset;
    }
    m_stop = new QAction(tr("Stop"), menu);
    connect(m_stop, &QAction::triggered, this, &TrayDeskMenu::stop);
    menu->insertAction(first, m_stop);
    m_release = new QAction(menu);
    connect(m_release, &QAction::triggered, this, &TrayDeskMenu::toggleRelease);
    menu->insertAction(first, m_release);
    menu->insertSeparator(first);

    LiveSession& live = LiveSession::instance();
    connect(&live, &LiveSession::currentChanged, this, &TrayDeskMenu::follow);
    follow(live.current());
}

void TrayDeskMenu::follow(DeskSession* session) {
    for (const QMetaObject::Connection& connection : m_followed)
        disconnect(connection);
    m_followed.clear();
    m_session = session;
    m_heightText.clear();
    if (session) {
        const auto refreshing = [this] { refresh(); };
        m_followed = {
            connect(session, &DeskSession::heightShown, this, &TrayDeskMenu::heightShown),
            connect(session, &DeskSession::breakTipRequested, this, refreshing),
            connect(&session->link(), &DeskLink::linked, this, refreshing),
            connect(&session->link(), &DeskLink::linkStarting, this, refreshing),
            connect(&session->presetKeys(), &PresetKeys::presetsChanged, this, refreshing),
            connect(&session->release(), &DeskRelease::releasedChanged, this, refreshing),
        };
    }
    refresh();
}

bool TrayDeskMenu::connected() const {
    return m_session && m_session->isConnected();
}

QString TrayDeskMenu::toolTip() const {
    const QString title = QStringLiteral("Ostrel Motion");
    if (!connected())
        return title + QLatin1Char('\n') + notLinkedText();
    const QString name = m_session->link().blutoothName();
    if (m_heightText.isEmpty())
        return title + QLatin1Char('\n') + name;
    return title + QLatin1Char('\n') + name + QStringLiteral(": ") + m_heightText;
}

void TrayDeskMenu::refresh() {
    const bool linked = connected();
    const bool heightKnown = linked && !m_heightText.isEmpty();
    if (heightKnown) {
        m_height->setText(tr("Height: %1").arg(m_heightText));
    } else {
        m_height->setText(linked ? tr("Height not yet known") : notLinkedText());
    }
    for (int slot = 0; slot < kPresetCount; ++slot) {
        QAction* preset = m_presets[std::size_t(slot)];
        const bool set = m_session && m_session->presetKeys().memory(slot) >= 1;
        preset->setVisible(set);
        preset->setEnabled(linked);
        if (set)
            preset->setText(m_session->presetKeys().presetTipText(slot));
    }
    m_stop->setEnabled(linked);
    const bool released = m_session && m_session->isReleased();
    m_release->setText(DeskRelease::actionText(released));
    m_release->setEnabled(m_session != nullptr);
    m_icon->setToolTip(toolTip());
}

void TrayDeskMenu::heightShown(const QString& text) {
    m_heightText = text;
    refresh();
}

void TrayDeskMenu::recall(int slot) {
    if (!connected())
        return;
    const int cm = m_session->presetKeys().memory(slot);
    const GoToHeight::Refusal refusal = m_session->moveTo(cm * 10);
    if (refusal != GoToHeight::Refusal::None)
        m_icon->showMessage(
            QStringLiteral("Ostrel Motion"),
            GoToHeight::refusalText(refusal, m_session->limits(), DeskHeightDisplay::usesInches()));
}

void TrayDeskMenu::stop() {
    if (connected())
        m_session->stopMoving();
}

void TrayDeskMenu::toggleRelease() {
    if (m_session)
        m_session->release().toggle();
}

QString TrayDeskMenu::notLinkedText() const {
    return m_session && m_session->isReleased() ? tr("Desk released") : tr("No desk connected");
}

} // namespace ostrel
