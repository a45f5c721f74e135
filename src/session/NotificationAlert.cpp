#include "session/NotificationAlert.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

QString NotificationAlert::identifier() {
    return OMWindowIdentifier::prefix() + QStringLiteral(".NotificationIdentifier");
}

NotificationAlert::NotificationAlert(QWidget* parent)
    : OMSheetWindow(parent, identifier()), m_text(new QLabel(this)),
      m_cancel(new QPushButton(this)), m_confirm(new QPushButton(tr("Confirm"), this)) {
    setFixedSize(kSize);
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    QFont font = m_text->font();
    font.setBold(true);
    m_text->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addWidget(m_text, 1);
    layout->addWidget(buttonRow(m_confirm, m_cancel));

    connect(m_confirm, &QPushButton::clicked, this, &NotificationAlert::actionConfirm);
    connect(m_cancel, &QPushButton::clicked, this, &NotificationAlert::actionCancel);
}

NotificationAlert* NotificationAlert::present(QWidget* host, bool isRepeat, Fn confirmFn,
                                              Fn cancelFn) {
    auto* alert = findOrCreate<NotificationAlert>(host, identifier());
    alert->setViewContentWithIsRepeat(isRepeat, std::move(confirmFn), std::move(cancelFn));
    alert->presentCentred();
    return alert;
}

NotificationAlert* NotificationAlert::current() {
    auto* alert = qobject_cast<NotificationAlert*>(OMWindowIdentifier::find(identifier()));
    return alert && alert->isVisible() ? alert : nullptr;
}

void NotificationAlert::dismiss() {
    if (NotificationAlert* alert = current())
        alert->hide();
}

void NotificationAlert::setViewContentWithIsRepeat(bool isRepeat, Fn confirmFn, Fn cancelFn) {
    m_cancelFn = std::move(cancelFn);
    if (isRepeat) {
        m_text->setText(tr("Whether to continue the reminder?"));
        m_cancel->setText(tr("Cancel"));
        m_confirmFn = std::move(confirmFn);
    } else {
        m_text->setText(tr("Please stand/sit for a while"));
        m_cancel->setText(tr("Now"));
        m_confirmFn = nullptr;
    }
    m_confirm->setVisible(isRepeat);
}

QString NotificationAlert::text() const {
    return m_text->text();
}

void NotificationAlert::actionConfirm() {
    if (m_confirmFn)
        m_confirmFn();
}

void NotificationAlert::actionCancel() {
    if (m_cancelFn)
        m_cancelFn();
}

} // namespace ostrel
