#include "settings/ViewIntelligentControl.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/CommandType.h"
#include "session/DeskControlVC.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskSession.h"
#include "settings/AntiCollisionHelpVC.h"
#include "settings/AntiCollisionSetting.h"
#include "settings/AutomaticResetHelpVC.h"
#include "settings/CurrentDeviceRecord.h"
#include "settings/MemoryKeySequence.h"
#include "settings/PresetBarView.h"
#include "settings/SettingRowView.h"
#include "settings/SystemSettingRecord.h"
#include "settings/ViewSensitivity.h"
#include "store/CurrentDeviceStore.h"
#include "widgets/OMImageButton.h"
#include "widgets/OMSwitchButton.h"

#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kHelpButtonSize{20, 20};
constexpr QSize kSwitchSize{44, 24};

// Section order on the page, and the preset key each one stores.
constexpr std::array<int, ViewIntelligentControl::kSectionCount> kSectionKeys = {
    command::presetKey(1), command::presetKey(0), command::presetKey(2), command::presetKey(3)};
constexpr int kSittingSection = 1;

int sectionSlot(int section) {
    return command::presetSlot(kSectionKeys[std::size_t(section)]);
}

OMImageButton* helpButton(QWidget* parent) {
    auto* button = new OMImageButton(QStringLiteral("control_help"), parent);
    button->setFixedSize(kHelpButtonSize);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

// The session's one sequence: it outlives the page, since closing the page must not cut the
// desk's keys short.
MemoryKeySequence* sessionSequence(DeskControlVC* fatherVC, QObject* page) {
    QObject* owner = fatherVC ? static_cast<QObject*>(&fatherVC->session()) : page;
    if (auto* running = owner->findChild<MemoryKeySequence*>(QString(), Qt::FindDirectChildrenOnly))
        return running;
    return new MemoryKeySequence(owner);
}

} // namespace

ViewIntelligentControl::ViewIntelligentControl(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Intelligent control")),
      m_sequence(sessionSequence(fatherVC, this)) {
    m_objectSystemSetting = SystemSettingRecord::load();
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(buildContent());
    contentLayout()->addWidget(scroll);
    refreshContentByDeviceInfo();
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(notifications::kSensitivityChange),
        [this](const QVariant&) { refreshContentByDeviceInfo(); });
}

QWidget* ViewIntelligentControl::buildContent() {
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 8, 0);
    layout->setSpacing(10);
    layout->addWidget(headingLabel(tr("Height presets"), content));
    for (int section = 0; section < kSectionCount; ++section)
        layout->addWidget(buildPresetSection(section, content));
    layout->addSpacing(8);
    layout->addWidget(buildAntiCollision(content));
    layout->addSpacing(8);
    layout->addWidget(buildAutomaticReset(content));
    layout->addStretch();
    return content;
}

QWidget* ViewIntelligentControl::buildPresetSection(int section, QWidget* parent) {
    static const char* const kNames[kSectionCount] = {QT_TR_NOOP("Standing"), QT_TR_NOOP("Sitting"),
                                                      QT_TR_NOOP("M1"), QT_TR_NOOP("M2")};
    auto* box = new QWidget(parent);
    Section& parts = m_sections[std::size_t(section)];
    parts.value = new QLabel(box);
    parts.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    parts.bar = new PresetBarView(box);
    parts.store = new QPushButton(tr("Current altitude"), box);
    const int tag = kFirstTag + section;
    connect(parts.store, &QPushButton::clicked, this, [this, tag] { actionSetCurrentHeight(tag); });

    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(new QLabel(tr(kNames[section]), box), 0, 0);
    grid->addWidget(parts.value, 0, 1);
    grid->addWidget(parts.bar, 1, 0, 1, 2);
    grid->addWidget(parts.store, 0, 2, 2, 1, Qt::AlignVCenter);
    grid->setColumnStretch(0, 1);
    return box;
}

QWidget* ViewIntelligentControl::buildAntiCollision(QWidget* parent) {
    auto* box = new QWidget(parent);
    QLabel* title = headingLabel(tr("Anti-collision function"), box);
    m_antiHelp = helpButton(box);
    connect(m_antiHelp, &QAbstractButton::clicked, this, &ViewIntelligentControl::actionAntiHelp);
    m_antiSwitch = new OMSwitchButton(box);
    m_antiSwitch->setFixedSize(kSwitchSize);
    // The record decides the state; a click only asks for the change.
    m_antiSwitch->setCheckable(false);
    connect(m_antiSwitch, &QAbstractButton::clicked, this,
            &ViewIntelligentControl::actionAntiSwitch);
    m_sensitivityRow = new SettingRowView({}, tr("Sensitivity"), box);
    m_sensitivityRow->setAccessoryImage(QStringLiteral("setting_arrow"));
    connect(m_sensitivityRow, &QAbstractButton::clicked, this,
            &ViewIntelligentControl::actionSelectSensitivity);

    auto* header = new QHBoxLayout;
    header->addWidget(title);
    header->addWidget(m_antiHelp);
    header->addStretch();
    header->addWidget(m_antiSwitch);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addWidget(m_sensitivityRow);
    return box;
}

