#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace ostrel {

// Shown instead of the search screen while the radio is off. "Pair" checks again: with the
// radio on the search screen takes over, otherwise a tip repeats what to do. When the system's
// Bluetooth service is not running or refuses this user, the screen says that and how to fix it
// instead, since turning the radio on would not help.
class NoBluetoothVC : public QWidget {
    Q_OBJECT
public:
    explicit NoBluetoothVC(QWidget* parent = nullptr);

    static QString noBluetoothText();
    // What to tell the user about the radio or the Bluetooth service right now.
    static QString explanation();
    QString shownText() const;
    QPushButton* pairButton() const { return m_buttonPair; }
    void actionPair();

private:
    QLabel* m_text;
    QPushButton* m_buttonPair;
};

} // namespace ostrel
