#include "MosquittoBroker.h"

#include "app/RealTimeWait.h"

#include <QFile>
#include <QTcpServer>
#include <csignal>
#include <pwd.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace ostrel::test {

namespace {

constexpr int kStartWaitMs = 10000;

bool run(const QString& program, const QStringList& arguments, const QString& directory) {
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start(program, arguments);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

int freePort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

} // namespace

MosquittoBroker::MosquittoBroker(Kind kind) : m_port(freePort()) {
    writeConfig(kind);
}

MosquittoBroker::~MosquittoBroker() {
    stop();
}

bool MosquittoBroker::makeCertificates() {
    const auto openssl = [this](const char* arguments) {
        return run(QStringLiteral("openssl"), QString::fromLatin1(arguments).split(u' '),
                   m_dir.path());
    };
    return openssl("req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=TestCA -keyout ca.key "
                   "-out ca.crt") &&
           openssl("req -newkey rsa:2048 -nodes -subj /CN=localhost -keyout server.key -out "
                   "server.csr") &&
           openssl("x509 -req -in server.csr -CA ca.crt -CAkey ca.key -CAcreateserial -days 1 "
                   "-extfile san.cnf -out server.crt");
}

bool MosquittoBroker::writeConfig(Kind kind) {
    // Run as root, mosquitto would become another user, who cannot read this run's files.
    const passwd* self = getpwuid(getuid());
    QByteArray config = "listener " + QByteArray::number(m_port) +
                        " 127.0.0.1\npersistence false\nlog_dest stderr\nuser " +
                        QByteArray(self ? self->pw_name : "root") + "\n";
    if (kind == Kind::Password) {
        const QString passwords = m_dir.filePath(QStringLiteral("passwords"));
        if (!run(QStringLiteral(OSTREL_MOSQUITTO_PASSWD),
                 {QStringLiteral("-b"), QStringLiteral("-c"), passwords, kUser, kPassword},
                 m_dir.path()))
            return false;
        config += "allow_anonymous false\npassword_file " + passwords.toUtf8() + "\n";
    } else {
        config += "allow_anonymous true\n";
    }
    if (kind == Kind::Tls) {
        QFile san(m_dir.filePath(QStringLiteral("san.cnf")));
        if (!san.open(QIODevice::WriteOnly) || san.write("subjectAltName=DNS:localhost\n") < 0)
            return false;
        san.close();
        if (!makeCertificates())
            return false;
        config += "cafile " + caFile().toUtf8() + "\ncertfile " +
                  m_dir.filePath(QStringLiteral("server.crt")).toUtf8() + "\nkeyfile " +
                  m_dir.filePath(QStringLiteral("server.key")).toUtf8() + "\n";
    }
    QFile file(m_dir.filePath(QStringLiteral("mosquitto.conf")));
    return file.open(QIODevice::WriteOnly) && file.write(config) == config.size();
}

bool MosquittoBroker::start() {
    stop();
    m_log.clear();
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(m_process.get(), &QProcess::readyRead, m_process.get(),
                     [this] { m_log += m_process->readAll(); });
    // A test that crashes must not leave its broker behind.
    m_process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_process->start(QStringLiteral(OSTREL_MOSQUITTO),
                     {QStringLiteral("-c"), m_dir.filePath(QStringLiteral("mosquitto.conf"))});
    return waitUntil(
               [this] {
                   return m_log.contains(" running") || m_process->state() == QProcess::NotRunning;
               },
               kStartWaitMs) &&
           m_process->state() == QProcess::Running;
}

void MosquittoBroker::stop() {
    if (!m_process)
        return;
    m_process->terminate();
    m_process->waitForFinished(5000);
    m_process.reset();
}

} // namespace ostrel::test
