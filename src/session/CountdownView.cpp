#include "session/CountdownView.h"

#include "widgets/OMImage.h"
#include "widgets/OMImageButton.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {

constexpr int kIconSize = 18;
constexpr char kClearImage[] = "control_clock_clear";

} // namespace

CountdownView::CountdownView(QWidget* parent)
    : QFrame(parent), m_label(new QLabel(this)), m_clear(new OMImageButton(QString(), this)) {
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
    // Concealed rather than hidden, so that Tab still reaches it; focus reveals it as the pointer
    // does.
    m_clear->installEventFilter(this);
    revealClear();
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

bool CountdownView::isClearRevealed() const {
    return !m_clear->imageName().isEmpty();
}

void CountdownView::revealClear() {
    m_clear->setImageName(m_pointedAt || m_clear->hasFocus() ? QString::fromLatin1(kClearImage)
                                                             : QString());
}

void CountdownView::setCountdown(const QString& label, bool shown) {
    m_label->setText(label);
    setVisible(shown);
    if (!shown)
        m_pointedAt = false;
    revealClear();
}

void CountdownView::enterEvent(QEnterEvent* event) {
    QFrame::enterEvent(event);
    m_pointedAt = true;
    revealClear();
}

void CountdownView::leaveEvent(QEvent* event) {
    QFrame::leaveEvent(event);
    m_pointedAt = false;
    revealClear();
}

bool CountdownView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_clear &&
        (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut))
        revealClear();
    return QFrame::eventFilter(watched, event);
}

} // namespace ostrel
