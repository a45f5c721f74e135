#include "AtomicFile.h"

#include <QSaveFile>

namespace ostrel {

bool AtomicFile::write(const QString& path, const QByteArray& bytes) {
    // QSaveFile writes to a temporary sibling, syncs it and renames it over the target on commit.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace ostrel
