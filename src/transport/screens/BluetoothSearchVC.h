#pragma once

#include "transport/BluetoothError.h"
#include "transport/BluetoothPeripheral.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace ostrel {

class ClickableRowList;
class DeskSearchRowView;
class OMRotatingImage;
class RBBluetoothManager;

// Where the user finds a desk and pairs with it. Scans whenever the radio is on, lists desks by
// advertised name, and connects the one clicked while the list is fresh (a scan is running); a
// click on a stale list only scans again. A paired desk is stored as bound and as the current
// device, and the desk control screen takes over the home window. With "Remember my desk" on,
// the current desk is connected as soon as a scan sees it, as if clicked.
class BluetoothSearchVC : public QWidget {
    Q_OBJECT
public:
    explicit BluetoothSearchVC(QWidget* parent = nullptr);
    ~BluetoothSearchVC() override;

    // A plain facade of this screen's own: its found list and current desk are not the
    // session's.
    RBBluetoothManager& blueToothManager() const { return *m_blueToothManager; }
    bool isScanning() const { return m_isScanning; }
    bool isRefreshRotating() const;
    QString titleText() const;
    // The rows in list order, one per entry of the facade's nDevices.
    const QList<DeskSearchRowView*>& rows() const { return m_rows; }
    // Opens the desk type screen, where the model that the bound devices belong to is chosen.
    QPushButton* deskTypeButton() const { return m_buttonDeskType; }

    void startScan();
    void actionRefresh() { startScan(); }
    // Ends a scan this screen runs; another screen's scan is left alone.
    void stopScan();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void initView();
    void checkRadio();
    void scanEvent(const PeripheralPtr& peripheral, int flags);
    void connectRememberedDesk(const PeripheralPtr& peripheral);
    void reloadData();
    void actionSelectRow(int row);
    void connectReport(const PeripheralPtr& peripheral, const OptionalError& error,
                       const QPointer<DeskSearchRowView>& row);
    void showConnectTip(const QString& deskName);
    void actionPushToTypeVC();

    RBBluetoothManager* m_blueToothManager;
    bool m_isScanning = false;
    bool m_paired = false;
    bool m_rememberedTried = false;
    // Desks clicked whose connect has not reported yet: a scan restarted meanwhile keeps them.
    QList<PeripheralPtr> m_connecting;
    QLabel* m_labelTitle = nullptr;
    OMRotatingImage* m_imageSearch = nullptr;
    ClickableRowList* m_tableDesk = nullptr;
    QPushButton* m_buttonDeskType = nullptr;
    QList<DeskSearchRowView*> m_rows;
};

} // namespace ostrel
