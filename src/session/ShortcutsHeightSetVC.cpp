#include "session/ShortcutsHeightSetVC.h"

#include "widgets/OMImage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

ShortcutsHeightSetVC::Presenter& installedPresenter() {
    static ShortcutsHeightSetVC::Presenter presenter;
    return presenter;
}

constexpr int kIconSize = 40;

} // namespace

ShortcutsHeightSetVC::ShortcutsHeightSetVC(QWidget* parent)
    : OMSheetWindow(parent, OMWindowIdentifier::settingHeight()), m_icon(new QLabel(this)),
      m_tip(new QLabel(this)), m_cancel(new QPushButton(tr("Cancel"), this)),
      m_confirm(new QPushButton(tr("Confirm"), this)) {
    setFixedSize(kSize);

    auto* lead = new QLabel(tr("Whether to set the current height to"), this);
    lead->setAlignment(Qt::AlignCenter);
    lead->setWordWrap(true);
    m_icon->setFixedSize(kIconSize, kIconSize);
    m_tip->setWordWrap(true);
    QFont tipFont = m_tip->font();
    tipFont.setBold(true);
    m_tip->setFont(tipFont);

    auto* subject = new QHBoxLayout;
    subject->addStretch();
    subject->addWidget(m_icon);
    subject->addWidget(m_tip);
    subject->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addWidget(lead);
    layout->addLayout(subject);
    layout->addWidget(buttonRow(m_confirm, m_cancel));

    connect(m_confirm, &QPushButton::clicked, this, &ShortcutsHeightSetVC::actionConfirm);
    connect(m_cancel, &QPushButton::clicked, this, &ShortcutsHeightSetVC::actionCancel);
}

ShortcutsHeightSetVC* ShortcutsHeightSetVC::present(QWidget* host, const QString& imageIcon,
                                                    const QString& tip, ConfirmFn confirmFn) {
    auto* sheet = findOrCreate<ShortcutsHeightSetVC>(host, OMWindowIdentifier::settingHeight());
    sheet->setViewContentWithImageIcon(imageIcon, tip, std::move(confirmFn));
    if (const Presenter& presenter = installedPresenter(); presenter && presenter(*sheet))
        return sheet;
    sheet->presentCentred();
    return sheet;
}

ShortcutsHeightSetVC::Presenter ShortcutsHeightSetVC::setPresenter(Presenter presenter) {
    return std::exchange(installedPresenter(), std::move(presenter));
}

void ShortcutsHeightSetVC::setViewContentWithImageIcon(const QString& imageIcon, const QString& tip,
                                                       ConfirmFn confirmFn) {
    m_imageIcon = imageIcon;
    m_icon->setPixmap(OMImage::pixmap(imageIcon).scaled(m_icon->size() * m_icon->devicePixelRatio(),
                                                        Qt::KeepAspectRatio,
                                                        Qt::SmoothTransformation));
    m_tip->setText(tip);
    m_confirmFn = std::move(confirmFn);
}

QString ShortcutsHeightSetVC::tip() const {
    return m_tip->text();
}

void ShortcutsHeightSetVC::actionConfirm() {
    if (m_confirmFn)
        m_confirmFn();
    hide();
}

void ShortcutsHeightSetVC::actionCancel() {
    hide();
}

} // namespace ostrel
