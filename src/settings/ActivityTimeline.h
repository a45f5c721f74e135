#pragma once

#include "store/ActivityRecord.h"

#include <QColor>
#include <QWidget>

namespace ostrel {

// One day as bands over its hours: sitting, standing and away in their colours, unknown left
// blank, with the hours marked below.
class ActivityTimeline : public QWidget {
    Q_OBJECT
public:
    explicit ActivityTimeline(QWidget* parent = nullptr);

    void setIntervals(const QList<ActivityInterval>& intervals);
    const QList<ActivityInterval>& intervals() const { return m_intervals; }

    static QColor postureColor(Posture posture);
    QSize sizeHint() const override { return {360, 44}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<ActivityInterval> m_intervals;
};

} // namespace ostrel
