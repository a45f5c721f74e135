#pragma once

#include "app/RealTimeWait.h"

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QTcpServer>
#include <QTemporaryDir>
#include <csignal>
#include <memory>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace ostrel::test {

// A real Mosquitto broker on a free localhost port, with a configuration of its own: anonymous,
// with a password file (made with mosquitto_passwd), or TLS with a certificate authority and a
// server certificate made with openssl for this run.
class MosquittoBroker {
public:
    enum class Kind { Anonymous, Password, Tls };
    static inline const QString kUser = QStringLiteral("desk");
    static inline const QString kPassword = QStringLiteral("s3cret pass");

    explicit MosquittoBroker(Kind kind) {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        m_port = probe.serverPort();
        writeConfig(kind);
    }
    ~MosquittoBroker() { stop(); }

    // Starts the broker (again, on the same port) and waits until it listens.
    bool start() {
        stop();
        m_log.clear();
        m_process = std::make_unique<QProcess>();
        m_process->setProcessChannelMode(QProcess::MergedChannels);
        QObject::connect(m_process.get(), &QProcess::readyRead, m_process.get(),
                         [this] { m_log += m_process->readAll(); });
        // A test that crashes must not leave its broker behind.
        m_process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
        m_process->start(QStringLiteral(OSTREL_MOSQUITTO), {QStringLiteral("-c"), file("conf")});
        const auto settled = [this] {
            return m_log.contains(" running") || m_process->state() == QProcess::NotRunning;
        };
        return waitUntil(settled, 10000) && m_process->state() == QProcess::Running;
    }

    void stop() {
        if (!m_process)
            return;
        m_process->terminate();
        m_process->waitForFinished(5000);
        m_process.reset();
    }

    int port() const { return m_port; }
    QString caFile() const { return file("ca.crt"); }
    // Everything the broker logged.
    const QByteArray& log() const { return m_log; }

private:
    QString file(const char* name) const { return m_dir.filePath(QLatin1String(name)); }

    bool run(const QString& program, const QStringList& arguments) const {
        QProcess process;
        process.setWorkingDirectory(m_dir.path());
        process.start(program, arguments);
        return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    }

    bool makeCertificates() const {
        const auto openssl = [this](const char* arguments) {
            return run(QStringLiteral("openssl"), QString::fromLatin1(arguments).split(u' '));
        };
        QFile san(file("san.cnf"));
        return san.open(QIODevice::WriteOnly) && san.write("subjectAltName=DNS:localhost\n") > 0 &&
               san.flush() &&
               openssl("req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=TestCA -keyout ca.key "
                       "-out ca.crt") &&
               openssl("req -newkey rsa:2048 -nodes -subj /CN=localhost -keyout server.key -out "
                       "server.csr") &&
               openssl("x509 -req -in server.csr -CA ca.crt -CAkey ca.key -CAcreateserial -days 1 "
                       "-extfile san.cnf -out server.crt");
    }

    bool writeConfig(Kind kind) const {
        // Run as root, mosquitto would become another user, who cannot read this run's files.
        const passwd* self = getpwuid(getuid());
        QByteArray config = "listener " + QByteArray::number(m_port) +
                            " 127.0.0.1\npersistence false\nlog_dest stderr\nuser " +
                            QByteArray(self ? self->pw_name : "root") + "\n";
        if (kind == Kind::Password) {
            if (!run(QStringLiteral(OSTREL_MOSQUITTO_PASSWD),
                     {QStringLiteral("-b"), QStringLiteral("-c"), file("passwords"), kUser,
                      kPassword}))
                return false;
            config += "allow_anonymous false\npassword_file " + file("passwords").toUtf8() + "\n";
        } else {
            config += "allow_anonymous true\n";
        }
        if (kind == Kind::Tls) {
            if (!makeCertificates())
                return false;
            config += "cafile " + caFile().toUtf8() + "\ncertfile " + file("server.crt").toUtf8() +
                      "\nkeyfile " + file("server.key").toUtf8() + "\n";
        }
        QFile out(file("conf"));
        return out.open(QIODevice::WriteOnly) && out.write(config) == config.size();
    }

    QTemporaryDir m_dir;
    int m_port = 0;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_log;
};

} // namespace ostrel::test
