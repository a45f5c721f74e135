#include "settings/ViewSystemSetting.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "settings/SettingRowView.h"
#include "settings/SettingsPages.h"
#include "settings/SystemSettingRecord.h"
#include "settings/ViewUnit.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

std::function<void()>& hotKeyRemover() {
    static std::function<void()> remover;
    return remover;
}

} // namespace

ViewSystemSetting::ViewSystemSetting(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Settings")) {
    initView();
    refreshContentView();
    NotificationCenter::defaultCenter().addObserver(
        this, QString::fromLatin1(notifications::kUnitChange),
        [this](const QVariant&) { refreshContentView(); });
}

ViewSystemSetting::~ViewSystemSetting() {
    NotificationCenter::defaultCenter().removeObserver(this);
}

void ViewSystemSetting::setHotKeyRemover(std::function<void()> remover) {
    hotKeyRemover() = std::move(remover);
}

void ViewSystemSetting::initView() {
    const QString arrow = QStringLiteral("setting_arrow");
    m_unitRow = new SettingRowView({}, tr("Unit"), this);
    m_unitRow->setAccessoryImage(arrow);
    connect(m_unitRow, &QAbstractButton::clicked, this, &ViewSystemSetting::actionSelectUnit);

    // The language follows the system; the row only says which one is in use.
    m_languageRow = new SettingRowView({}, tr("Language"), this);
    m_languageRow->setValueText(tr("English"));
    m_languageRow->setCursor(Qt::ArrowCursor);

    m_shortcutRow = new SettingRowView({}, tr("Shortcut keys"), this);
    m_shortcutRow->setAccessoryImage(arrow);
    connect(m_shortcutRow, &QAbstractButton::clicked, this,
            &ViewSystemSetting::actionSelectShortcut);

    m_homeAutomationRow = new SettingRowView({}, tr("Home automation"), this);
    m_homeAutomationRow->setAccessoryImage(arrow);
    connect(m_homeAutomationRow, &QAbstractButton::clicked, this,
            &ViewSystemSetting::actionSelectHomeAutomation);

    for (QWidget* row : {m_unitRow, m_languageRow, m_shortcutRow, m_homeAutomationRow})
        contentLayout()->addWidget(row);
    m_rememberDesk = new QCheckBox(tr("Remember my desk"), this);
    m_rememberDesk->setToolTip(
        tr("At launch, come back to the desk last used and connect it as soon as it is found"));
    connect(m_rememberDesk, &QCheckBox::clicked, this, &ViewSystemSetting::actionRememberDesk);
    contentLayout()->addWidget(m_rememberDesk, 0, Qt::AlignLeft);
    contentLayout()->addSpacing(12);
    addHeading(tr("Clear cache"));
    m_autoClean = new QCheckBox(tr("Automatically clean when over 200MB"), this);
    connect(m_autoClean, &QCheckBox::clicked, this, &ViewSystemSetting::actionOpenAutoClear);
    contentLayout()->addWidget(m_autoClean);
    contentLayout()->addStretch();
    m_reset = new QPushButton(tr("Restore default settings"), this);
    connect(m_reset, &QPushButton::clicked, this, &ViewSystemSetting::actionReset);
    contentLayout()->addWidget(m_reset, 0, Qt::AlignHCenter);
}

// Shows what is stored now: pages opened on top of this one change the same record.
void ViewSystemSetting::refreshContentView() {
    const Object_SystemSetting setting = SystemSettingRecord::load();
    m_unitRow->setValueText(setting.unit == "1" ? tr("Inches") : tr("Centimeters"));
    m_rememberDesk->setChecked(setting.rememberdesk == "1");
    m_autoClean->setChecked(setting.autocatchclean == "1");
}

void ViewSystemSetting::actionSelectUnit() {
    push(new ViewUnit(fatherVC()));
}

void ViewSystemSetting::actionSelectShortcut() {
    push(SettingsPages::instance().create(SettingsPages::Page::Shortcuts, fatherVC()));
}

void ViewSystemSetting::actionSelectHomeAutomation() {
    push(SettingsPages::instance().create(SettingsPages::Page::HomeAutomation, fatherVC()));
}

void ViewSystemSetting::actionRememberDesk(bool on) {
    SystemSettingRecord::change(&Object_SystemSetting::rememberdesk, on ? "1" : "0");
    refreshContentView();
}

// Cleaning itself waits for the next launch.
void ViewSystemSetting::actionOpenAutoClear(bool on) {
    SystemSettingRecord::change(&Object_SystemSetting::autocatchclean, on ? "1" : "0");
    refreshContentView();
}

// Deliberately no unit notification: the control screen keeps its unit until the next unit
// confirmation or launch.
void ViewSystemSetting::actionReset() {
    SystemSettingRecord::save(Object_SystemSetting{});
    if (hotKeyRemover())
        hotKeyRemover()();
    refreshContentView();
}

} // namespace ostrel
