#include "store/CachedSettingsFile.h"

#include "store/DQDataCatchHelper.h"

#include <QFile>
#include <sys/stat.h>

namespace ostrel {

CachedSettingsFile::Signature CachedSettingsFile::signatureNow() const {
    Signature signature;
    signature.path = DQDataCatchHelper::getDocPath() + QLatin1Char('/') + m_fileName;
    struct stat status {};
    if (::stat(QFile::encodeName(signature.path).constData(), &status) == 0) {
        signature.exists = true;
        signature.inode = status.st_ino;
        signature.modifiedNs =
            qint64(status.st_mtim.tv_sec) * 1'000'000'000 + status.st_mtim.tv_nsec;
        signature.size = status.st_size;
    }
    return signature;
}

QVariantMap CachedSettingsFile::read() {
    Signature now = signatureNow();
    if (m_signature != now) {
        const QVariantList list = DQDataCatchHelper::getFileWithFileName(m_fileName);
        m_value = list.isEmpty() ? QVariantMap() : list.first().toMap();
        m_signature = std::move(now);
    }
    return m_value;
}

void CachedSettingsFile::write(const QVariantMap& dictionary) {
    DQDataCatchHelper::saveFileWithFileName(m_fileName, QVariantList{dictionary});
    // Read back on the next read: a write that failed must not be taken for the stored value.
    m_signature.reset();
}

void CachedSettingsFile::clear() {
    DQDataCatchHelper::deleteFileWithPath(DQDataCatchHelper::getDocPath() + QLatin1Char('/') +
                                          m_fileName);
    m_signature.reset();
}

} // namespace ostrel
