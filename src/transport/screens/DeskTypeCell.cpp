#include "transport/screens/DeskTypeCell.h"

#include "transport/screens/DeskTypeTable.h"
#include "widgets/OMImage.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {

constexpr int kCellHeight = 84;
constexpr QSize kPictureSize(96, 64);
constexpr QSize kArrowSize(14, 14);

QLabel* pictureLabel(const QString& name, const QSize& box, qreal devicePixelRatio) {
    auto* label = new QLabel;
    const QSizeF natural = OMImage::naturalSize(name);
    const QSize size = natural.isEmpty() ? box : natural.scaled(box, Qt::KeepAspectRatio).toSize();
    label->setPixmap(OMImage::icon(name).pixmap(size, devicePixelRatio));
    label->setFixedSize(box);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

DeskTypeCell::DeskTypeCell(int index, QWidget* parent)
    : ClickableRow(kCellHeight, parent), m_label(DeskTypeTable::label(index)) {
    setObjectName(QString::fromLatin1(kIdentifier));
    const DeskTypeRow row = DeskTypeTable::row(index);
    const qreal ratio = devicePixelRatioF();

    auto* name = new QLabel(m_label);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    name->setFont(font);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(16);
    layout->addWidget(pictureLabel(QString::fromLatin1(row.picture), kPictureSize, ratio));
    layout->addWidget(name, 1);
    layout->addWidget(pictureLabel(QStringLiteral("connect_arrow"), kArrowSize, ratio));
}

} // namespace ostrel
