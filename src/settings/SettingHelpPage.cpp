#include "settings/SettingHelpPage.h"

#include <QLabel>
#include <QVBoxLayout>

namespace ostrel {

SettingHelpPage::SettingHelpPage(DeskControlVC* fatherVC, const QString& title, const QString& text)
    : OMSettingPage(fatherVC, title), m_text(text) {
    auto* body = new QLabel(text, this);
    body->setWordWrap(true);
    body->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    body->setTextInteractionFlags(Qt::TextSelectableByMouse);
    contentLayout()->addWidget(body);
    contentLayout()->addStretch();
}

QString SettingHelpPage::text() const {
    return m_text;
}

} // namespace ostrel
