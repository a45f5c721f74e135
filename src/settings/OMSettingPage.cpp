#include "settings/OMSettingPage.h"

#include "session/DeskControlVC.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr int kBackWidth = 72;

QFont scaledBold(QFont font, qreal scale) {
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * scale);
    return font;
}

} // namespace

OMSettingPage::OMSettingPage(DeskControlVC* fatherVC, const QString& title)
    : QWidget(fatherVC), m_fatherVC(fatherVC) {
    m_back = new QPushButton(QStringLiteral("‹ ") + tr("Back"), this);
    m_back->setFlat(true);
    m_back->setFixedWidth(kBackWidth);
    m_back->setShortcut(QKeySequence::Back);
    connect(m_back, &QPushButton::clicked, this, &OMSettingPage::actionBack);

    m_title = new QLabel(title, this);
    m_title->setFont(scaledBold(m_title->font(), 1.15));
    m_title->setAlignment(Qt::AlignCenter);

    // The title is centred on the page, the way back sits over its left end.
    auto* header = new QGridLayout;
    header->addWidget(m_title, 0, 0);
    header->addWidget(m_back, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);

    m_content = new QVBoxLayout;
    m_content->setSpacing(8);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 12, 20, 20);
    layout->addLayout(header);
    layout->addSpacing(8);
    layout->addLayout(m_content, 1);
}

DeskControlVC* OMSettingPage::fatherVC() const {
    return m_fatherVC;
}

QString OMSettingPage::title() const {
    return m_title->text();
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
