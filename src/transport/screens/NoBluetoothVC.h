#pragma once

#include <QWidget>

class QPushButton;

namespace ostrel {

// Shown instead of the search screen while the radio is off. "Pair" checks again: with the
// radio on the search screen takes over, otherwise a tip repeats what to do.
class NoBluetoothVC : public QWidget {
    Q_OBJECT
public:
    explicit NoBluetoothVC(QWidget* parent = nullptr);

    static QString noBluetoothText();
    QPushButton* pairButton() const { return m_buttonPair; }
    void actionPair();

private:
    QPushButton* m_buttonPair;
};

} // namespace ostrel
