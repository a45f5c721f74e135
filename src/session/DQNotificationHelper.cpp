#include "session/DQNotificationHelper.h"

#include <QRegularExpression>

namespace ostrel {

namespace {

constexpr qsizetype kClosingTagLength = 4;

} // namespace

DQNotificationHelper& DQNotificationHelper::shareInstance() {
    static DQNotificationHelper helper;
    return helper;
}

void DQNotificationHelper::openNotification() {
    if (isOpen())
        return;
    m_timer =
        Scheduler::instance().every(kPollInterval, this, [this] { actionGetNewNotification(); });
}

void DQNotificationHelper::closeNotification() {
    m_timer.cancel();
    m_timer = {};
}

QString DQNotificationHelper::getZZwithString(const QString& html) {
    QString text = html;
    if (text.size() >= kClosingTagLength)
        text.chop(kClosingTagLength);
    text.replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
    text.replace(QStringLiteral("</p>"), QStringLiteral("\n"));
    static const QRegularExpression tag(QStringLiteral("<[^>]*>"));
    text.remove(tag);
    return text;
}

} // namespace ostrel
