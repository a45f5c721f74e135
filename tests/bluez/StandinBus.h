#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QVariantList>
#include <gtest/gtest.h>

namespace ostrel::test {

// A private D-Bus bus with the BlueZ stand-in on it, one per test process. It is set up before
// the first test and points this process's system bus there first, because QtBluetooth
// settles on a bus (and on its BlueZ backend) once per process.
class StandinBus : public ::testing::Environment {
public:
    static StandinBus& instance();

    void SetUp() override;
    void TearDown() override;

    // One call on the stand-in's control interface; the reply may be an error.
    QDBusMessage control(const QString& method, const QVariantList& arguments) const;
    // Any call on the private bus, from the same connection.
    QDBusMessage call(const QDBusMessage& message) const;

private:
    static QString readLine(QProcess& process);

    QProcess m_bus;
    QProcess m_standin;
    QString m_address;
};

} // namespace ostrel::test
