#pragma once

#include <QPushButton>

class QProgressBar;
class QLabel;

namespace ostrel {

class ActivityRecorder;

// Today's standing time against the goal, beside the countdown on the control screen; clicked,
// it opens the activity page. Hidden when no record is kept.
class StandingProgressView : public QPushButton {
    Q_OBJECT
public:
    explicit StandingProgressView(QWidget* parent = nullptr);

    QString text() const;
    int percent() const;
    // Shows the figures of `recorder` (nullptr: none) and follows its changes.
    void follow(ActivityRecorder* recorder);
    void refresh();
    QSize sizeHint() const override;

    // "1:05 / 2:00" for a standing time and a goal.
    static QString progressText(qint64 standingMs, qint64 goalMs);

private:
    ActivityRecorder* m_recorder = nullptr;
    QLabel* m_label;
    QProgressBar* m_bar;
};

} // namespace ostrel
