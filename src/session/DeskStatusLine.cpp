#include "session/DeskStatusLine.h"

#include "session/DeskStatus.h"

namespace ostrel {

DeskStatusLine::DeskStatusLine(const DeskStatus& status, QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setStyleSheet(QStringLiteral("color: #C0392B;"));
    showStatus(status.text());
    connect(&status, &DeskStatus::statusChanged, this, &DeskStatusLine::showStatus);
}

void DeskStatusLine::showStatus(const QString& text) {
    setText(text);
    setVisible(!text.isEmpty());
}

} // namespace ostrel
