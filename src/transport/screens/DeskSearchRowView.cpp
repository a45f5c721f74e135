#include "transport/screens/DeskSearchRowView.h"

#include "transport/screens/ScreenPicture.h"
#include "widgets/OMRotatingImage.h"
#include "widgets/OMVerticalCenterLabel.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {
constexpr int kRowHeight = 52;
constexpr QSize kIconSize(24, 24);
} // namespace

DeskSearchRowView::DeskSearchRowView(QWidget* parent)
    : ClickableRow(kRowHeight, parent), m_labelDeskName(new OMVerticalCenterLabel),
      m_labelPairing(new QLabel),
      m_indicator(new OMRotatingImage(QStringLiteral("connect_refresh"))) {
    setObjectName(QString::fromLatin1(kIdentifier));

    m_labelPairing->setText(tr("Pairing"));
    m_labelPairing->setStyleSheet(QStringLiteral("color: #8a8f98;"));
    m_indicator->setFixedSize(18, 18);
    // The indicator shows progress only; a click on it belongs to the row.
    m_indicator->setAttribute(Qt::WA_TransparentForMouseEvents);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(12);
    layout->addWidget(screenPicture(QStringLiteral("connect_bluetoothicon"), kIconSize));
    layout->addWidget(m_labelDeskName, 1);
    layout->addWidget(m_labelPairing);
    layout->addWidget(m_indicator);
    hiddenConnect();
}

void DeskSearchRowView::setRowContentWithTitle(const QString& title) {
    m_labelDeskName->setText(title);
}

QString DeskSearchRowView::title() const {
    return m_labelDeskName->text();
}

void DeskSearchRowView::showConnect() {
    m_labelPairing->show();
    m_indicator->show();
    m_indicator->startRotating();
}

void DeskSearchRowView::hiddenConnect() {
    m_labelPairing->hide();
    m_indicator->hide();
    m_indicator->stopRotating();
}

bool DeskSearchRowView::isConnectShown() const {
    return m_indicator->isRotating();
}

} // namespace ostrel
