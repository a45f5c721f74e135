#include "session/DeskReleaseRow.h"

#include "session/DeskSession.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

DeskReleaseRow::DeskReleaseRow(DeskSession& session, QWidget* parent)
    : QWidget(parent), m_note(new QLabel(DeskSession::releasedText(), this)),
      m_button(new QPushButton(this)) {
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_button->setFlat(true);
    m_button->setCursor(Qt::PointingHandCursor);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_note);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    connect(m_button, &QPushButton::clicked, &session, &DeskSession::toggleRelease);
    connect(&session, &DeskSession::releasedChanged, this, &DeskReleaseRow::showReleased);
    showReleased(session.isReleased());
}

void DeskReleaseRow::showReleased(bool released) {
    m_note->setVisible(released);
    m_button->setText(DeskSession::releaseActionText(released));
}

} // namespace ostrel
