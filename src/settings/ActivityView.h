#pragma once

#include "store/ActivityReport.h"

#include <QWidget>
#include <functional>

class QBarSeries;
class QChart;
class QChartView;
class QDoubleSpinBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace ostrel {

class ActivityRecorder;
class ActivityTimeline;

// The standing-time record for the user: today's progress towards the goal, the streak, today's
// timeline, the last 7 or 30 days as stacked bars, average transitions, the goal and threshold
// settings and the CSV export. Shows what the recorder says, the open interval included.
class ActivityView : public QWidget {
    Q_OBJECT
public:
    // Asks where to save an export; returns "" when the user cancels. A test seam: nullptr
    // brings back the file dialog.
    using SavePathAsker = std::function<QString(QWidget* parent, const QString& suggested)>;
    static void setSavePathAsker(SavePathAsker asker);

    ActivityView(ActivityRecorder& recorder, QWidget* parent = nullptr);

    // 7 or 30.
    int chartDays() const { return m_chartDays; }
    void setChartDays(int days);
    void refresh();

    QLabel* progressLabel() const { return m_progress; }
    QLabel* streakLabel() const { return m_streak; }
    QLabel* transitionsLabel() const { return m_transitions; }
    ActivityTimeline* timeline() const { return m_timeline; }
    QChart* chart() const;
    QSpinBox* goalBox() const { return m_goal; }
    QDoubleSpinBox* thresholdBox() const { return m_threshold; }

    void exportDays();
    void exportIntervals();

signals:
    // Shown once an export could not be written.
    void exportFailed(const QString& path);

private:
    QWidget* buildToday();
    QWidget* buildChart();
    QWidget* buildSettings();
    QWidget* buildExport();
    void fillChart(const ActivityReport& report);
    void showSettings();
    void saveExport(const QString& suggested, const QByteArray& bytes);

    ActivityRecorder& m_recorder;
    int m_chartDays = 7;
    QLabel* m_progress = nullptr;
    QProgressBar* m_bar = nullptr;
    QLabel* m_streak = nullptr;
    QLabel* m_transitions = nullptr;
    ActivityTimeline* m_timeline = nullptr;
    QChartView* m_chartView = nullptr;
    QPushButton* m_week = nullptr;
    QPushButton* m_month = nullptr;
    QSpinBox* m_goal = nullptr;
    QDoubleSpinBox* m_threshold = nullptr;
};

} // namespace ostrel
