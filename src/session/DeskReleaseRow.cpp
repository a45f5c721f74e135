#include "session/DeskReleaseRow.h"

#include "session/DeskRelease.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

DeskReleaseRow::DeskReleaseRow(DeskRelease& release, QWidget* parent)
    : QWidget(parent), m_note(new QLabel(DeskRelease::releasedText(), this)),
      m_button(new QPushButton(this)) {
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_button->setFlat(true);
    m_button->setCursor(Qt::PointingHandCursor);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_note);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    connect(m_button, &QPushButton::clicked, &release, &DeskRelease::toggle);
    connect(&release, &DeskRelease::releasedChanged, this, &DeskReleaseRow::showReleased);
    showReleased(release.isReleased());
}

void DeskReleaseRow::showReleased(bool released) {
    m_note->setVisible(released);
    m_button->setText(DeskRelease::actionText(released));
}

} // namespace ostrel
