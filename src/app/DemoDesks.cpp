#include "DemoDesks.h"

#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "transport/BluetoothTool.h"

namespace ostrel {

namespace {

VirtualDeskConfig deskConfig(std::string name, int startHeight) {
    VirtualDeskConfig config;
    config.name = std::move(name);
    config.bluetoothType = 2;
    config.startHeight = startHeight;
    return config;
}

} // namespace

DemoDesks::DemoDesks(QObject* parent) : QObject(parent), m_central(new VirtualCentral) {
    m_desks = {new VirtualDesk(deskConfig("QWJ-0001", 720), this),
               new VirtualDesk(deskConfig("QWJ-0002", 1050), this)};
    for (VirtualDesk* desk : m_desks)
        m_central->addDesk(desk);
    // The tool adopts the central; everything above it now reaches the virtual desks.
    BluetoothTool::replaceShareInstance(std::make_unique<BluetoothTool>(m_central));
}

DemoDesks::~DemoDesks() = default;

} // namespace ostrel