QWidget* ViewIntelligentControl::buildAutomaticReset(QWidget* parent) {
    auto* box = new QWidget(parent);
    QLabel* title = headingLabel(tr("Automatic reset"), box);
    m_resetHelp = helpButton(box);
    connect(m_resetHelp, &QAbstractButton::clicked, this, &ViewIntelligentControl::actionResetHelp);
    auto* text = new QLabel(
        tr("Please ensure there are no obstacles under the desk during this process."), box);
    text->setWordWrap(true);

    auto* header = new QHBoxLayout;
    header->addWidget(title);
    header->addWidget(m_resetHelp);
    header->addStretch();
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(header);
    layout->addWidget(text);
    return box;
}

// ---- Presets ----

void ViewIntelligentControl::actionSetCurrentHeight(int tag) {
    const int section = tag - kFirstTag;
    actionSetMemoryKeyWithtype(section >= 0 && section < kSectionCount
                                   ? kSectionKeys[std::size_t(section)]
                                   : command::presetKey(3));
}

// The keys go to the desk whether or not a height is known; only a known height is recorded,
// the height shown now, once the desk has had every key.
void ViewIntelligentControl::actionSetMemoryKeyWithtype(int key) {
    const float height = fatherVC() ? fatherVC()->session().currentHeight() : 0.0f;
    if (height == 0.0f) {
        m_sequence->start(key);
        return;
    }
    QPointer<ViewIntelligentControl> self(this);
    m_sequence->start(key, [self, text = CurrentDeviceStore::presetsText(
                                      m_memory, command::presetSlot(key), height)] {
        OMBluetoothModel record = CurrentDeviceRecord::load();
        record.memoryHeight = text;
        CurrentDeviceStore::save(record);
        if (self)
            self->refreshContentByDeviceInfo();
        NotificationCenter::defaultCenter().post(
            QString::fromLatin1(notifications::kMemoryKeyChange));
    });
}

void ViewIntelligentControl::refreshContentByDeviceInfo() {
    m_objectBluetooth = CurrentDeviceRecord::load();
    if (const auto presets = CurrentDeviceStore::parsePresets(m_objectBluetooth.memoryHeight))
        m_memory = *presets;
    for (int section = 0; section < kSectionCount; ++section) {
        const auto preset = float(m_memory[std::size_t(sectionSlot(section))] * 10);
        m_sections[std::size_t(section)].value->setText(presetText(section, preset));
        m_sections[std::size_t(section)].bar->setFraction(barFraction(preset));
    }
    m_antiSwitch->setImageName(
        OMSwitchButton::imageNameFor(AntiCollisionSetting::isOn(m_objectBluetooth)));
    m_sensitivityRow->setValueText(
        AntiCollisionSetting::levelName(AntiCollisionSetting::level(m_objectBluetooth)));
}

QString ViewIntelligentControl::presetText(int section, float preset) const {
    if (preset <= 0.0f)
        return tr("Not set");
    const double cm = double(preset) / 10.0;
    if (m_objectSystemSetting.unit != "1")
        return QString::asprintf(qPrintable(tr("%.1f cm")), cm);
    // The sitting line has always had two spaces before its unit.
    const QString format = section == kSittingSection ? tr("%.1f  inches") : tr("%.1f inches");
    return QString::asprintf(qPrintable(format), cm / DeskHeightDisplay::kCmPerInch);
}

double ViewIntelligentControl::barFraction(float preset) const {
    if (preset <= 0.0f || !fatherVC())
        return 0.0;
    const DeskSession& session = fatherVC()->session();
    const int range = session.maxHeight() - session.minHeight();
    return range > 0 ? (double(preset) - session.minHeight()) / range : 0.0;
}

// ---- Anti-collision ----

void ViewIntelligentControl::actionAntiSwitch() {
    m_objectBluetooth = CurrentDeviceRecord::change([](OMBluetoothModel& record) {
        record.encounterResistanceGoBack.emplace(AntiCollisionSetting::isOn(record) ? "0" : "1");
    });
    m_antiSwitch->setImageName(
        OMSwitchButton::imageNameFor(AntiCollisionSetting::isOn(m_objectBluetooth)));
    AntiCollisionSetting::actionSetResistanceGoBack(m_objectBluetooth);
}

void ViewIntelligentControl::actionSelectSensitivity() {
    push(new ViewSensitivity(fatherVC()));
}

void ViewIntelligentControl::actionAntiHelp() {
    push(new AntiCollisionHelpVC(fatherVC()));
}

void ViewIntelligentControl::actionResetHelp() {
    push(new AutomaticResetHelpVC(fatherVC()));
}

} // namespace ostrel
