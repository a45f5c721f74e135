#include "OMPlistManager.h"

#include "CurrentDeskModel.h"
#include "DQDataCatchHelper.h"
#include "ListLookup.h"
#include "OMBluetoothModel.h"
#include "PlistFile.h"

#include <QStringList>

namespace ostrel {

namespace {

const QString kUserList = QStringLiteral("user");
const QString kUserIdList = QStringLiteral("user_id");
const QString kUserId = QStringLiteral("user_id");
const QString kAutoId = QStringLiteral("auto_id");
const QString kIsCurrent = QStringLiteral("is_current");
const QString kBluetoothName = QStringLiteral("bluetoothName");

QString bindDeviceListName(const QString& model = CurrentDeskModel::name()) {
    return model + QStringLiteral("system_binddevice");
}

void writeList(const QVariantList& list, const QString& name) {
    OMPlistManager::writeData(list, name);
}

// Appends a per-user entry to a list, starting the list when it does not exist yet.
void appendUserEntry(const QString& listName, const QString& userId, QVariantMap entry) {
    QVariantList list =
        OMPlistManager::readPlistFileDataWithFileName(listName).value_or(QVariantList{});
    entry.insert(kUserId, userId);
    list.append(entry);
    writeList(list, listName);
}

// Marks the user with `userId` current and every other one not; no id marks none.
void markCurrent(QVariantList& users, const std::optional<QString>& userId) {
    for (QVariant& entry : users) {
        if (entry.typeId() != QMetaType::QVariantMap)
            continue;
        QVariantMap user = entry.toMap();
        const bool current = userId && ListLookup::text(user.value(kUserId)) == *userId;
        user.insert(kIsCurrent, current ? QStringLiteral("1") : QStringLiteral("0"));
        entry = user;
    }
}

qsizetype indexOfDevice(const QVariantList& devices, const QString& bluetoothName) {
    return ListLookup::indexOf(devices, kBluetoothName, bluetoothName);
}

} // namespace

QString OMPlistManager::localPlistFileWithFileName(const QString& name) {
    return DQDataCatchHelper::getDocPath() + QLatin1Char('/') + name + QStringLiteral(".plist");
}

std::optional<QVariantList> OMPlistManager::readPlistFileDataWithFileName(const QString& name) {
    return PlistFile::readArray(localPlistFileWithFileName(name));
}

std::optional<QVariantMap> OMPlistManager::readPlistDictionaryWithFileName(const QString& name) {
    return PlistFile::readDictionary(localPlistFileWithFileName(name));
}

void OMPlistManager::writeData(const QVariant& data, const QString& fileName) {
    const int type = data.typeId();
    if (type == QMetaType::QVariantList || type == QMetaType::QVariantMap)
        PlistFile::write(localPlistFileWithFileName(fileName), data);
}

void OMPlistManager::addData(const QVariant& data, const QString& fileName) {
    auto list = readPlistFileDataWithFileName(fileName);
    if (!list)
        return;
    list->append(data);
    writeList(*list, fileName);
}

void OMPlistManager::deleteData(const QVariantMap& data, const QString& fileName) {
    deleteDataWithUserID(ListLookup::text(data.value(kUserId)), fileName);
}

void OMPlistManager::deleteDataWithUserID(const QString& userId, const QString& fileName) {
    auto list = readPlistFileDataWithFileName(fileName);
    if (!list)
        return;
    const qsizetype index = ListLookup::indexOf(*list, kUserId, userId);
    if (index < 0)
        return;
    list->removeAt(index);
    writeList(*list, fileName);
}

void OMPlistManager::deleteUserAllDataWithUserID(const QString& userId) {
    const bool wasCurrent = getCurrentUserID() == userId;
    for (const char* list : {"user", "control", "device", "device_setting", "system_setting"})
        deleteDataWithUserID(userId, QString::fromLatin1(list));
    if (!wasCurrent)
        return;
    const auto users = readPlistFileDataWithFileName(kUserList);
    if (users && !users->isEmpty())
        setCurrentUserWithUserID(ListLookup::text(users->first().toMap().value(kUserId)));
}

void OMPlistManager::initDataList() {
    if (!readPlistDictionaryWithFileName(kUserIdList))
        getUserID(); // lays down the id counter; the id itself is not used
    if (readPlistFileDataWithFileName(kUserList))
        return;
    for (const char* list : {"user", "control", "system_setting"})
        writeList({}, QString::fromLatin1(list));
}

QString OMPlistManager::getUserID() {
    auto counter = readPlistDictionaryWithFileName(kUserIdList);
    qint32 next = 0;
    if (counter) {
        // The counter is a 32-bit number and wraps like one.
        const auto last = static_cast<quint32>(counter->value(kAutoId).toLongLong());
        next = static_cast<qint32>(last + 1U);
    } else {
        counter.emplace();
    }
    counter->insert(kAutoId, next);
    writeData(*counter, kUserIdList);
    return QString::number(next);
}

void OMPlistManager::setCurrentUserWithUserID(const QString& userId) {
    auto users = readPlistFileDataWithFileName(kUserList);
    if (!users)
        return;
    markCurrent(*users, userId);
    writeList(*users, kUserList);
}

std::optional<QString> OMPlistManager::getCurrentUserID() {
    const auto users = readPlistFileDataWithFileName(kUserList);
    if (!users)
        return std::nullopt;
    const qsizetype index = ListLookup::indexOf(*users, kIsCurrent, QStringLiteral("1"));
    if (index < 0)
        return std::nullopt;
    return ListLookup::text(users->at(index).toMap().value(kUserId));
}

void OMPlistManager::createNewUser(QVariantMap& user) {
    const QString userId = getUserID();
    user.insert(kUserId, userId);
    user.insert(kIsCurrent, QStringLiteral("1"));
    // Without a user list (initDataList not run) the user entry itself is not stored.
    if (auto users = readPlistFileDataWithFileName(kUserList)) {
        markCurrent(*users, std::nullopt);
        users->append(user);
        writeList(*users, kUserList);
    }
    createControlListWithUserID(userId);
    createSystemSettingListWithUserID(userId);
}

void OMPlistManager::modifyUser(const QVariantMap& user, const QString& userId,
                                const std::function<void()>& modifyBlock) {
    if (auto users = readPlistFileDataWithFileName(kUserList)) {
        const qsizetype index = ListLookup::indexOf(*users, kUserId, userId);
        if (index >= 0)
            (*users)[index] = user;
        writeList(*users, kUserList);
    }
    if (modifyBlock)
        modifyBlock();
}

void OMPlistManager::createControlListWithUserID(const QString& userId) {
    QVariantMap entry;
    for (const char* key : {"sit_height", "stand_height", "mem_height1", "mem_height2"})
        entry.insert(QString::fromLatin1(key), 0);
    appendUserEntry(QStringLiteral("control"), userId, entry);
}

void OMPlistManager::createDeviceSettingListWithUserID(const QString& userId) {
    appendUserEntry(QStringLiteral("device_setting"), userId, {{"language", "CN"}});
}

void OMPlistManager::createSystemSettingListWithUserID(const QString& userId) {
    appendUserEntry(QStringLiteral("system_setting"), userId, {{"language", "CN"}});
}

QVariantList OMPlistManager::getBindDevice() {
    return getBindDeviceOfModel(CurrentDeskModel::name());
}

QVariantList OMPlistManager::getBindDeviceOfModel(const QString& model) {
    return readPlistFileDataWithFileName(bindDeviceListName(model)).value_or(QVariantList{});
}

void OMPlistManager::saveBindDeviceWithDevice(const QVariantMap& device) {
    QVariantList devices = getBindDevice();
    const QVariant name = device.value(kBluetoothName);
    const qsizetype index = name.isNull() ? -1 : indexOfDevice(devices, ListLookup::text(name));
    if (index < 0) {
        devices.append(device);
    } else {
        // A known desk keeps what is stored; only the connection time and a name the user gave
        // it (one that differs from the advertised name) come from the new record.
        auto stored = fromPropertyForm<OMBluetoothModel>(devices[index].toMap());
        const auto incoming = fromPropertyForm<OMBluetoothModel>(device);
        stored.lastConnectionTime = incoming.lastConnectionTime;
        if (incoming.deviceName != incoming.bluetoothName)
            stored.deviceName = incoming.deviceName;
        devices[index] = toPropertyForm(stored);
    }
    writeList(devices, bindDeviceListName());
}

void OMPlistManager::deleteBindDeviceWithBlueToothName(const QString& bluetoothName) {
    QVariantList devices = getBindDevice();
    const qsizetype index = indexOfDevice(devices, bluetoothName);
    if (index < 0)
        return;
    devices.removeAt(index);
    writeList(devices, bindDeviceListName());
}

QVariantMap OMPlistManager::getDeviceInfoWithBlueToothName(const QString& bluetoothName) {
    const QVariantList devices = getBindDevice();
    const qsizetype index = indexOfDevice(devices, bluetoothName);
    if (index >= 0)
        return devices[index].toMap();
    auto fresh = initWithDictionary<OMBluetoothModel>({});
    for (auto* flag :
         {&fresh.sitOrStand, &fresh.remindType, &fresh.remindInterval, &fresh.isCustom})
        flag->emplace(1, '0');
    return toPropertyForm(fresh);
}

void OMPlistManager::saveDeviceInfoWithBlueToothName(const std::optional<QString>& bluetoothName,
                                                     const QVariantMap& dictDevice) {
    if (!bluetoothName)
        return;
    QVariantList devices = getBindDevice();
    const qsizetype index = indexOfDevice(devices, *bluetoothName);
    if (index < 0)
        devices.append(dictDevice);
    else
        devices[index] = dictDevice;
    writeList(devices, bindDeviceListName());
}

} // namespace ostrel
