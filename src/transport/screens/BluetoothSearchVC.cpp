#include "transport/screens/BluetoothSearchVC.h"

#include "store/CurrentDeviceStore.h"
#include "store/RememberedDesk.h"
#include "transport/BluetoothCenterManager.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/BluetoothConnectTipVC.h"
#include "transport/screens/ClickableRowList.h"
#include "transport/screens/DeskSearchRowView.h"
#include "transport/screens/HomeNavigator.h"
#include "widgets/OMRotatingImage.h"
#include "widgets/OMScreenRouter.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace ostrel {

namespace {

constexpr int kScanTimeOut = 30; // seconds
constexpr BluetoothType kDeskType = 2;

// The screen whose scan the shared radio runs now. A screen leaving stops the scan only if it
// is still its own, so a screen that replaces it keeps the scan it has just started.
QPointer<const BluetoothSearchVC>& scanOwner() {
    static QPointer<const BluetoothSearchVC> owner;
    return owner;
}

} // namespace

BluetoothSearchVC::BluetoothSearchVC(QWidget* parent)
    : QWidget(parent), m_blueToothManager(new RBBluetoothManager(this)) {
    initView();
    QPointer<BluetoothSearchVC> self(this);
    m_blueToothManager->bluetoothStateChanged([self](const PeripheralPtr&, int) {
        if (self)
            self->checkRadio();
    });
    checkRadio();
}

BluetoothSearchVC::~BluetoothSearchVC() {
    stopScan();
}

void BluetoothSearchVC::initView() {
    m_labelTitle = new QLabel(tr("Available"));
    QFont titleFont = m_labelTitle->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    m_labelTitle->setFont(titleFont);

    m_imageSearch = new OMRotatingImage(QStringLiteral("connect_refresh"));
    m_imageSearch->setFixedSize(24, 24);
    connect(m_imageSearch, &OMRotatingImage::clicked, this, [this] { actionRefresh(); });

    auto* header = new QHBoxLayout;
    header->addWidget(m_labelTitle, 1);
    header->addWidget(m_imageSearch);

    m_tableDesk = new ClickableRowList;

    m_buttonDeskType = new QPushButton(tr("Choose desk model"));
    m_buttonDeskType->setFlat(true);
    m_buttonDeskType->setCursor(Qt::PointingHandCursor);
    connect(m_buttonDeskType, &QPushButton::clicked, this, [this] { actionPushToTypeVC(); });

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addLayout(header);
    layout->addWidget(m_tableDesk, 1);
    layout->addWidget(m_buttonDeskType, 0, Qt::AlignHCenter);
}

bool BluetoothSearchVC::isRefreshRotating() const {
    return m_imageSearch->isRotating();
}

QString BluetoothSearchVC::titleText() const {
    return m_labelTitle->text();
}

void BluetoothSearchVC::checkRadio() {
    // Once paired the desk belongs to the control screen: a scan now would reset its link.
    if (m_paired)
        return;
    if (m_blueToothManager->blueToothIsOpen())
        startScan();
    else
        stopScan();
}

void BluetoothSearchVC::startScan() {
    if (m_isScanning)
        return;
    m_isScanning = true;
    scanOwner() = this;
    m_blueToothManager->setNDevices({});
    // Leftover links go, but not one the user is pairing right now.
    if (m_connecting.isEmpty())
        m_blueToothManager->resetManager();
    else
        m_blueToothManager->resetScanManager();
    reloadData();
    m_imageSearch->startRotating();
    m_blueToothManager->setScanTimeOut(kScanTimeOut);
    QPointer<BluetoothSearchVC> self(this);
    m_blueToothManager->scanWithType(
        kDeskType, [self](const PeripheralPtr& peripheral, int flags, const OptionalError&) {
            if (self)
                self->scanEvent(peripheral, flags);
        });
}

void BluetoothSearchVC::stopScan() {
    if (!m_isScanning)
        return;
    m_isScanning = false;
    m_imageSearch->stopRotating();
    if (scanOwner() == this)
        m_blueToothManager->stopScanDevice();
}

void BluetoothSearchVC::hideEvent(QHideEvent* event) {
    stopScan();
    QWidget::hideEvent(event);
}

