#include "app/ActivityStatsCommand.h"

#include "app/AppConfig.h"
#include "app/DeskBusAdaptor.h"
#include "app/DeskCommandLine.h"
#include "store/ActivityStore.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QJsonDocument>
#include <QTextStream>

namespace ostrel {

namespace {

QDBusMessage call(const QDBusConnection& connection, const QString& interface,
                  const QString& method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QLatin1String(config::kDBusService), QLatin1String(config::kDeskPath), interface, method);
    message.setArguments(arguments);
    return connection.call(message, QDBus::Block, DeskCommandLine::kCallTimeoutMs);
}

} // namespace

ActivityStatsCommand::ActivityStatsCommand(QDBusConnection connection, QTextStream& out,
                                           QTextStream& err)
    : m_connection(std::move(connection)), m_out(out), m_err(err) {
    qDBusRegisterMetaType<ActivityDays>();
}

int ActivityStatsCommand::run(const QString& daysText, bool json) {
    bool isNumber = true;
    const int days = daysText.isEmpty() ? kDefaultDays : daysText.toInt(&isNumber);
    if (!isNumber || days < 1 || days > ActivityStore::kKeptDays) {
        m_err << "Not a number of days: \"" << daysText << "\" (give 1 to "
              << ActivityStore::kKeptDays << ")." << Qt::endl;
        return DeskCommandLine::kInvalidArgument;
    }
    const std::optional<ActivityReport> running = fromRunningApplication(days);
    const ActivityReport report = running ? *running : fromFile(days);
    if (json)
        m_out << QJsonDocument(report.toJson()).toJson(QJsonDocument::Compact) << Qt::endl;
    else
        m_out << report.toText() << Qt::flush;
    return DeskCommandLine::kOk;
}

std::optional<ActivityReport> ActivityStatsCommand::fromRunningApplication(int days) const {
    const QString desk = QLatin1String(config::kDeskInterface);
    const QDBusMessage properties =
        call(m_connection, QStringLiteral("org.freedesktop.DBus.Properties"),
             QStringLiteral("GetAll"), {desk});
    const QDBusMessage history = call(m_connection, desk, QStringLiteral("History"), {uint(days)});
    if (properties.type() != QDBusMessage::ReplyMessage ||
        history.type() != QDBusMessage::ReplyMessage)
        return std::nullopt;
    const QVariantMap values = qdbus_cast<QVariantMap>(properties.arguments().value(0));
    ActivityDays list;
    history.arguments().value(0).value<QDBusArgument>() >> list;
    ActivityReport report;
    for (const QVariantMap& day : list)
        report.days.append(ActivityReport::dayFromJson(QJsonObject::fromVariantMap(day)));
    if (report.days.isEmpty())
        return std::nullopt;
    report.goalMs = values.value(QStringLiteral("StandingGoal")).toLongLong() * 1000;
    report.streakDays = values.value(QStringLiteral("StandingStreak")).toInt();
    report.thresholdCm = values.value(QStringLiteral("StandingThreshold")).toDouble();
    return report;
}

ActivityReport ActivityStatsCommand::fromFile(int days) {
    const ActivityStore store(ActivityStore::defaultPath(), ActivityStore::Mode::ReadOnly);
    return ActivityReport::fromStore(store, QDate::currentDate(), days);
}

} // namespace ostrel
