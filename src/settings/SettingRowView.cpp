#include "settings/SettingRowView.h"

#include "widgets/OMAppStyle.h"
#include "widgets/OMImage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace ostrel {

namespace {

constexpr int kIconSize = 28;
constexpr int kAccessorySize = 16;
constexpr int kMinimumHeight = 44;
const QColor kHoverBackground = QColor::fromRgbF(0.945f, 0.945f, 0.945f);
const QColor kValueColor(0x6E, 0x6E, 0x73);

// The row is the button: its labels must let the mouse through.
QLabel* passiveLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

} // namespace

SettingRowView::SettingRowView(const QString& iconName, const QString& text, QWidget* parent)
    : QAbstractButton(parent) {
    setText(text);
    setMinimumHeight(kMinimumHeight);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 4, 12, 4);
    row->setSpacing(12);
    if (!iconName.isEmpty()) {
        QLabel* icon = passiveLabel(this);
        icon->setPixmap(OMImage::pixmap(iconName).scaled(kIconSize, kIconSize, Qt::KeepAspectRatio,
                                                         Qt::SmoothTransformation));
        row->addWidget(icon);
    }
    QLabel* title = passiveLabel(this);
    title->setText(text);
    row->addWidget(title, 1);
    m_value = passiveLabel(this);
    QPalette muted = m_value->palette();
    muted.setColor(QPalette::WindowText, kValueColor);
    m_value->setPalette(muted);
    row->addWidget(m_value);
    m_accessory = passiveLabel(this);
    m_accessory->setFixedSize(kAccessorySize, kAccessorySize);
    row->addWidget(m_accessory);
}

QString SettingRowView::valueText() const {
    return m_value->text();
}

void SettingRowView::setValueText(const QString& text) {
    m_value->setText(text);
}

void SettingRowView::setAccessoryImage(const QString& name) {
    m_accessoryName = name;
    m_accessory->setPixmap(name.isEmpty() ? QPixmap()
                                          : OMImage::pixmap(name).scaled(
                                                kAccessorySize, kAccessorySize, Qt::KeepAspectRatio,
                                                Qt::SmoothTransformation));
}

void SettingRowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(kHoverBackground);
        painter.drawRoundedRect(rect(), 8, 8);
    }
    painter.setPen(palette().color(QPalette::Midlight));
    painter.drawLine(rect().bottomLeft() + QPoint(12, 0), rect().bottomRight() - QPoint(12, 0));
    OMAppStyle::drawFocusRing(painter, this, rect(), 8);
}

void SettingRowView::keyPressEvent(QKeyEvent* event) {
    if (!OMAppStyle::clickOnEnter(this, event))
        QAbstractButton::keyPressEvent(event);
}

void SettingRowView::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    update();
}

void SettingRowView::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace ostrel
