#include "transport/screens/NoBluetoothVC.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/HomeNavigator.h"
#include "transport/screens/ScreenPicture.h"
#include "widgets/OMAlert.h"
#include "widgets/OMScreenRouter.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {
constexpr QSize kPictureSize(220, 150);
} // namespace

QString NoBluetoothVC::noBluetoothText() {
    return tr("No Bluetooth connection, please turn on your device's Bluetooth to establish a "
              "connection");
}

NoBluetoothVC::NoBluetoothVC(QWidget* parent)
    : QWidget(parent), m_buttonPair(new QPushButton(tr("Pair"))) {

    auto* text = new QLabel(noBluetoothText());
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignCenter);

    m_buttonPair->setMinimumWidth(160);
    m_buttonPair->setDefault(true);
    connect(m_buttonPair, &QPushButton::clicked, this, &NoBluetoothVC::actionPair);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(40, 32, 40, 40);
    layout->setSpacing(24);
    layout->addStretch(1);
    layout->addWidget(screenPicture(QStringLiteral("color_desk"), kPictureSize), 0,
                      Qt::AlignHCenter);
    layout->addWidget(text);
    layout->addWidget(m_buttonPair, 0, Qt::AlignHCenter);
    layout->addStretch(1);
}

void NoBluetoothVC::actionPair() {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kDeleteCurrentDevice));
    if (RBBluetoothManager::sharedInstance().blueToothIsOpen()) {
        HomeNavigator::later(
            this, [] { HomeNavigator::show(QString::fromLatin1(screens::kBluetoothSearch)); });
        return;
    }
    OMAlert::show(this, OMAlertContent{tr("Tip"), noBluetoothText(), {tr("OK")}});
}

} // namespace ostrel
