#include "app/DeskCommandLine.h"

#include "app/ActivityStatsCommand.h"
#include "app/AppConfig.h"
#include "app/DeskBusAdaptor.h"

#include <QCommandLineParser>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>
#include <array>
#include <cmath>
#include <cstring>

namespace ostrel {

namespace {

struct Verb {
    const char* name;
    const char* valueName; // empty for a verb without a value
    const char* description;
};

constexpr std::array kVerbs{
    Verb{"status", "", "Print the connected desk's height and state, then exit."},
    Verb{"move-to", "cm", "Move the connected desk to a height in centimetres, then exit."},
    Verb{"preset", "name", "Move the connected desk to a preset (sit, stand, m1, m2), then exit."},
    Verb{"stop", "", "Stop the connected desk, then exit."},
    Verb{"stats", "", "Print standing time: today, the goal, the streak and recent days."},
    Verb{"up", "", "As the Up shortcut: move the desk up, or stop it if it moves, then exit."},
    Verb{"down", "",
         "As the Down shortcut: move the desk down, or stop it if it moves, then exit."},
    Verb{"release", "",
         "Let go of the desk, so that a phone or another computer can connect, then exit."},
    Verb{"connect", "", "Connect the released desk again once it is in range, then exit."},
};
constexpr char kDays[] = "days";
constexpr char kJson[] = "json";
constexpr char kDBusProperties[] = "org.freedesktop.DBus.Properties";

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

PresetHeights presetsOf(const QVariant& value) {
    PresetHeights presets;
    value.value<QDBusArgument>() >> presets;
    return presets;
}

QString describe(const QVariantMap& properties) {
    const double cm = properties.value(QStringLiteral("Height")).toDouble();
    const bool inches = properties.value(QStringLiteral("Unit")).toString() == u"in";
    const QString height = inches ? QStringLiteral("%1 in").arg(cm / 2.54, 0, 'f', 1)
                                  : QStringLiteral("%1 cm").arg(cm, 0, 'f', 1);
    const bool moving = properties.value(QStringLiteral("Moving")).toBool();
    return QStringLiteral("%1: %2, %3")
        .arg(properties.value(QStringLiteral("DeskName")).toString(),
             cm > 0 ? height : QStringLiteral("height not known yet"),
             moving ? QStringLiteral("moving") : QStringLiteral("still"));
}

QJsonObject json(const QVariantMap& properties) {
    QJsonObject presets;
    const PresetHeights heights = presetsOf(properties.value(QStringLiteral("Presets")));
    for (auto it = heights.begin(); it != heights.end(); ++it)
        presets.insert(it.key(), int(it.value()));
    return {{QStringLiteral("connected"), properties.value(QStringLiteral("Connected")).toBool()},
            {QStringLiteral("desk"), properties.value(QStringLiteral("DeskName")).toString()},
            {QStringLiteral("height_cm"), properties.value(QStringLiteral("Height")).toDouble()},
            {QStringLiteral("unit"), properties.value(QStringLiteral("Unit")).toString()},
            {QStringLiteral("moving"), properties.value(QStringLiteral("Moving")).toBool()},
            {QStringLiteral("presets"), presets}};
}

// A verb's value, or for --stats the number of days.
QString argumentOf(const QCommandLineParser& parser, const Verb& verb) {
    if (std::strcmp(verb.name, "stats") == 0)
        return parser.value(text(kDays));
    return *verb.valueName ? parser.value(text(verb.name)) : QString();
}

} // namespace

void DeskCommandLine::addOptions(QCommandLineParser& parser) {
    for (const Verb& verb : kVerbs)
        parser.addOption(
            QCommandLineOption(text(verb.name), text(verb.description), text(verb.valueName)));
    parser.addOption(QCommandLineOption(
        text(kJson), QStringLiteral("With --status or --stats: print one JSON object.")));
    parser.addOption(QCommandLineOption(
        text(kDays), QStringLiteral("With --stats: how many days to list (default 7)."),
        QStringLiteral("n")));
}

std::optional<DeskCommandLine::Request>
DeskCommandLine::requestFrom(const QCommandLineParser& parser) {
    for (const Verb& verb : kVerbs) {
        const QString name = text(verb.name);
        if (parser.isSet(name))
            return Request{name, argumentOf(parser, verb), parser.isSet(text(kJson))};
    }
    return std::nullopt;
}

bool DeskCommandLine::isRequested(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        // Help and version only print, so they need no display either.
        for (const char* informational : {"-h", "--help", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], informational) == 0)
                return true;
        }
        for (const Verb& verb : kVerbs) {
            const std::string option = std::string("--") + verb.name;
            if (argv[i] == option ||
                std::strncmp(argv[i], (option + "=").c_str(), option.size() + 1) == 0)
                return true;
        }
    }
    return false;
}

