#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

namespace ostrel {

// An independent property-list reader and writer (python3's plistlib) for checking the store's
// files. Values cross as JSON with scalars tagged by type, e.g. {"int": 3}, {"bool": true}.
class PythonPlist {
public:
    static QJsonValue tagged(const QVariant& value);
    // Null when python could not read the file.
    static QJsonValue read(const QString& path);
    static bool write(const QString& path, const QJsonValue& taggedValue, bool binary);
};

} // namespace ostrel
