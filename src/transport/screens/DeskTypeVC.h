#pragma once

#include <QList>
#include <QWidget>

namespace ostrel {

class DeskTypeCell;

// The desk model picker. The model chosen names the bound-device list and the desk picture;
// then the user goes on to search (or to the no-Bluetooth screen with the radio off).
class DeskTypeVC : public QWidget {
    Q_OBJECT
public:
    explicit DeskTypeVC(QWidget* parent = nullptr);

    const QList<DeskTypeCell*>& cells() const { return m_cells; }
    void actionSelectRow(int row);

private:
    QList<DeskTypeCell*> m_cells;
};

} // namespace ostrel
