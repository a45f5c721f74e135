#include "settings/ViewUnit.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "settings/SettingRowView.h"
#include "settings/SystemSettingRecord.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

ViewUnit::ViewUnit(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Unit")), m_unit(SystemSettingRecord::load().unit.value_or("")),
      m_inches(new SettingRowView({}, tr("Inches"), this)),
      m_centimeters(new SettingRowView({}, tr("Centimeters"), this)),
      m_confirm(new QPushButton(tr("Confirm"), this)) {
    connect(m_inches, &QAbstractButton::clicked, this, [this] { actionSelectUnit(kInchesTag); });
    connect(m_centimeters, &QAbstractButton::clicked, this,
            [this] { actionSelectUnit(kCentimetersTag); });
    connect(m_confirm, &QPushButton::clicked, this, &ViewUnit::actionConfirm);
    m_confirm->setDefault(true);

    contentLayout()->addWidget(m_inches);
    contentLayout()->addWidget(m_centimeters);
    contentLayout()->addStretch();
    contentLayout()->addWidget(m_confirm, 0, Qt::AlignHCenter);
    refreshSelection();
}

void ViewUnit::actionSelectUnit(int tag) {
    m_unit = std::to_string(tag - kCentimetersTag);
    refreshSelection();
}

void ViewUnit::actionConfirm() {
    SystemSettingRecord::change(&Object_SystemSetting::unit, m_unit);
    NotificationCenter::defaultCenter().post(QString::fromLatin1(notifications::kUnitChange));
    actionBack();
}

void ViewUnit::refreshSelection() {
    const QString tick = QStringLiteral("setting_select");
    const bool inches = m_unit == "1";
    m_inches->setAccessoryImage(inches ? tick : QString());
    m_centimeters->setAccessoryImage(inches ? QString() : tick);
}

} // namespace ostrel
