#include "settings/ColorManageView.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"
#include "protocol/BluetoothProtocol.h"
#include "settings/ColorWellView.h"
#include "store/RecordDictionary.h"
#include "transport/RBBluetoothManager.h"
#include "widgets/OMImage.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kStatusSize{48, 48};
constexpr QSize kSchemeSize{56, 36};

// How the eight effects are pictured here; the desk is told only their numbers.
const std::array<QColor, ColorManageView::kSchemeCount> kSchemeColors = {
    QColor(0xFF, 0x3B, 0x30), QColor(0xFF, 0x95, 0x00), QColor(0xFF, 0xCC, 0x00),
    QColor(0x34, 0xC7, 0x59), QColor(0x00, 0xC7, 0xBE), QColor(0x00, 0x7A, 0xFF),
    QColor(0xAF, 0x52, 0xDE), QColor(0xF2, 0xF2, 0xF7)};

QString swatchStyle(const QColor& color, bool chosen) {
    return QStringLiteral("background-color: %1; border: %2px solid %3; border-radius: 6px;")
        .arg(color.name())
        .arg(chosen ? 3 : 1)
        .arg(chosen ? QStringLiteral("#1C1C1E") : QStringLiteral("#C7C7CC"));
}

} // namespace

ColorManageView::ColorManageView(DeskControlVC* fatherVC, const Object_LightColor& lightColor)
    : OMSettingPage(fatherVC, tr("Strip Light Settings")), m_light(lightColor) {
    contentLayout()->addWidget(buildSwitch());
    contentLayout()->addSpacing(8);
    contentLayout()->addWidget(buildSchemes());
    contentLayout()->addSpacing(8);
    contentLayout()->addWidget(buildWell(), 1);
    refreshContentView();
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(notifications::kLightColorStatusChange),
        [this](const QVariant& object) { refreshContentLightStatus(object.toMap()); });
}

ColorManageView::~ColorManageView() {
    NotificationCenter::defaultCenter().removeObserver(this);
}

QWidget* ColorManageView::buildSwitch() {
    auto* box = new QWidget(this);
    m_status = new QLabel(box);
    m_status->setFixedSize(kStatusSize);
    m_on = new QPushButton(tr("On"), box);
    m_off = new QPushButton(tr("Off"), box);
    for (QPushButton* button : {m_on, m_off})
        button->setCheckable(true);
    connect(m_on, &QPushButton::clicked, this, &ColorManageView::actionLightOpen);
    connect(m_off, &QPushButton::clicked, this, &ColorManageView::actionLightClose);

    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(headingLabel(tr("Light"), box));
    row->addStretch();
    row->addWidget(m_status);
    row->addWidget(m_on);
    row->addWidget(m_off);
    return box;
}

QWidget* ColorManageView::buildSchemes() {
    auto* box = new QWidget(this);
    auto* grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    for (int mode = 1; mode <= kSchemeCount; ++mode) {
        auto* button = new QPushButton(QString::number(mode), box);
        button->setFixedSize(kSchemeSize);
        button->setCursor(Qt::PointingHandCursor);
        const int tag = kFirstSchemeTag + mode - 1;
        connect(button, &QPushButton::clicked, this, [this, tag] { actionSchemeColorSelect(tag); });
        m_schemes[std::size_t(mode - 1)] = button;
        grid->addWidget(button, (mode - 1) / 4, (mode - 1) % 4);
    }
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(headingLabel(tr("Color scheme"), box));
    layout->addLayout(grid);
    return box;
}

QWidget* ColorManageView::buildWell() {
    auto* box = new QWidget(this);
    m_well = new ColorWellView(box);
    m_swatch = new QFrame(box);
    m_swatch->setFixedSize(kSchemeSize);
    connect(m_well, &ColorWellView::colorSelected, this,
            [this](const QColor& color) { changeColorWithMode(kCustomMode, color); });

    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* header = new QHBoxLayout;
    header->addWidget(headingLabel(tr("Color"), box));
    header->addStretch();
    header->addWidget(m_swatch);
    layout->addLayout(header);
    layout->addWidget(m_well, 1);
    return box;
}

// ---- Actions ----

void ColorManageView::actionLightOpen() {
    if (m_light.open != 1) {
        m_light.open = 1;
        actionPushColorToDeskWithMode(m_light.mode, m_light.red, m_light.green, m_light.blue);
    }
    refreshContentView();
}

void ColorManageView::actionLightClose() {
    if (m_light.open != 0) {
        m_light.open = 0;
        actionPushColorToDeskWithMode(m_light.mode, m_light.red, m_light.green, m_light.blue);
    }
    refreshContentView();
}

void ColorManageView::actionSchemeColorSelect(int tag) {
    const int mode = tag - (kFirstSchemeTag - 1);
    if (mode < 1 || mode > kSchemeCount)
        return;
    m_light.mode = mode;
    actionPushColorToDeskWithMode(mode, m_light.red, m_light.green, m_light.blue);
    refreshContentView();
}

void ColorManageView::changeColorWithMode(int mode, const QColor& color) {
    m_light.mode = mode;
    m_light.red = channel(color.redF());
    m_light.green = channel(color.greenF());
    m_light.blue = channel(color.blueF());
    actionPushColorToDeskWithMode(mode, m_light.red, m_light.green, m_light.blue);
    refreshContentView();
}

int ColorManageView::channel(float component) {
    return static_cast<int>(double(component) * 255.0);
}

void ColorManageView::actionPushColorToDeskWithMode(int mode, int red, int green, int blue) {
    if (const auto frame = BluetoothProtocol::cmdForLightStripColorWithSwitchStatus(
            m_light.open, mode, red, green, blue))
        RBBluetoothManager::sharedInstance().writeDataWithCurrentperipheral(*frame, nullptr);
}

// ---- The desk's reports ----

void ColorManageView::refreshContentLightStatus(const QVariantMap& reported) {
    const auto light = fromPropertyForm<Object_LightColor>(reported);
    if (light == m_light)
        return;
    m_light = light;
    Scheduler::instance().after(Scheduler::Duration::zero(), this,
                                [this] { refreshContentView(); });
}

void ColorManageView::refreshContentView() {
    const bool on = m_light.open == 1;
    m_on->setChecked(on);
    m_off->setChecked(!on);
    m_statusImageName = on ? QStringLiteral("color_open") : QStringLiteral("color_close");
    m_status->setPixmap(OMImage::pixmap(m_statusImageName)
                            .scaled(kStatusSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    refreshBackgroundColor();
}

void ColorManageView::refreshBackgroundColor() {
    const bool custom = m_light.mode == kCustomMode;
    const bool effect = m_light.mode >= 1 && m_light.mode <= kSchemeCount;
    m_swatchColor = custom   ? QColor(m_light.red, m_light.green, m_light.blue)
                    : effect ? kSchemeColors[std::size_t(m_light.mode - 1)]
                             : QColor(Qt::transparent);
    m_swatch->setStyleSheet(swatchStyle(m_swatchColor, false));
    if (!custom)
        m_well->clearMark();
    for (int mode = 1; mode <= kSchemeCount; ++mode)
        m_schemes[std::size_t(mode - 1)]->setStyleSheet(
            swatchStyle(kSchemeColors[std::size_t(mode - 1)], mode == m_light.mode));
}

} // namespace ostrel
