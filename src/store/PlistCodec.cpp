#include "PlistCodec.h"

#include <QDateTime>
#include <cstdlib>
#include <limits>
#include <memory>
#include <plist/plist.h>

namespace ostrel {

namespace {

struct NodeDeleter {
    void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>;

// Property-list dates count seconds from 2001-01-01 UTC.
constexpr qint64 kPlistEpochOffset = 978307200;
// Far deeper than any file the application writes; a deeper file is hostile and reads as absent
// instead of exhausting the stack.
constexpr int kMaxDepth = 256;

Node toNode(const QVariant& value);

Node arrayNode(const QVariantList& list) {
    Node array(plist_new_array());
    for (const QVariant& item : list) {
        Node child = toNode(item);
        if (!child)
            return nullptr;
        plist_array_append_item(array.get(), child.release());
    }
    return array;
}

Node dictNode(const QVariantMap& map) {
    Node dict(plist_new_dict());
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        Node child = toNode(it.value());
        if (!child)
            return nullptr;
        plist_dict_set_item(dict.get(), it.key().toUtf8().constData(), child.release());
    }
    return dict;
}

Node dateNode(const QDateTime& date) {
    const qint64 ms = date.toMSecsSinceEpoch() - kPlistEpochOffset * 1000;
    const qint64 seconds = ms / 1000;
    if (seconds < std::numeric_limits<int32_t>::min() ||
        seconds > std::numeric_limits<int32_t>::max())
        return nullptr;
    return Node(
        plist_new_date(static_cast<int32_t>(seconds), static_cast<int32_t>((ms % 1000) * 1000)));
}

Node toNode(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return Node(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Long:
        // Negative numbers travel as two's complement; the XML writer prints them signed.
        return Node(plist_new_uint(static_cast<uint64_t>(value.toLongLong())));
    case QMetaType::UInt:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::ULong:
        return Node(plist_new_uint(value.toULongLong()));
    case QMetaType::Double:
    case QMetaType::Float:
        return Node(plist_new_real(value.toDouble()));
    case QMetaType::QString:
        return Node(plist_new_string(value.toString().toUtf8().constData()));
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return Node(plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size())));
    }
    case QMetaType::QDateTime:
        return dateNode(value.toDateTime());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return arrayNode(value.toList());
    case QMetaType::QVariantMap:
        return dictNode(value.toMap());
    default:
        return nullptr;
    }
}

std::optional<QVariant> fromNode(void* node, int depth);

std::optional<QVariant> fromArray(void* node, int depth) {
    QVariantList list;
    const uint32_t size = plist_array_get_size(node);
    for (uint32_t i = 0; i < size; ++i) {
        auto item = fromNode(plist_array_get_item(node, i), depth);
        if (!item)
            return std::nullopt;
        list.append(*item);
    }
    return list;
}

std::optional<QVariant> fromDict(void* node, int depth) {
    QVariantMap map;
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(node, &iter);
    std::unique_ptr<void, decltype(&std::free)> iterGuard(iter, &std::free);
    for (;;) {
        char* key = nullptr;
        plist_t child = nullptr;
        plist_dict_next_item(node, iter, &key, &child);
        std::unique_ptr<char, decltype(&std::free)> keyGuard(key, &std::free);
        if (!child)
            return map;
        auto item = fromNode(child, depth);
        if (!key || !item)
            return std::nullopt;
        map.insert(QString::fromUtf8(key), *item);
    }
}

std::optional<QVariant> fromNode(void* node, int depth) {
    if (!node || ++depth > kMaxDepth)
        return std::nullopt;
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN:
        return QVariant(plist_bool_val_is_true(node) != 0);
    case PLIST_UINT: {
        uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return QVariant(static_cast<qint64>(number));
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return QVariant(number);
    }
    case PLIST_STRING: {
        uint64_t length = 0;
        const char* text = plist_get_string_ptr(node, &length);
        return QVariant(QString::fromUtf8(text, static_cast<qsizetype>(length)));
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return QVariant(QByteArray(bytes, static_cast<qsizetype>(length)));
    }
    case PLIST_DATE: {
        int32_t seconds = 0;
        int32_t micros = 0;
        plist_get_date_val(node, &seconds, &micros);
        return QVariant(QDateTime::fromMSecsSinceEpoch(
            (qint64{seconds} + kPlistEpochOffset) * 1000 + micros / 1000, Qt::UTC));
    }
    case PLIST_ARRAY:
        return fromArray(node, depth);
    case PLIST_DICT:
        return fromDict(node, depth);
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<QByteArray> PlistCodec::toXml(const QVariant& value) {
    Node root = toNode(value);
    if (!root)
        return std::nullopt;
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(root.get(), &xml, &length);
    if (!xml)
        return std::nullopt;
    QByteArray bytes(xml, static_cast<qsizetype>(length));
    plist_to_xml_free(xml);
    return bytes;
}

QVariant PlistCodec::fromData(const QByteArray& data) {
    if (data.isEmpty() || data.size() > std::numeric_limits<uint32_t>::max())
        return {};
    plist_t root = nullptr;
    plist_from_memory(data.constData(), static_cast<uint32_t>(data.size()), &root);
    Node guard(root);
    return fromNode(root, 0).value_or(QVariant());
}

} // namespace ostrel
