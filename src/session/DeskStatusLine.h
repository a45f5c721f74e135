#pragma once

#include <QLabel>

namespace ostrel {

class DeskStatus;

// The control screen's line for what the desk reports beyond its height; hidden while the desk
// reports nothing.
class DeskStatusLine : public QLabel {
    Q_OBJECT
public:
    DeskStatusLine(const DeskStatus& status, QWidget* parent = nullptr);

private:
    void showStatus(const QString& text);
};

} // namespace ostrel
