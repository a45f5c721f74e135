#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace ostrel {

class DeskRelease;

// The control screen's "Release desk", which lets go of the desk so that a phone or another
// computer can link it, and "Connect desk", which links it again; while released a line says so.
class DeskReleaseRow : public QWidget {
    Q_OBJECT
public:
    explicit DeskReleaseRow(DeskRelease& release, QWidget* parent = nullptr);

    QPushButton* button() const { return m_button; }
    QLabel* note() const { return m_note; }

private:
    void showReleased(bool released);

    QLabel* m_note;
    QPushButton* m_button;
};

} // namespace ostrel
