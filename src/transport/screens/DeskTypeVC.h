#pragma once

#include <QList>
#include <QWidget>

class QPushButton;

namespace ostrel {

class DeskTypeCell;

// The desk model picker. The model chosen names the bound-device list and the desk picture;
// then the user goes on to search (or to the no-Bluetooth screen with the radio off). Back goes
// the same way and keeps the model.
class DeskTypeVC : public QWidget {
    Q_OBJECT
public:
    explicit DeskTypeVC(QWidget* parent = nullptr);

    const QList<DeskTypeCell*>& cells() const { return m_cells; }
    QPushButton* backButton() const { return m_buttonBack; }
    void actionSelectRow(int row);

private:
    void actionPushToSearchVC();

    QList<DeskTypeCell*> m_cells;
    QPushButton* m_buttonBack;
};

} // namespace ostrel
