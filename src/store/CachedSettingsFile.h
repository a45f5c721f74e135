#pragma once

#include <QString>
#include <QVariantMap>
#include <optional>
#include <sys/types.h>

namespace ostrel {

// A settings file of one dictionary kept in memory: parsed once, written through, and parsed
// again only when the file on disk is no longer the one that was read (another writer, a
// deleted folder). A read costs one stat, so the 20-a-second height path parses no file.
class CachedSettingsFile {
public:
    explicit CachedSettingsFile(QString fileName) : m_fileName(std::move(fileName)) {}

    QVariantMap read(); // empty when nothing is stored
    void write(const QVariantMap& dictionary);
    void clear();

private:
    // What tells one version of the file from another: every atomic write makes a new inode.
    struct Signature {
        QString path;
        bool exists = false;
        ino_t inode = 0;
        qint64 modifiedNs = 0;
        qint64 size = 0;
        bool operator==(const Signature&) const = default;
    };
    Signature signatureNow() const;

    QString m_fileName;
    std::optional<Signature> m_signature;
    QVariantMap m_value;
};

} // namespace ostrel
