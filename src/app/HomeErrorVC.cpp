#include "HomeErrorVC.h"

#include "LocalPreference.h"
#include "OMBaseModalWindow.h"
#include "platform/DesktopNotifications.h"
#include "platform/Platform.h"
#include "widgets/OMImage.h"
#include "widgets/OMWindowIdentifier.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QUrl>

namespace ostrel {

namespace {

QLabel* centredLabel(const QString& text, int pointSize, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    QFont font = label->font();
    font.setPointSize(pointSize);
    label->setFont(font);
    return label;
}

} // namespace

HomeErrorVC::HomeErrorVC(long errorCode, QWidget* parent)
    : QWidget(parent), m_errorCode(errorCode) {
    setFixedWidth(420);
    auto* picture = new QLabel(this);
    picture->setAlignment(Qt::AlignCenter);
    picture->setPixmap(
        OMImage::pixmap(QStringLiteral("home_error_logo"), 1.0, devicePixelRatioF()));

    auto* errorCodeLabel = centredLabel(errorCodeText(errorCode), 16, this);
    errorCodeLabel->setObjectName(QStringLiteral("errorCodeLabel"));
    auto* titleLabel = centredLabel(titleText(errorCode), 13, this);
    titleLabel->setObjectName(QStringLiteral("titleLabel"));

    auto* help = new QPushButton(tr("获取帮助"), this);
    help->setObjectName(QStringLiteral("helpButton"));
    auto* understood = new QPushButton(tr("我知道了"), this);
    understood->setObjectName(QStringLiteral("understoodButton"));
    understood->setDefault(true);
    connect(help, &QPushButton::clicked, this, &HomeErrorVC::actionHelp);
    connect(understood, &QPushButton::clicked, this, &HomeErrorVC::actionUnderstood);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addWidget(understood);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(14);
    layout->addWidget(picture);
    layout->addWidget(errorCodeLabel);
    layout->addWidget(titleLabel);
    layout->addSpacing(8);
    layout->addLayout(buttons);
}

QString HomeErrorVC::errorCodeText(long code) {
    switch (code) {
    case kCodeChildLock:
        return tr("升降桌故障,错误代码LOC");
    case kCodeReset:
        return tr("升降桌故障,错误代码RST");
    case kCodeSlideDown:
        return tr("升降桌故障,错误代码-0L");
    default:
        // The number goes in as at least two digits whatever the translation's wording.
        return tr("升降桌故障,错误代码E%02ld")
            .replace(QLatin1String("%02ld"), QString::asprintf("%02ld", code));
    }
}

bool HomeErrorVC::isResetCode(long code) {
    return DeskStatus::needsReset(code);
}

QString HomeErrorVC::titleText(long code) {
    if (code == 1 || code == 2)
        return tr("设备温度异常，等待18分钟后再使用");
    if (code == 3 || code == 4)
        return tr("设备需要进行“自动回退”操作");
    if (isResetCode(code))
        return tr("设备需要进行“复位”操作");
    if (code == 30)
        return tr("六轴传感器故障");
    if (code == kCodeChildLock)
        return tr("设备处于童锁状态");
    if (code == kCodeSlideDown)
        return tr("设备下滑故障");
    return tr("设备状态异常");
}

QString HomeErrorVC::windowIdentifier() {
    return OMWindowIdentifier::prefix() + QStringLiteral(".HomeErrorWindowIdentifier");
}

QWidget* HomeErrorVC::makeWindow(long errorCode) {
    auto* window = new OMBaseModalWindow(QSize());
    OMWindowIdentifier::assign(window, windowIdentifier());
    window->setContent(new HomeErrorVC(errorCode));
    window->centerOnScreen();
    return window;
}

QUrl HomeErrorVC::helpPage() {
    const QString suffix =
        LocalPreference::translationSuffix(LocalPreference::getCurrentBundleWithLocalizeString());
    const QString shipped = QStringLiteral(":/help/desk-faults_%1.html").arg(suffix);
    // A browser cannot read the application's resources: the page goes to a file first.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    const QString path = folder + QStringLiteral("/desk-faults_%1.html").arg(suffix);
    QDir().mkpath(folder);
    QFile::remove(path);
    QFile::copy(shipped, path);
    return QUrl::fromLocalFile(path);
}

void HomeErrorVC::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    Platform::get<DesktopNotifications>().removeAllDelivered();
}

void HomeErrorVC::actionHelp() {
    QDesktopServices::openUrl(helpPage());
}

void HomeErrorVC::actionUnderstood() {
    window()->close();
}

} // namespace ostrel
