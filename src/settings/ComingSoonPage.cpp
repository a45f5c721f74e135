#include "settings/ComingSoonPage.h"

#include <QLabel>
#include <QVBoxLayout>

namespace ostrel {

ComingSoonPage::ComingSoonPage(DeskControlVC* fatherVC, const QString& title)
    : OMSettingPage(fatherVC, title) {
    auto* text = new QLabel(tr("This feature is coming soon."), this);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    contentLayout()->addStretch();
    contentLayout()->addWidget(text);
    contentLayout()->addStretch();
}

} // namespace ostrel
