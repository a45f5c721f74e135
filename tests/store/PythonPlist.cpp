#include "PythonPlist.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace ostrel {

namespace {

const char* const kScript = R"(
import json, plistlib, sys

def tag(v):
    if isinstance(v, bool): return {"bool": v}
    if isinstance(v, int): return {"int": v}
    if isinstance(v, float): return {"real": v}
    if isinstance(v, str): return v
    if isinstance(v, list): return [tag(x) for x in v]
    if isinstance(v, dict): return {"dict": {k: tag(x) for k, x in v.items()}}
    return {"unsupported": repr(v)}

def untag(v):
    if isinstance(v, str): return v
    if isinstance(v, list): return [untag(x) for x in v]
    (kind, inner), = v.items()
    return {k: untag(x) for k, x in inner.items()} if kind == "dict" else inner

if sys.argv[1] == "read":
    with open(sys.argv[2], "rb") as f:
        print(json.dumps(tag(plistlib.load(f))))
else:
    fmt = plistlib.FMT_BINARY if sys.argv[1] == "binary" else plistlib.FMT_XML
    with open(sys.argv[2], "wb") as f:
        plistlib.dump(untag(json.loads(sys.stdin.read())), f, fmt=fmt)
)";

QJsonObject one(const char* kind, const QJsonValue& value) {
    return {{kind, value}};
}

QByteArray runPython(const QStringList& arguments, const QByteArray& input, bool* ok) {
    QProcess python;
    python.start(QStringLiteral("python3"), QStringList{"-c", kScript} + arguments);
    python.write(input);
    python.closeWriteChannel();
    *ok = python.waitForFinished() && python.exitStatus() == QProcess::NormalExit &&
          python.exitCode() == 0;
    return python.readAllStandardOutput();
}

} // namespace

QJsonValue PythonPlist::tagged(const QVariant& value) {
    switch (value.typeId()) {
    case QMetaType::Bool:
        return one("bool", value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
        return one("int", value.toLongLong());
    case QMetaType::Double:
        return one("real", value.toDouble());
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QVariantList: {
        QJsonArray array;
        for (const QVariant& item : value.toList())
            array.append(tagged(item));
        return array;
    }
    case QMetaType::QVariantMap: {
        QJsonObject object;
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            object.insert(it.key(), tagged(it.value()));
        return one("dict", object);
    }
    default:
        return one("unsupported", value.typeName());
    }
}

QJsonValue PythonPlist::read(const QString& path) {
    bool ok = false;
    const QByteArray output = runPython({QStringLiteral("read"), path}, {}, &ok);
    if (!ok)
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(output);
    return document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
}

bool PythonPlist::write(const QString& path, const QJsonValue& taggedValue, bool binary) {
    const QJsonDocument document = taggedValue.isArray() ? QJsonDocument(taggedValue.toArray())
                                                         : QJsonDocument(taggedValue.toObject());
    bool ok = false;
    runPython({binary ? QStringLiteral("binary") : QStringLiteral("xml"), path},
              document.toJson(QJsonDocument::Compact), &ok);
    return ok;
}

} // namespace ostrel
