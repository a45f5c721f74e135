#include "transport/screens/DeskTypeVC.h"

#include "store/CurrentDeskModel.h"
#include "transport/screens/ClickableRowList.h"
#include "transport/screens/DeskTypeCell.h"
#include "transport/screens/DeskTypeTable.h"
#include "transport/screens/HomeNavigator.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

DeskTypeVC::DeskTypeVC(QWidget* parent)
    : QWidget(parent), m_buttonBack(new QPushButton(tr("Back"))) {
    m_buttonBack->setFlat(true);
    connect(m_buttonBack, &QPushButton::clicked, this, &DeskTypeVC::actionPushToSearchVC);
    auto* list = new ClickableRowList;
    for (int index = 0; index < DeskTypeTable::kRowCount; ++index) {
        auto* cell = new DeskTypeCell(index);
        connect(cell, &DeskTypeCell::clicked, this, [this, index] { actionSelectRow(index); });
        list->addRow(cell);
        m_cells.append(cell);
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->addWidget(m_buttonBack, 0, Qt::AlignLeft);
    layout->addWidget(list);
}

void DeskTypeVC::actionSelectRow(int row) {
    CurrentDeskModel::setName(QString::fromLatin1(DeskTypeTable::row(row).foldName));
    actionPushToSearchVC();
}

void DeskTypeVC::actionPushToSearchVC() {
    // This screen is replaced by what follows, so not from inside its own click.
    HomeNavigator::later(this, &HomeNavigator::actionPushToSearchVC);
}

} // namespace ostrel
