#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <limits>

namespace ostrel {

// How BluetoothTool scans and connects. Time-outs and the reconnect flag are read afresh by
// every operation; the manager's queue and dictionary only when the central is first made.
struct BluetoothToolOptions {
    // The largest integer marks a time-out as unset; a scan then runs for 30 s.
    static constexpr int kUnsetTimeOut = std::numeric_limits<int>::max();
    static constexpr char kShowPowerAlertKey[] = "ShowPowerAlert";

    BluetoothToolOptions() = default;
    BluetoothToolOptions(QString queue, QVariantMap dictionary, QVariantMap scan = {},
                         QStringList services = {}, QVariantMap connect = {})
        : managerQueue(std::move(queue)), managerDictionary(std::move(dictionary)),
          scanOptions(std::move(scan)), scanServiceArray(std::move(services)),
          connectOptions(std::move(connect)) {}

    bool autoConnectAfterDisconnect = false;
    // Label of the thread that carries the central's events. Everything runs on the main
    // thread here, so it only names the link in diagnostics.
    QString managerQueue;
    QVariantMap managerDictionary;
    QVariantMap scanOptions;
    QStringList scanServiceArray; // empty: every service
    QVariantMap connectOptions;
    int scanTimeOut = kUnsetTimeOut;    // seconds
    int connectTimeOut = kUnsetTimeOut; // seconds
};

} // namespace ostrel
