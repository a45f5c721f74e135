#include "transport/screens/DeskTypeCell.h"

#include "store/CurrentDeskModel.h"
#include "transport/screens/DeskTypeTable.h"
#include "transport/screens/ScreenPicture.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {

constexpr int kCellHeight = 84;
constexpr QSize kPictureSize(96, 64);
constexpr QSize kArrowSize(14, 14);

} // namespace

DeskTypeCell::DeskTypeCell(int index, QWidget* parent)
    : ClickableRow(kCellHeight, parent), m_label(DeskTypeTable::label(index)) {
    setObjectName(QString::fromLatin1(kIdentifier));
    const DeskTypeRow row = DeskTypeTable::row(index);

    auto* name = new QLabel(m_label);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    name->setFont(font);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(16);
    layout->addWidget(screenPicture(QString::fromLatin1(row.picture), kPictureSize));
    layout->addWidget(name, 1);
    if (CurrentDeskModel::name() == QLatin1String(row.foldName)) {
        auto* inUse = new QLabel(QStringLiteral("✓ ") + tr("In use"));
        inUse->setStyleSheet(QStringLiteral("color: #2F80ED; font-weight: bold;"));
        layout->addWidget(inUse);
    }
    layout->addWidget(screenPicture(QStringLiteral("connect_arrow"), kArrowSize));
}

} // namespace ostrel
