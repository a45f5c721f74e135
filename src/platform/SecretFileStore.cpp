#include "platform/SecretFileStore.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace ostrel {

namespace {

// Answers on the next turn of the loop, as the secret service does, so callers see one order.
template <class Callback, class Value>
void answerLater(QObject* context, Callback done, Value value) {
    QMetaObject::invokeMethod(
        context, [done = std::move(done), value = std::move(value)] { done(value); },
        Qt::QueuedConnection);
}

bool writePrivately(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    // The temporary file is narrowed before the secret goes in, so no reader ever could.
    if (!file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) ||
        file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace

QString SecretFileStore::pathFor(const QString& key) const {
    return QDir(m_folder).filePath(key + QStringLiteral(".secret"));
}

void SecretFileStore::load(const QString& key, QObject* context, Loaded done) {
    QFile file(pathFor(key));
    std::optional<QString> secret;
    if (file.open(QIODevice::ReadOnly))
        secret = QString::fromUtf8(file.readAll());
    answerLater(context, std::move(done), std::move(secret));
}

void SecretFileStore::store(const QString& key, const QString& secret, QObject* context,
                            Stored done) {
    const QString path = pathFor(key);
    const bool ok = secret.isEmpty()
                        ? (!QFile::exists(path) || QFile::remove(path))
                        : QDir().mkpath(m_folder) && writePrivately(path, secret.toUtf8());
    answerLater(context, std::move(done), ok);
}

} // namespace ostrel
