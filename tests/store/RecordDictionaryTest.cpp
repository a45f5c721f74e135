#include "store/AccountModel.h"
#include "store/AreaCodeModel.h"
#include "store/OMBluetoothModel.h"
#include "store/Object_LightColor.h"

#include <functional>
#include <gtest/gtest.h>
#include <type_traits>

namespace ostrel {
namespace {

const QVariant kNull = QVariant::fromValue(nullptr);

// A desk record with every field set, so that each one can be seen to travel or not.
OMBluetoothModel everyFieldSet() {
    OMBluetoothModel desk;
    int n = 0;
    forEachField<OMBluetoothModel>([&](const auto& field) {
        auto& member = desk.*field.member;
        if constexpr (std::is_same_v<std::decay_t<decltype(member)>, int>)
            member = ++n;
        else if constexpr (std::is_same_v<std::decay_t<decltype(member)>, bool>)
            member = true;
        else
            member = std::string(field.key) + "-value";
    });
    return desk;
}

TEST(RecordDictionaryTest, PropertyAndExplicitFormsCarryEveryFieldTheirOwnWay) {
    const OMBluetoothModel desk = everyFieldSet();
    const QVariantMap form = toPropertyForm(desk);
    EXPECT_EQ(form.size(), 29);
    EXPECT_EQ(form.value("idField"), "idField-value");
    EXPECT_EQ(form.value("isRepeat").typeId(), QMetaType::Int);
    EXPECT_EQ(form.value("deleteFlag").typeId(), QMetaType::Bool);
    EXPECT_EQ(fromPropertyForm<OMBluetoothModel>(form), desk);

    EXPECT_TRUE(toPropertyForm(OMBluetoothModel{}).keys() ==
                QStringList({"deleteFlag", "isRepeat", "relationId"}))
        << "nil texts are left out, scalars are always written";

    // The explicit form is lopsided, as stored dictionaries expect.
    const QVariantMap dictionary = toDictionary(desk);
    EXPECT_EQ(dictionary.value("id"), "idField-value");
    EXPECT_TRUE(dictionary.contains("remindType"));
    EXPECT_FALSE(dictionary.contains("idField"));
    EXPECT_FALSE(dictionary.contains("isRepeat"));

    OMBluetoothModel viaDictionary = desk;
    viaDictionary.remindType.reset();
    viaDictionary.isRepeat = 0;
    EXPECT_EQ(initWithDictionary<OMBluetoothModel>(dictionary), viaDictionary);

    QVariantMap coder;
    encodeWithCoder(desk, coder);
    OMBluetoothModel viaArchive = desk;
    viaArchive.isRepeat = 0;
    EXPECT_EQ(initWithCoder<OMBluetoothModel>(coder), viaArchive);

    EXPECT_FALSE(initWithDictionary<OMBluetoothModel>(toPropertyForm(desk)).idField)
        << "the explicit form looks for the id under \"id\"";
}

TEST(RecordDictionaryTest, ExplicitKeysOfTheAccountRecords) {
    AreaCodeModel area{"+86", 12, "中国", "China"};
    EXPECT_EQ(toDictionary(area).keys(), QStringList({"area_code", "id", "name", "name_en"}));
    EXPECT_EQ(initWithDictionary<AreaCodeModel>(toDictionary(area)), area);
    EXPECT_EQ(fromPropertyForm<AreaCodeModel>(toPropertyForm(area)), area);

    AccountModel account;
    account.idField = "u1";
    account.password = "secret";
    EXPECT_EQ(toDictionary(account).value("id"), "u1");
    EXPECT_EQ(initWithDictionary<AccountModel>(toDictionary(account)), account);
}

TEST(RecordDictionaryTest, NullAndMissingValuesKeepDefaults) {
    const QVariantMap dictionary{
        {"bluetoothName", kNull}, {"relationId", kNull}, {"deleteFlag", QVariant()}};
    for (const auto& desk : {initWithDictionary<OMBluetoothModel>(dictionary),
                             fromPropertyForm<OMBluetoothModel>(dictionary)})
        EXPECT_EQ(desk, OMBluetoothModel{});
    EXPECT_EQ(fromPropertyForm<Object_LightColor>({{"mode", kNull}}).mode, 1);
}

TEST(RecordDictionaryTest, ValuesOfAnotherKindAreConverted) {
    struct Case {
        const char* key;
        QVariant value;
        std::function<bool(const OMBluetoothModel&)> check;
    };
    const std::vector<Case> cases = {
        {"relationId", "42", [](auto& d) { return d.relationId == 42; }},
        {"relationId", "abc", [](auto& d) { return d.relationId == 0; }},
        {"deleteFlag", "true", [](auto& d) { return d.deleteFlag; }},
        {"deleteFlag", "0", [](auto& d) { return !d.deleteFlag; }},
        {"sitOrStand", 1, [](auto& d) { return d.sitOrStand == "1"; }},
        {"sitOrStand", true, [](auto& d) { return d.sitOrStand == "1"; }},
        {"sitOrStand", QVariantList{1}, [](auto& d) { return !d.sitOrStand; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " = " + c.value.toString().toStdString());
        EXPECT_TRUE(c.check(fromPropertyForm<OMBluetoothModel>({{c.key, c.value}})));
        EXPECT_TRUE(c.check(initWithDictionary<OMBluetoothModel>({{c.key, c.value}})));
    }
}

} // namespace
} // namespace ostrel
