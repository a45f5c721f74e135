#include "session/DeskReleaseRow.h"

#include "session/DeskRelease.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace ostrel {

DeskReleaseRow::DeskReleaseRow(DeskRelease& release, QWidget* parent)
    : QWidget(parent), m_note(new QLabel(DeskRelease::releasedText(), this)),
      m_button(new QPushButton(this)) {
    m_button->setFlat(true);
    m_button->setCursor(Qt::PointingHandCursor);
    // One line beside the action: the screen needs no more height while released.
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch();
    layout->addWidget(m_note);
    layout->addWidget(m_button);
    layout->addStretch();
    connect(m_button, &QPushButton::clicked, &release, &DeskRelease::toggle);
    connect(&release, &DeskRelease::releasedChanged, this, &DeskReleaseRow::showReleased);
    showReleased(release.isReleased());
}

void DeskReleaseRow::showReleased(bool released) {
    m_note->setVisible(released);
    m_button->setText(DeskRelease::actionText(released));
    m_button->setToolTip(released ? QString() : DeskRelease::releaseHint());
}

} // namespace ostrel
