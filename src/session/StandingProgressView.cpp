#include "session/StandingProgressView.h"

#include "session/ActivityRecorder.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <algorithm>

namespace ostrel {

StandingProgressView::StandingProgressView(QWidget* parent)
    : QPushButton(parent), m_label(new QLabel(this)), m_bar(new QProgressBar(this)) {
    setObjectName(QStringLiteral("standingProgress"));
    setFlat(true);
    setCursor(Qt::PointingHandCursor);
    setToolTip(tr("Standing time today against your goal; click for your activity"));
    m_label->setAlignment(Qt::AlignCenter);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(6);
    m_bar->setRange(0, 100);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    layout->setSpacing(2);
    layout->addWidget(m_label);
    layout->addWidget(m_bar);
    setMinimumHeight(m_label->sizeHint().height() + 14);
    hide();
}

QString StandingProgressView::text() const {
    return m_label->text();
}

int StandingProgressView::percent() const {
    return m_bar->value();
}

void StandingProgressView::follow(ActivityRecorder* recorder) {
    if (m_recorder)
        disconnect(m_recorder, nullptr, this, nullptr);
    m_recorder = recorder;
    if (recorder)
        connect(recorder, &ActivityRecorder::changed, this, &StandingProgressView::refresh);
    refresh();
}

void StandingProgressView::refresh() {
    setVisible(m_recorder != nullptr);
    if (!m_recorder)
        return;
    const ActivityReport report = m_recorder->report(1);
    const qint64 standing = report.today().of(Posture::Standing);
    m_label->setText(tr("Standing today %1").arg(progressText(standing, report.goalMs)));
    m_bar->setValue(
        int(std::min<qint64>(100, standing * 100 / std::max<qint64>(1, report.goalMs))));
}

// The label and the bar, not the button's own (empty) text.
QSize StandingProgressView::sizeHint() const {
    return layout()->sizeHint().expandedTo(QPushButton::sizeHint());
}

QString StandingProgressView::progressText(qint64 standingMs, qint64 goalMs) {
    return QStringLiteral("%1 / %2").arg(ActivityReport::clockText(standingMs),
                                         ActivityReport::clockText(goalMs));
}

} // namespace ostrel
