#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace ostrel::test {

// A real Mosquitto broker on a free localhost port, with a configuration of its own: anonymous,
// with a password file (made with mosquitto_passwd), or TLS with a certificate authority and a
// server certificate made with openssl for this run.
class MosquittoBroker {
public:
    enum class Kind { Anonymous, Password, Tls };
    static inline const QString kUser = QStringLiteral("desk");
    static inline const QString kPassword = QStringLiteral("s3cret pass");

    explicit MosquittoBroker(Kind kind);
    ~MosquittoBroker();

    // Starts the broker (again, on the same port) and waits until it listens.
    bool start();
    void stop();

    int port() const { return m_port; }
    QString caFile() const { return m_dir.filePath(QStringLiteral("ca.crt")); }
    // Everything the broker logged.
    const QByteArray& log() const { return m_log; }

private:
    bool writeConfig(Kind kind);
    bool makeCertificates();

    QTemporaryDir m_dir;
    int m_port = 0;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_log;
};

} // namespace ostrel::test
