#include "settings/ViewShortcutKeys.h"

#include "session/DQGlobalKeyHelper.h"
#include "settings/ShortcutComboRowView.h"
#include "settings/ShortcutCommandsView.h"
#include "settings/ShortcutItemRowView.h"
#include "settings/ShortcutSwitchRowView.h"
#include "settings/SystemSettingRecord.h"
#include "widgets/OMAlert.h"

#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QStringList>
#include <QVBoxLayout>

namespace ostrel {

namespace {

struct Item {
    int id; // the key's identifier in the registry
    const char* image;
    const char* title;
    const char* key;
};

constexpr Item kItems[] = {
    {126, "setting_up", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "Up"), "↑"},
    {125, "setting_down", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "Down"), "↓"},
    {18, "setting_sit", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "Sitting"), "1"},
    {19, "setting_stand", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "Standing"), "2"},
    {20, "setting_M1", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "M1"), "3"},
    {21, "setting_M2", QT_TRANSLATE_NOOP("ostrel::ViewShortcutKeys", "M2"), "4"},
};
static_assert(std::size(kItems) + 2 == ViewShortcutKeys::kRowCount);

// The stored value of Ctrl + Super.
const std::string kCtrlSuperKey{"2"};

DQGlobalKeyHelper& helper() {
    return DQGlobalKeyHelper::shareInstance();
}

QString text(const Object_SystemSetting::Text& value) {
    return QString::fromStdString(value.value_or(""));
}

} // namespace

ViewShortcutKeys::ViewShortcutKeys(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("Shortcut keys")), m_switchRow(new ShortcutSwitchRowView),
      m_comboRow(new ShortcutComboRowView), m_commands(new ShortcutCommandsView),
      m_notice(new QLabel(this)) {
    auto* rows = new QWidget;
    auto* column = new QVBoxLayout(rows);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_switchRow->setFixedHeight(kRowHeights[0]);
    m_comboRow->setFixedHeight(kRowHeights[1]);
    column->addWidget(m_commands);
    column->addWidget(m_switchRow);
    column->addWidget(m_comboRow);
    for (std::size_t i = 0; i < std::size(kItems); ++i) {
        auto* item = new ShortcutItemRowView;
        item->setFixedHeight(kRowHeights[2]);
        column->addWidget(item);
        m_itemRows.append(item);
    }
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(rows);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    m_notice->setWordWrap(true);
    m_notice->setStyleSheet(QStringLiteral("color: #C0392B;"));
    contentLayout()->addWidget(m_notice);
    contentLayout()->addWidget(scroll, 1);
    connect(&helper(), &DQGlobalKeyHelper::registrationChanged, this,
            &ViewShortcutKeys::refreshNotice);
    initData();
}

void ViewShortcutKeys::initData() {
    m_setting = SystemSettingRecord::load();
    m_switchRow->setRowViewWithTitle(tr("Shortcut keys"), text(m_setting.combinationopen),
                                     [this](const QString& status) {
                                         Object_SystemSetting wanted = m_setting;
                                         wanted.combinationopen = status.toStdString();
                                         change(wanted);
                                     });
    m_comboRow->setViewContentWithcombinationkey(
        text(m_setting.combinationkey), [this](const QString& combinationkey) {
            Object_SystemSetting wanted = m_setting;
            wanted.combinationkey = combinationkey.toStdString();
            change(wanted);
        });
    reloadData();
    refreshNotice();
}

void ViewShortcutKeys::change(Object_SystemSetting wanted) {
    const bool takesShift = wanted.combinationopen == "1" &&
                            DQGlobalKeyHelper::combineKeyType(wanted.combinationkey.value_or("")) ==
                                GlobalKeyBackend::kShift;
    if (!takesShift) {
        commit(wanted);
        return;
    }
    const OMAlertContent question{
        tr("Shift is how text is selected"),
        tr("Shift + arrows and Shift + digits select and type text in every other application: "
           "with Shift, selecting lines in an editor moves the desk. Ctrl + Super keeps them "
           "apart."),
        {tr("Use Ctrl + Super"), tr("Use Shift anyway"), tr("Cancel")},
        true};
    OMAlert::show(this, question, [page = QPointer(this), wanted](int response) mutable {
        if (!page)
            return;
        if (response == OMAlert::kFirstButton)
            wanted.combinationkey = kCtrlSuperKey;
        else if (response != OMAlert::kFirstButton + 1)
            wanted = page->m_setting; // cancelled: the rows show what is stored again
        page->commit(wanted);
    });
}

void ViewShortcutKeys::commit(const Object_SystemSetting& setting) {
    const bool changed = setting.combinationopen != m_setting.combinationopen ||
                         setting.combinationkey != m_setting.combinationkey;
    if (changed) {
        // Only the two fields of this page go to the stored record.
        SystemSettingRecord::change(&Object_SystemSetting::combinationopen,
                                    setting.combinationopen.value_or("0"));
        m_setting = SystemSettingRecord::change(&Object_SystemSetting::combinationkey,
                                                setting.combinationkey.value_or("0"));
        actionChangeShortcutKeys();
    }
    reloadData();
}

void ViewShortcutKeys::actionChangeShortcutKeys() {
    helper().removeDeskGlobalHotKey();
    if (m_setting.combinationopen == "1")
        helper().addDeskGlobalHotKeyWithCombineKeyType(
            DQGlobalKeyHelper::combineKeyType(m_setting.combinationkey.value_or("")));
}

QString ViewShortcutKeys::prefix(const QString& combinationkey) {
    if (combinationkey == u"1")
        return tr("Alt + Cmd +");
    if (combinationkey == u"2")
        return tr("Ctrl + Cmd +");
    return tr("Shift +");
}

void ViewShortcutKeys::reloadData() {
    m_switchRow->setStatus(text(m_setting.combinationopen));
    m_comboRow->setCombinationkey(text(m_setting.combinationkey));
    const QString keys = prefix(text(m_setting.combinationkey));
    for (std::size_t i = 0; i < std::size(kItems); ++i)
        m_itemRows[qsizetype(i)]->setViewContentWithImageName(
            QLatin1String(kItems[i].image), tr(kItems[i].title),
            QStringLiteral("%1 %2").arg(keys, QString::fromUtf8(kItems[i].key)));
}

QString ViewShortcutKeys::notice() const {
    return m_notice->isHidden() ? QString() : m_notice->text();
}

void ViewShortcutKeys::refreshNotice() {
    QString message;
    if (!helper().isAvailable()) {
        message = tr("Global shortcuts are not available on this desktop.");
    } else {
        QStringList taken;
        for (std::size_t i = 0; i < std::size(kItems); ++i)
            if (helper().unavailableKeys().contains(kItems[i].id))
                taken << m_itemRows[qsizetype(i)]->content();
        if (!taken.isEmpty())
            message = tr("Another application already uses %1: these keys do nothing here.")
                          .arg(taken.join(QStringLiteral(", ")));
    }
    m_commands->setVisible(!helper().isAvailable());
    m_notice->setText(message);
    m_notice->setVisible(!message.isEmpty());
}

} // namespace ostrel
