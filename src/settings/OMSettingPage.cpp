#include "settings/OMSettingPage.h"

#include "session/DeskControlVC.h"
#include "widgets/OMPageHeader.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

QFont scaledBold(QFont font, qreal scale) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

} // namespace

OMSettingPage::OMSettingPage(DeskControlVC* fatherVC, const QString& title)
    : QWidget(fatherVC), m_fatherVC(fatherVC) {
    m_header = new OMPageHeader(title, tr("Back"), this);
    connect(m_header, &OMPageHeader::backClicked, this, &OMSettingPage::actionBack);

    m_content = m_header->layOutPage(this);
}

DeskControlVC* OMSettingPage::fatherVC() const {
    return m_fatherVC;
}

QString OMSettingPage::title() const {
    return m_header->title();
}

QPushButton* OMSettingPage::backButton() const {
    return m_header->backButton();
}

void OMSettingPage::actionBack() {
    if (m_fatherVC)
        m_fatherVC->popViewControl();
}

void OMSettingPage::push(QWidget* page) const {
    if (m_fatherVC)
        m_fatherVC->pushViewControlWithView(page);
}

QLabel* OMSettingPage::addHeading(const QString& text) {
    QLabel* heading = headingLabel(text, this);
    m_content->addWidget(heading);
    return heading;
}

QLabel* OMSettingPage::headingLabel(const QString& text, QWidget* parent) {
    auto* heading = new QLabel(text, parent);
    heading->setFont(scaledBold(heading->font(), 1.05));
    return heading;
}

} // namespace ostrel
