#include "widgets/OMPageHeader.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace ostrel {

namespace {
constexpr int kBackWidth = 72;
} // namespace

OMPageHeader::OMPageHeader(const QString& title, const QString& backText, QWidget* parent)
    : QWidget(parent), m_title(new QLabel(title, this)),
      m_back(new QPushButton(QStringLiteral("‹ ") + backText, this)) {
    m_back->setFlat(true);
    m_back->setFixedWidth(kBackWidth);
    m_back->setShortcut(QKeySequence::Back);
    connect(m_back, &QPushButton::clicked, this, &OMPageHeader::backClicked);
    // Only the page on top is visible, so only its Escape is live.
    new QShortcut(QKeySequence(Qt::Key_Escape), this, this, &OMPageHeader::backClicked);

    QFont font = m_title->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    m_title->setFont(font);
    m_title->setAlignment(Qt::AlignCenter);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_title, 0, 0);
    layout->addWidget(m_back, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
}

QVBoxLayout* OMPageHeader::layOutPage(QWidget* page) {
    auto* content = new QVBoxLayout;
    content->setSpacing(8);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(20, 12, 20, 20);
    layout->addWidget(this);
    layout->addSpacing(8);
    layout->addLayout(content, 1);
    return content;
}

QString OMPageHeader::title() const {
    return m_title->text();
}

} // namespace ostrel
