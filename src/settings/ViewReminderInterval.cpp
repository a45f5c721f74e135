#include "settings/ViewReminderInterval.h"

#include "session/OMTimeManager.h"
#include "settings/SettingRowView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr int kMinutesFieldWidth = 64;

} // namespace

ViewReminderInterval::ViewReminderInterval(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Reminder interval")) {
    const QString choices[] = {tr("%1min").arg(OMTimeManager::kFixedMinutes[0]), tr("%1h").arg(1),
                               tr("%1h").arg(2)};
    for (int i = 0; i < kCustomSelection; ++i) {
        m_choices[std::size_t(i)] = new SettingRowView({}, choices[i], this);
        contentLayout()->addWidget(m_choices[std::size_t(i)]);
    }
    contentLayout()->addWidget(buildCustomRow());
    for (int i = 0; i < kChoiceCount; ++i)
        connect(m_choices[std::size_t(i)], &QAbstractButton::clicked, this,
                [this, i] { actionSelectInterval(kFirstTag + i); });

    contentLayout()->addSpacing(12);
    m_single = new SettingRowView({}, tr("Single"), this);
    m_repeatRow = new SettingRowView({}, tr("Repeat"), this);
    connect(m_single, &QAbstractButton::clicked, this, &ViewReminderInterval::actionSelectSingle);
    connect(m_repeatRow, &QAbstractButton::clicked, this,
            &ViewReminderInterval::actionSelectRepeat);
    contentLayout()->addWidget(m_single);
    contentLayout()->addWidget(m_repeatRow);
    contentLayout()->addStretch();
    m_confirm = new QPushButton(tr("Confirm"), this);
    m_confirm->setDefault(true);
    connect(m_confirm, &QPushButton::clicked, this, &ViewReminderInterval::actionConfirm);
    contentLayout()->addWidget(m_confirm, 0, Qt::AlignHCenter);
    refreshSelection();
}

QWidget* ViewReminderInterval::buildCustomRow() {
    auto* box = new QWidget(this);
    auto* custom = new SettingRowView({}, tr("Customize"), box);
    m_choices[kCustomSelection] = custom;
    m_minutes = new QLineEdit(box);
    m_minutes->setFixedWidth(kMinutesFieldWidth);
    m_minutes->setAlignment(Qt::AlignRight);
    m_minutes->setReadOnly(true);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(custom, 1);
    row->addWidget(m_minutes);
    row->addWidget(new QLabel(tr("min"), box));
    return box;
}

void ViewReminderInterval::setViewWithTime(const QString& time, const QString& isCustom,
                                           const QString& isRepeat, SelectFn selectFn) {
    m_selection = 0;
    if (isCustom == u"1") {
        m_selection = kCustomSelection;
        m_minutes->setText(time);
    } else {
        m_selection = time.toInt();
    }
    m_repeat = isRepeat == u"1";
    m_selectFn = std::move(selectFn);
    m_minutes->setReadOnly(m_selection != kCustomSelection);
    if (m_selection == kCustomSelection)
        m_minutes->setFocus();
    refreshSelection();
}

void ViewReminderInterval::actionSelectInterval(int tag) {
    const int selection = tag - kFirstTag;
    if (selection == m_selection)
        return;
    m_selection = selection;
    m_minutes->setReadOnly(selection != kCustomSelection);
    if (selection == kCustomSelection)
        m_minutes->setFocus();
    refreshSelection();
}

void ViewReminderInterval::actionSelectSingle() {
    m_repeat = false;
    refreshSelection();
}

void ViewReminderInterval::actionSelectRepeat() {
    m_repeat = true;
    refreshSelection();
}

void ViewReminderInterval::actionConfirm() {
    m_minutes->clearFocus();
    const int minutes = OMTimeManager::isFixedType(m_selection)
                            ? OMTimeManager::kFixedMinutes[std::size_t(m_selection)]
                            : m_minutes->text().toInt();
    if (m_selectFn)
        m_selectFn(m_selection, minutes, m_repeat);
    actionBack();
}

void ViewReminderInterval::refreshSelection() {
    const QString tick = QStringLiteral("setting_select");
    for (int i = 0; i < kChoiceCount; ++i)
        m_choices[std::size_t(i)]->setAccessoryImage(i == m_selection ? tick : QString());
    m_single->setAccessoryImage(m_repeat ? QString() : tick);
    m_repeatRow->setAccessoryImage(m_repeat ? tick : QString());
}

} // namespace ostrel
