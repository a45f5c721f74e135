#include "transport/screens/NoBluetoothVC.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "transport/BluetoothTool.h"
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

QString NoBluetoothVC::explanation() {
    switch (RBBluetoothManager::sharedInstance().bluetoothTool().centerManager().stackProblem()) {
    case PlatformCentral::StackNotRunning:
        return tr("The system's Bluetooth service (BlueZ) is not running. Install the "
                  "\"bluez\" package and start it with \"sudo systemctl enable --now "
                  "bluetooth\", then press Pair.");
    case PlatformCentral::StackRefusesUser:
        return tr("The system's Bluetooth service refuses this user. Add yourself to the "
                  "\"bluetooth\" group with \"sudo usermod -aG bluetooth $USER\", log out and "
                  "back in, then press Pair.");
    default:
        return noBluetoothText();
    }
}

NoBluetoothVC::NoBluetoothVC(QWidget* parent)
    : QWidget(parent), m_text(new QLabel(explanation())),
      m_buttonPair(new QPushButton(tr("Pair"))) {
    m_text->setWordWrap(true);
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse); // the commands can be copied

    m_buttonPair->setMinimumWidth(160);
    m_buttonPair->setDefault(true);
    connect(m_buttonPair, &QPushButton::clicked, this, &NoBluetoothVC::actionPair);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(40, 32, 40, 40);
    layout->setSpacing(24);
    layout->addStretch(1);
    layout->addWidget(screenPicture(QStringLiteral("color_desk"), kPictureSize), 0,
                      Qt::AlignHCenter);
    layout->addWidget(m_text);
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
    m_text->setText(explanation());
    OMAlert::show(this, OMAlertContent{tr("Tip"), m_text->text(), {tr("OK")}});
}

QString NoBluetoothVC::shownText() const {
    return m_text->text();
}

} // namespace ostrel
