#include "transport/screens/DeskTypeVC.h"

#include "store/CurrentDeskModel.h"
#include "transport/screens/DeskTypeCell.h"
#include "transport/screens/DeskTypeTable.h"
#include "transport/screens/HomeNavigator.h"

#include <QScrollArea>
#include <QVBoxLayout>

namespace ostrel {

DeskTypeVC::DeskTypeVC(QWidget* parent) : QWidget(parent) {
    auto* list = new QWidget;
    auto* rows = new QVBoxLayout(list);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    for (int index = 0; index < DeskTypeTable::kRowCount; ++index) {
        auto* cell = new DeskTypeCell(index);
        connect(cell, &DeskTypeCell::clicked, this, [this, index] { actionSelectRow(index); });
        rows->addWidget(cell);
        m_cells.append(cell);
    }
    rows->addStretch(1);

    auto* scroll = new QScrollArea;
    scroll->setWidget(list);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->addWidget(scroll);
}

void DeskTypeVC::actionSelectRow(int row) {
    CurrentDeskModel::setName(QString::fromLatin1(DeskTypeTable::row(row).foldName));
    // This screen is replaced by what follows, so not from inside its own click.
    HomeNavigator::later(this, &HomeNavigator::actionPushToSearchVC);
}

} // namespace ostrel
