#include "transport/screens/ClickableRowList.h"

#include "transport/screens/ClickableRow.h"

#include <QVBoxLayout>

namespace ostrel {

ClickableRowList::ClickableRowList(QWidget* parent) : QScrollArea(parent) {
    auto* content = new QWidget;
    m_rows = new QVBoxLayout(content);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(0);
    m_rows->addStretch(1);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void ClickableRowList::addRow(ClickableRow* row) {
    addHeading(row);
}

void ClickableRowList::addHeading(QWidget* heading) {
    // Above the stretch that keeps the rows at the top.
    m_rows->insertWidget(m_rows->count() - 1, heading);
}

} // namespace ostrel
