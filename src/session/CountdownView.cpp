#include "session/CountdownView.h"

#include "widgets/OMImage.h"
#include "widgets/OMImageButton.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {

constexpr int kIconSize = 18;

} // namespace

CountdownView::CountdownView(QWidget* parent)
    : QFrame(parent), m_label(new QLabel(this)),
      m_clear(new OMImageButton(QStringLiteral("control_clock_clear"), this)) {
    setObjectName(QStringLiteral("countdown"));
    setStyleSheet(QStringLiteral("#countdown { background: #EEF4FD; border-radius: 12px; }"));
    auto* icon = new QLabel(this);
    icon->setPixmap(OMImage::pixmap(QStringLiteral("control_clock"))
                        .scaled(QSize(kIconSize, kIconSize) * devicePixelRatio(),
                                Qt::KeepAspectRatio, Qt::SmoothTransformation));
    QFont font = m_label->font();
    font.setFamily(QStringLiteral("monospace"));
    font.setBold(true);
    m_label->setFont(font);
    m_clear->setFixedSize(kIconSize, kIconSize);
    m_clear->setToolTip(tr("Clear the reminder"));
    m_clear->hide();
    // The time alone does not say what comes when it runs out.
    auto* caption = new QLabel(tr("Reminder in"), this);
    setToolTip(tr("Time left until the next sit-stand reminder"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(10, 4, 6, 4);
    row->setSpacing(6);
    row->addWidget(icon);
    row->addWidget(caption);
    row->addWidget(m_label);
    row->addWidget(m_clear);
    connect(m_clear, &QAbstractButton::clicked, this, &CountdownView::clearClicked);
    hide();
}

QString CountdownView::text() const {
    return m_label->text();
}

void CountdownView::setCountdown(const QString& label, bool shown) {
    m_label->setText(label);
    setVisible(shown);
    if (!shown)
        m_clear->hide();
}

void CountdownView::enterEvent(QEnterEvent* event) {
    QFrame::enterEvent(event);
    m_clear->show();
}

void CountdownView::leaveEvent(QEvent* event) {
    QFrame::leaveEvent(event);
    m_clear->hide();
}

} // namespace ostrel
