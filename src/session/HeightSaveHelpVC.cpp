#include "session/HeightSaveHelpVC.h"

#include "widgets/OMImage.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

HeightSaveHelpVC::HeightSaveHelpVC(QWidget* parent)
    : OMSheetWindow(parent, OMWindowIdentifier::setting()) {
    auto* title = new QLabel(tr("How to Save Height Presets"), this);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.2);
    title->setFont(titleFont);
    title->setAlignment(Qt::AlignCenter);
    title->setWordWrap(true);
    title->setContentsMargins(32, 0, 32, 0); // clear of the close button

    auto* picture = new QLabel(this);
    picture->setPixmap(OMImage::pixmap(QStringLiteral("control_shortcuts_tip")));
    picture->setAlignment(Qt::AlignCenter);

    m_customize = new QPushButton(tr("Customize"), this);
    m_customize->setDefault(true);
    connect(m_customize, &QPushButton::clicked, this, [this] {
        hide();
        emit customizeRequested();
    });

    m_close = new QPushButton(QStringLiteral("✕"), this);
    m_close->setFlat(true);
    constexpr int kCloseSize = 28;
    m_close->setFixedSize(kCloseSize, kCloseSize);
    m_close->setToolTip(tr("Close"));
    m_close->setAccessibleName(tr("Close"));
    connect(m_close, &QPushButton::clicked, this, &QWidget::hide);
    auto* top = new QGridLayout;
    top->addWidget(title, 0, 0);
    top->addWidget(m_close, 0, 0, Qt::AlignRight | Qt::AlignTop);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->addLayout(top);
    layout->addWidget(picture, 1);
    layout->addWidget(m_customize, 0, Qt::AlignHCenter);
}

HeightSaveHelpVC* HeightSaveHelpVC::present(QWidget* host) {
    auto* sheet = findOrCreate<HeightSaveHelpVC>(host, OMWindowIdentifier::setting());
    sheet->presentCentred();
    return sheet;
}

} // namespace ostrel
