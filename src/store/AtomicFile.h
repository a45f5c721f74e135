#pragma once

#include <QByteArray>
#include <QString>

namespace ostrel {

// Whole-file replacement: the bytes go to a temporary file beside the target, are flushed to
// disk, and only then renamed over it, so a reader (or a crash) sees the old or the new file,
// never a mix.
class AtomicFile {
public:
    // False when nothing could be written; the previous file is then left as it was.
    static bool write(const QString& path, const QByteArray& bytes);
};

} // namespace ostrel
