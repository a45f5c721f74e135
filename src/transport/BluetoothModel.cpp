#include "BluetoothModel.h"

#include <array>

namespace ostrel {

namespace {

// QStrings, so that building a model (before every write) only shares them.
struct TypeRow {
    QStringList heads;
    QString service;
    QString write;
    QString read;
};

const std::array<TypeRow, 10>& typeTable() {
    // Type 0 deliberately omits "QXR": a scan for every family does not accept a desk whose
    // name carries only that head.
    static const std::array<TypeRow, 10> table{{
        {{"Ostrel-CN", "QWJ", "QJW", "Z4", "Z5", "KVM20", "GLQ", "WUF", "RX01", "JOX", "PYR",
          "QJWK"},
         "",
         "",
         ""},
        {{"Ostrel-CN"}, "FFF0", "FFF1", "FFF1"},
        {{"QWJ", "QJW", "QXR"}, "180D", "2A39", "2A37"},
        {{"Z4", "Z5", "KVM20"}, "", "", ""},
        {{"GLQ"}, "", "", ""},
        {{"WUF"}, "", "", ""},
        {{"RX01"}, "", "", ""},
        {{"JOX"}, "", "", ""},
        {{"PYR"}, "", "", ""},
        {{"QJWK"}, "", "", ""},
    }};
    return table;
}

} // namespace

void BluetoothModel::initDataWithType(BluetoothType type) {
    m_type = type;
    if (type < 0 || type >= static_cast<int>(typeTable().size()))
        return;
    const TypeRow& row = typeTable()[static_cast<std::size_t>(type)];
    m_bluetoothHeadArray = row.heads;
    m_serviceUUID = row.service;
    m_writeCharacteristicUUID = row.write;
    m_readCharacteristicUUID = row.read;
}

} // namespace ostrel