DeskCommandLine::DeskCommandLine(QDBusConnection connection, QTextStream& out, QTextStream& err)
    : m_connection(std::move(connection)), m_out(out), m_err(err) {
    qDBusRegisterMetaType<PresetHeights>();
}

int DeskCommandLine::run(const Request& request) {
    if (request.verb == u"status")
        return status(request.json);
    if (request.verb == u"stats")
        return ActivityStatsCommand(m_connection, m_out, m_err).run(request.argument, request.json);
    if (request.verb == u"move-to")
        return moveTo(request.argument);
    if (request.verb == u"preset")
        return call(QStringLiteral("RecallPreset"), {request.argument},
                    QStringLiteral("Moving to the %1 preset").arg(request.argument.toLower()));
    if (request.verb == u"up" || request.verb == u"down")
        return toggle(request.verb);
    if (request.verb == u"release")
        return call(QStringLiteral("Release"), {}, QStringLiteral("Desk released"));
    if (request.verb == u"connect")
        return call(QStringLiteral("Connect"), {}, QStringLiteral("Connecting to the desk"));
    return call(QStringLiteral("Stop"), {}, QStringLiteral("Stopped"));
}

int DeskCommandLine::toggle(const QString& direction) {
    const QString method = direction == u"up" ? QStringLiteral("Up") : QStringLiteral("Down");
    const QDBusMessage reply = send(text(config::kDeskInterface), method, {});
    if (reply.type() != QDBusMessage::ReplyMessage)
        return failed(QDBusError(reply));
    m_out << (reply.arguments().value(0).toBool() ? QStringLiteral("Moving %1").arg(direction)
                                                  : QStringLiteral("Stopped"))
          << Qt::endl;
    return kOk;
}

int DeskCommandLine::status(bool asJson) {
    const QDBusMessage reply =
        send(text(kDBusProperties), QStringLiteral("GetAll"), {text(config::kDeskInterface)});
    if (reply.type() != QDBusMessage::ReplyMessage)
        return failed(QDBusError(reply));
    const QVariantMap properties = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    const bool connected = properties.value(QStringLiteral("Connected")).toBool();
    if (asJson)
        m_out << QJsonDocument(json(properties)).toJson(QJsonDocument::Compact) << Qt::endl;
    else if (connected)
        m_out << describe(properties) << Qt::endl;
    else if (properties.value(QStringLiteral("Released")).toBool())
        m_err << "The desk is released; --connect connects it again." << Qt::endl;
    else
        m_err << "No desk is connected." << Qt::endl;
    return connected ? kOk : kNotConnected;
}

int DeskCommandLine::moveTo(const QString& argument) {
    bool isNumber = false;
    const double cm = argument.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(cm)) {
        m_err << "Not a height: \"" << argument << "\" (give centimetres, e.g. 110 or 72.5)."
              << Qt::endl;
        return kInvalidArgument;
    }
    return call(QStringLiteral("MoveTo"), {cm},
                QStringLiteral("Moving to %1 cm").arg(cm, 0, 'f', 1));
}

int DeskCommandLine::call(const QString& method, const QVariantList& arguments,
                          const QString& done) {
    const QDBusMessage reply = send(text(config::kDeskInterface), method, arguments);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return failed(QDBusError(reply));
    m_out << done << Qt::endl;
    return kOk;
}

QDBusMessage DeskCommandLine::send(const QString& interface, const QString& method,
                                   const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        text(config::kDBusService), text(config::kDeskPath), interface, method);
    message.setArguments(arguments);
    return m_connection.call(message, QDBus::Block, kCallTimeoutMs);
}

int DeskCommandLine::failed(const QDBusError& error) {
    const QString name = error.name();
    if (name == text(config::kNotConnectedError)) {
        m_err << error.message() << Qt::endl;
        return kNotConnected;
    }
    if (error.type() == QDBusError::InvalidArgs) {
        m_err << error.message() << Qt::endl;
        return kInvalidArgument;
    }
    if (!m_connection.isConnected() || error.type() == QDBusError::ServiceUnknown ||
        error.type() == QDBusError::NoReply || error.type() == QDBusError::Disconnected) {
        m_err << "Ostrel Motion is not running." << Qt::endl;
        return kNotRunning;
    }
    m_err << error.message() << Qt::endl;
    return kFailed;
}

} // namespace ostrel
