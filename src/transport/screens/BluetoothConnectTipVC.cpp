#include "transport/screens/BluetoothConnectTipVC.h"

#include "widgets/OMWindowIdentifier.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

QString BluetoothConnectTipVC::windowIdentifier() {
    return OMWindowIdentifier::prefix() + QStringLiteral(".BluetoothConnectTipWindowIdentifier");
}

BluetoothConnectTipVC* BluetoothConnectTipVC::find() {
    return qobject_cast<BluetoothConnectTipVC*>(OMWindowIdentifier::find(windowIdentifier()));
}

BluetoothConnectTipVC* BluetoothConnectTipVC::showForDesk(QWidget* owner, const QString& deskName) {
    BluetoothConnectTipVC* tip = find();
    if (!tip)
        tip = new BluetoothConnectTipVC(owner);
    tip->setDeskName(deskName);
    tip->show();
    tip->raise();
    tip->activateWindow();
    return tip;
}

BluetoothConnectTipVC::BluetoothConnectTipVC(QWidget* owner)
    : QWidget(owner, Qt::Dialog | Qt::FramelessWindowHint), m_labelMessage(new QLabel),
      m_buttonPair(new QPushButton(tr("Pair"))) {
    OMWindowIdentifier::assign(this, windowIdentifier());
    setAttribute(Qt::WA_DeleteOnClose);
    setAutoFillBackground(true);
    setWindowModality(Qt::WindowModal);
    setFixedWidth(300);

    m_labelMessage->setWordWrap(true);
    m_labelMessage->setAlignment(Qt::AlignCenter);
    m_buttonPair->setDefault(true);
    m_buttonPair->setMinimumWidth(120);
    connect(m_buttonPair, &QPushButton::clicked, this, [this] {
        emit pairClicked();
        close();
    });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 28, 24, 20);
    layout->setSpacing(20);
    layout->addWidget(m_labelMessage);
    layout->addWidget(m_buttonPair, 0, Qt::AlignHCenter);
}

void BluetoothConnectTipVC::setDeskName(const QString& deskName) {
    // "%@" is the placeholder the translations carry.
    m_labelMessage->setText(tr("Cannot pair with 【%@】").replace(QStringLiteral("%@"), deskName));
    adjustSize();
}

QString BluetoothConnectTipVC::message() const {
    return m_labelMessage->text();
}

void BluetoothConnectTipVC::mousePressEvent(QMouseEvent* event) {
    m_dragOffset = event->globalPosition().toPoint() - frameGeometry().topLeft();
    QWidget::mousePressEvent(event);
}

void BluetoothConnectTipVC::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        move(event->globalPosition().toPoint() - m_dragOffset);
    QWidget::mouseMoveEvent(event);
}

void BluetoothConnectTipVC::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(QColor(0xC8, 0xCC, 0xD2));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace ostrel
