#include "homeautomation/MqttClient.h"

#include <QFile>
#include <QFutureWatcher>
#include <QLoggingCategory>
#include <QSocketNotifier>
#include <QtConcurrent/QtConcurrentRun>
#include <csignal>
#include <mosquitto.h>
#include <mutex>

namespace ostrel {

namespace {

Q_LOGGING_CATEGORY(lcMqtt, "ostrel.mqtt")

// Connection refused: bad user name or password (3.1.1 code 4), not authorised (5).
constexpr int kBadCredentials = 4;
constexpr int kNotAuthorised = 5;
constexpr int kQos = 1;
// The system's certificate authorities, where no CA file is given.
constexpr char kSystemCaPath[] = "/etc/ssl/certs";

void initLibrary() {
    static std::once_flag once;
    std::call_once(once, [] {
        mosquitto_lib_init();
        // libmosquitto writes with write(2): a broker that hung up first would otherwise end the
        // whole application with SIGPIPE instead of failing the write.
        std::signal(SIGPIPE, SIG_IGN);
    });
}

} // namespace

// The libmosquitto object, shared with a connect running on a worker thread: whichever lets go
// last destroys it, and only one of them uses it at a time.
struct MqttClient::Handle {
    mosquitto* mosq;
    explicit Handle(mosquitto* created) : mosq(created) {}
    ~Handle() { mosquitto_destroy(mosq); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
};

MqttClient::MqttClient(QObject* parent) : QObject(parent) {
    initLibrary();
    m_keepAlive.setInterval(1000);
    connect(&m_keepAlive, &QTimer::timeout, this, &MqttClient::keepAlive);
}

MqttClient::~MqttClient() {
    stop();
}

void MqttClient::start(const Options& options) {
    stop();
    m_options = options;
    m_backoff = kFirstRetry;
    if (configure(options))
        connectNow();
}

bool MqttClient::configure(const Options& options) {
    mosquitto* mosq = mosquitto_new(options.clientId.toUtf8().constData(), true, this);
    if (!mosq) {
        refuse(tr("The MQTT client could not be created."));
        return false;
    }
    m_handle = std::make_shared<Handle>(mosq);
    mosquitto_connect_callback_set(mosq, &MqttClient::onConnect);
    mosquitto_message_callback_set(mosq, &MqttClient::onMessage);
    if (!options.user.isEmpty())
        mosquitto_username_pw_set(
            mosq, options.user.toUtf8().constData(),
            options.password.isEmpty() ? nullptr : options.password.toUtf8().constData());
    if (!options.willTopic.isEmpty())
        mosquitto_will_set(mosq, options.willTopic.toUtf8().constData(),
                           int(options.willPayload.size()), options.willPayload.constData(), kQos,
                           true);
    if (options.tls) {
        if (!options.caFile.isEmpty() && !QFile::exists(options.caFile)) {
            refuse(tr("The CA file %1 does not exist.").arg(options.caFile));
            return false;
        }
        const QByteArray caFile = QFile::encodeName(options.caFile);
        const int result = mosquitto_tls_set(mosq, caFile.isEmpty() ? nullptr : caFile.constData(),
                                             caFile.isEmpty() ? kSystemCaPath : nullptr, nullptr,
                                             nullptr, nullptr);
        if (result != MOSQ_ERR_SUCCESS) {
            refuse(tr("TLS could not be set up: %1")
                       .arg(QString::fromUtf8(mosquitto_strerror(result))));
            return false;
        }
    }
    return true;
}

void MqttClient::stop() {
    m_retry.cancel();
    ++m_generation; // a connect still running on its thread is forgotten
    if (m_handle && m_state == State::Connected) {
        mosquitto_disconnect(m_handle->mosq);
        // Queued messages (the goodbye among them) and the disconnect go out now, as far as the
        // socket takes them without waiting.
        for (int step = 0; step < 8 && mosquitto_want_write(m_handle->mosq); ++step) {
            if (mosquitto_loop_write(m_handle->mosq, 1) != MOSQ_ERR_SUCCESS)
                break;
        }
    }
    unwatchSocket();
    m_handle.reset();
    setState(State::Off);
}

void MqttClient::connectNow() {
    setState(State::Connecting, m_problem);
    const int generation = ++m_generation;
    auto* watcher = new QFutureWatcher<int>(this);
    connect(watcher, &QFutureWatcher<int>::finished, this, [this, watcher, generation] {
        connectDone(generation, watcher->result());
        watcher->deleteLater();
    });
    watcher->setFuture(QtConcurrent::run(
        [handle = m_handle, host = m_options.host.toUtf8(), port = m_options.port] {
            return mosquitto_connect_async(handle->mosq, host.constData(), port, kKeepAliveSeconds);
        }));
}

void MqttClient::connectDone(int generation, int result) {
    if (generation != m_generation)
        return;
    if (result != MOSQ_ERR_SUCCESS) {
        connectionLost(failure(result));
        return;
    }
    watchSocket();
    updateWriteInterest();
}

void MqttClient::watchSocket() {
    const int fd = mosquitto_socket(m_handle->mosq);
    m_read = new QSocketNotifier(fd, QSocketNotifier::Read, this);
    m_write = new QSocketNotifier(fd, QSocketNotifier::Write, this);
    connect(m_read, &QSocketNotifier::activated, this, &MqttClient::readReady);
    connect(m_write, &QSocketNotifier::activated, this, &MqttClient::writeReady);
    m_keepAlive.start();
}

// Before libmosquitto's socket is closed or reused, so no notifier watches a stale descriptor.
// Disabled at once, deleted later: this may run inside a notifier's own signal.
void MqttClient::unwatchSocket() {
    m_keepAlive.stop();
    for (QSocketNotifier* notifier : {m_read, m_write}) {
        if (notifier) {
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    }
    m_read = m_write = nullptr;
}

void MqttClient::readReady() {
    afterStep(mosquitto_loop_read(m_handle->mosq, 1));
}

void MqttClient::writeReady() {
    afterStep(mosquitto_loop_write(m_handle->mosq, 1));
}

void MqttClient::keepAlive() {
    afterStep(mosquitto_loop_misc(m_handle->mosq));
}

void MqttClient::afterStep(int result) {
    const std::optional<int> connack = std::exchange(m_connack, std::nullopt);
    if (connack == kBadCredentials || connack == kNotAuthorised) {
        refuse(tr("The broker refused the user name or password."));
        return;
    }
    if (connack && *connack != 0) {
        connectionLost(QString::fromUtf8(mosquitto_connack_string(*connack)));
        return;
    }
    if (result != MOSQ_ERR_SUCCESS) {
        connectionLost(failure(result));
        return;
    }
    if (connack) {
        m_backoff = kFirstRetry;
        setState(State::Connected);
        emit connected();
    }
    updateWriteInterest();
}

QString MqttClient::failure(int result) {
    switch (result) {
    case MOSQ_ERR_EAI:
        return tr("The broker's host name is unknown.");
    case MOSQ_ERR_ERRNO:
        return tr("The broker cannot be reached.");
    case MOSQ_ERR_TLS:
        return tr("The TLS handshake failed: check the CA file and the host name.");
    case MOSQ_ERR_CONN_LOST:
        return tr("The connection to the broker was lost.");
    default:
        return QString::fromUtf8(mosquitto_strerror(result));
    }
}

void MqttClient::connectionLost(const QString& why) {
    unwatchSocket();
    qCInfo(lcMqtt).noquote() << "Connection to" << m_options.host << "lost or failed:" << why
                             << "- retrying in" << m_backoff.count() << "ms";
    m_retryDelay = m_backoff;
    setState(State::Retrying, why);
    m_retry = Scheduler::instance().after(m_retryDelay, this, [this] { connectNow(); });
    m_backoff = std::min(m_backoff * 2, kLongestRetry);
}

void MqttClient::refuse(const QString& why) {
    unwatchSocket();
    qCWarning(lcMqtt).noquote() << "Not connecting to" << m_options.host << ":" << why;
    ++m_generation;
    setState(State::Refused, why);
}

void MqttClient::setState(State state, const QString& problem) {
    if (state == m_state && problem == m_problem)
        return;
    m_state = state;
    m_problem = problem;
    emit stateChanged(state);
}

void MqttClient::updateWriteInterest() {
    if (m_write)
        m_write->setEnabled(mosquitto_want_write(m_handle->mosq));
}

bool MqttClient::publish(const QString& topic, const QByteArray& payload, bool retain) {
    if (m_state != State::Connected)
        return false;
    const int result = mosquitto_publish(m_handle->mosq, nullptr, topic.toUtf8().constData(),
                                         int(payload.size()), payload.constData(), kQos, retain);
    updateWriteInterest();
    return result == MOSQ_ERR_SUCCESS;
}

bool MqttClient::subscribe(const QString& filter) {
    if (m_state != State::Connected)
        return false;
    const int result =
        mosquitto_subscribe(m_handle->mosq, nullptr, filter.toUtf8().constData(), kQos);
    updateWriteInterest();
    return result == MOSQ_ERR_SUCCESS;
}

// Called inside a read step; the step's end (afterStep) acts on the answer.
void MqttClient::onConnect(mosquitto*, void* self, int code) {
    static_cast<MqttClient*>(self)->m_connack = code;
}

// Called inside a read step: handed on from the event loop, so a handler may publish, stop or
// restart the client freely.
void MqttClient::onMessage(mosquitto*, void* self, const mosquitto_message* message) {
    auto* client = static_cast<MqttClient*>(self);
    const QString topic = QString::fromUtf8(message->topic);
    const QByteArray payload(static_cast<const char*>(message->payload), message->payloadlen);
    const bool retained = message->retain;
    QMetaObject::invokeMethod(
        client,
        [client, topic, payload, retained] {
            emit client->messageReceived(topic, payload, retained);
        },
        Qt::QueuedConnection);
}

} // namespace ostrel