void BluetoothSearchVC::scanEvent(const PeripheralPtr& peripheral, int flags) {
    if (flags == BluetoothCenterManager::FlagFirstSighting && peripheral) {
        QList<PeripheralPtr> devices = m_blueToothManager->nDevices();
        // Desks are told apart by name: two desks advertising one name are one row.
        const bool listed = std::any_of(devices.cbegin(), devices.cend(), [&](const auto& known) {
            return known->name() == peripheral->name();
        });
        if (!listed) {
            devices.append(peripheral);
            m_blueToothManager->setNDevices(devices);
        }
        reloadData();
        connectRememberedDesk(peripheral);
    } else if (flags == BluetoothCenterManager::FlagScanEnded) {
        m_isScanning = false;
        reloadData();
        m_imageSearch->stopRotating();
    }
}

// Once per screen, so a desk that refuses (another device holds it) is left to the user.
void BluetoothSearchVC::connectRememberedDesk(const PeripheralPtr& peripheral) {
    if (m_rememberedTried || m_paired || peripheral->name() != RememberedDesk::name())
        return;
    m_rememberedTried = true;
    const QList<PeripheralPtr>& devices = m_blueToothManager->nDevices();
    const auto row = std::find_if(devices.cbegin(), devices.cend(), [&](const auto& known) {
        return known->name() == peripheral->name();
    });
    actionSelectRow(int(row - devices.cbegin()));
}

void BluetoothSearchVC::reloadData() {
    const QList<PeripheralPtr>& devices = m_blueToothManager->nDevices();
    while (m_rows.size() > devices.size())
        delete m_rows.takeLast();
    while (m_rows.size() < devices.size()) {
        auto* row = new DeskSearchRowView;
        const auto index = int(m_rows.size());
        connect(row, &DeskSearchRowView::clicked, this, [this, index] { actionSelectRow(index); });
        m_tableDesk->addRow(row);
        m_rows.append(row);
    }
    for (qsizetype i = 0; i < devices.size(); ++i)
        m_rows[i]->setRowContentWithTitle(devices[i]->name());
}

void BluetoothSearchVC::actionSelectRow(int row) {
    // Only a list that is being refreshed is trusted to name desks in range.
    if (!m_isScanning) {
        actionRefresh();
        return;
    }
    const PeripheralPtr peripheral = m_blueToothManager->nDevices().value(row);
    if (!peripheral)
        return;
    QPointer<DeskSearchRowView> rowView = m_rows.value(row);
    rowView->showConnect();
    m_connecting.append(peripheral);
    QPointer<BluetoothSearchVC> self(this);
    m_blueToothManager->connectDeviceWithPeripheral(
        peripheral, [self, rowView](const PeripheralPtr& connected, const OptionalError& error) {
            if (self)
                self->connectReport(connected, error, rowView);
        });
}

void BluetoothSearchVC::connectReport(const PeripheralPtr& peripheral, const OptionalError& error,
                                      const QPointer<DeskSearchRowView>& row) {
    m_connecting.removeOne(peripheral);
    // Later reports of the paired desk (a lost link, a reconnection) are the session's.
    if (m_paired)
        return;
    if (error) {
        HomeNavigator::later(this, [this, row] {
            showConnectTip(row ? row->title() : QString());
            if (row)
                row->hiddenConnect();
        });
        return;
    }
    m_paired = true;
    CurrentDeviceStore::bindDevice(peripheral->name(), peripheral->identifierString());
    if (row)
        row->hiddenConnect();
    // This screen is leaving: its scan must end before the control screen starts its own.
    stopScan();
    // Last: the home window may delete this screen while it takes the next one.
    HomeNavigator::show(QString::fromLatin1(screens::kDeskControl));
}

void BluetoothSearchVC::showConnectTip(const QString& deskName) {
    BluetoothConnectTipVC* tip = BluetoothConnectTipVC::showForDesk(this, deskName);
    // The tip closes itself; pairing again starts from a fresh list.
    connect(tip, &BluetoothConnectTipVC::pairClicked, this, &BluetoothSearchVC::actionRefresh,
            Qt::UniqueConnection);
}

void BluetoothSearchVC::actionPushToTypeVC() {
    // Not from inside the click: the home window deletes this screen as it takes the next.
    HomeNavigator::later(this,
                         [] { HomeNavigator::show(QString::fromLatin1(screens::kDeskType)); });
}

} // namespace ostrel
