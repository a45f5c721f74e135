#include "settings/ActivityView.h"

#include "session/ActivityRecorder.h"
#include "settings/ActivityTimeline.h"
#include "store/ActivityCsv.h"
#include "store/ActivityStore.h"
#include "store/AtomicFile.h"

#include <QBarCategoryAxis>
#include <QBarSet>
#include <QButtonGroup>
#include <QChart>
#include <QChartView>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStackedBarSeries>
#include <QVBoxLayout>
#include <QValueAxis>
#include <cmath>

namespace ostrel {

namespace {

constexpr int kWeek = 7;
constexpr int kMonth = 30;
constexpr double kHourMs = 60.0 * 60 * 1000;
constexpr int kGoalStepMinutes = int(ActivityRecorder::kGoalStepMs / 60000);

ActivityView::SavePathAsker& savePathAsker() {
    static ActivityView::SavePathAsker asker;
    return asker;
}

QString askSavePath(QWidget* parent, const QString& suggested) {
    if (savePathAsker())
        return savePathAsker()(parent, suggested);
    return QFileDialog::getSaveFileName(parent, ActivityView::tr("Export"), suggested,
                                        ActivityView::tr("CSV files (*.csv)"));
}

} // namespace

void ActivityView::setSavePathAsker(SavePathAsker asker) {
    savePathAsker() = std::move(asker);
}

ActivityView::ActivityView(ActivityRecorder& recorder, QWidget* parent)
    : QWidget(parent), m_recorder(recorder) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(buildToday());
    layout->addWidget(buildChart(), 1);
    layout->addWidget(buildSettings());
    layout->addWidget(buildExport());
    connect(&m_recorder, &ActivityRecorder::changed, this, &ActivityView::refresh);
    refresh();
}

QWidget* ActivityView::buildToday() {
    auto* box = new QWidget(this);
    m_progress = new QLabel(box);
    m_bar = new QProgressBar(box);
    m_bar->setRange(0, 100);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(8);
    m_streak = new QLabel(box);
    m_transitions = new QLabel(box);
    m_timeline = new ActivityTimeline(box);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_progress, m_bar, m_streak, m_transitions, m_timeline})
        layout->addWidget(widget);
    return box;
}

QWidget* ActivityView::buildChart() {
    auto* box = new QWidget(this);
    m_week = new QPushButton(tr("Last 7 days"), box);
    m_month = new QPushButton(tr("Last 30 days"), box);
    auto* group = new QButtonGroup(box);
    auto* toggles = new QHBoxLayout;
    for (QPushButton* button : {m_week, m_month}) {
        button->setCheckable(true);
        group->addButton(button);
        toggles->addWidget(button);
    }
    m_week->setChecked(true);
    connect(m_week, &QPushButton::clicked, this, [this] { setChartDays(kWeek); });
    connect(m_month, &QPushButton::clicked, this, [this] { setChartDays(kMonth); });

    auto* chart = new QChart;
    chart->legend()->setAlignment(Qt::AlignBottom);
    chart->setMargins(QMargins(0, 0, 0, 0));
    chart->setBackgroundRoundness(0);
    m_chartView = new QChartView(chart, box);
    m_chartView->setRenderHint(QPainter::Antialiasing);
    m_chartView->setMinimumHeight(200);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(toggles);
    layout->addWidget(m_chartView, 1);
    return box;
}

QWidget* ActivityView::buildSettings() {
    auto* box = new QWidget(this);
    m_goal = new QSpinBox(box);
    m_goal->setRange(kGoalStepMinutes, int(ActivityRecorder::kLargestGoalMs / 60000));
    m_goal->setSingleStep(kGoalStepMinutes);
    m_goal->setStepType(QAbstractSpinBox::DefaultStepType);
    m_goal->setSuffix(tr(" min"));
    m_goal->setKeyboardTracking(false);
    connect(m_goal, &QSpinBox::valueChanged, this,
            [this](int minutes) { m_recorder.setGoalMs(qint64(minutes) * 60000); });
    m_threshold = new QDoubleSpinBox(box);
    m_threshold->setRange(0.0, 130.0);
    m_threshold->setDecimals(1);
    m_threshold->setSingleStep(0.5);
    m_threshold->setSuffix(tr(" cm"));
    m_threshold->setSpecialValueText(tr("Automatic"));
    m_threshold->setKeyboardTracking(false);
    connect(m_threshold, &QDoubleSpinBox::valueChanged, this,
            [this](double cm) { m_recorder.setThresholdSetting(cm); });
    auto* form = new QFormLayout(box);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(tr("Daily standing goal"), m_goal);
    form->addRow(tr("Standing from"), m_threshold);
    return box;
}

QWidget* ActivityView::buildExport() {
    auto* box = new QWidget(this);
    auto* days = new QPushButton(tr("Export days..."), box);
    auto* intervals = new QPushButton(tr("Export intervals..."), box);
    connect(days, &QPushButton::clicked, this, &ActivityView::exportDays);
    connect(intervals, &QPushButton::clicked, this, &ActivityView::exportIntervals);
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(days);
    layout->addWidget(intervals);
    return box;
}

QChart* ActivityView::chart() const {
    return m_chartView->chart();
}

void ActivityView::setChartDays(int days) {
    m_chartDays = days == kMonth ? kMonth : kWeek;
    (m_chartDays == kMonth ? m_month : m_week)->setChecked(true);
    refresh();
}

void ActivityView::refresh() {
    const ActivityReport report = m_recorder.report(kMonth);
    const DayTotals& today = report.today();
    const qint64 standing = today.of(Posture::Standing);
    m_progress->setText(
        tr("Standing today: %1 of your %2 goal")
            .arg(ActivityReport::clockText(standing), ActivityReport::clockText(report.goalMs)));
    m_bar->setValue(
        int(std::min<qint64>(100, standing * 100 / std::max<qint64>(1, report.goalMs))));
    m_streak->setText(tr("Streak: %n day(s)", nullptr, report.streakDays));
    int deskDays = 0;
    int transitions = 0;
    for (const DayTotals& day : report.days) {
        deskDays += day.hadDesk() ? 1 : 0;
        transitions += day.transitions;
    }
    m_transitions->setText(
        tr("Average transitions per day: %1")
            .arg(QLocale().toString(deskDays ? double(transitions) / deskDays : 0.0, 'f', 1)));
    m_timeline->setIntervals(m_recorder.intervals(today.date, today.date));
    fillChart(report);
    showSettings();
}

// As the recorder keeps them (rounded, or changed over the bus), unless being edited.
void ActivityView::showSettings() {
    if (!m_goal->hasFocus()) {
        const QSignalBlocker quiet(m_goal);
        m_goal->setValue(int(m_recorder.goalMs() / 60000));
    }
    if (!m_threshold->hasFocus()) {
        const QSignalBlocker quiet(m_threshold);
        m_threshold->setValue(m_recorder.thresholdSetting());
    }
}

void ActivityView::fillChart(const ActivityReport& report) {
    QChart* chart = m_chartView->chart();
    chart->removeAllSeries();
    for (QAbstractAxis* axis : chart->axes())
        chart->removeAxis(axis);

    const DayList days = report.days.mid(report.days.size() - m_chartDays);
    const std::pair<Posture, QString> shown[] = {{Posture::Sitting, tr("Sitting")},
                                                 {Posture::Standing, tr("Standing")},
                                                 {Posture::Away, tr("Away")}};
    auto* series = new QStackedBarSeries;
    double highest = 1.0;
    QStringList categories;
    for (const DayTotals& day : days) {
        categories.append(
            day.date.toString(m_chartDays == kWeek ? QStringLiteral("ddd") : QStringLiteral("d")));
        double total = 0;
        for (const auto& entry : shown)
            total += double(day.of(entry.first)) / kHourMs;
        highest = std::max(highest, total);
    }
    for (const auto& [posture, name] : shown) {
        auto* set = new QBarSet(name);
        set->setColor(ActivityTimeline::postureColor(posture));
        set->setBorderColor(ActivityTimeline::postureColor(posture));
        for (const DayTotals& day : days)
            set->append(double(day.of(posture)) / kHourMs);
        series->append(set);
    }
    chart->addSeries(series);
    auto* x = new QBarCategoryAxis;
    x->append(categories);
    if (m_chartDays == kMonth)
        x->setLabelsAngle(-90); // thirty day numbers side by side do not fit
    auto* y = new QValueAxis;
    // Whole hours on the scale.
    const int hours = int(std::ceil(highest));
    const int step = hours > 10 ? 2 : 1;
    y->setRange(0, (hours + step - 1) / step * step);
    y->setTickCount((hours + step - 1) / step + 1);
    y->setLabelFormat(QStringLiteral("%d h"));
    for (QAbstractAxis* axis : {static_cast<QAbstractAxis*>(x), static_cast<QAbstractAxis*>(y)}) {
        QFont font = axis->labelsFont();
        font.setPointSizeF(font.pointSizeF() * 0.8);
        axis->setLabelsFont(font);
    }
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    series->attachAxis(x);
    series->attachAxis(y);
}

void ActivityView::exportDays() {
    saveExport(QStringLiteral("activity-days.csv"),
               ActivityCsv::days(m_recorder.report(ActivityStore::kKeptDays).days));
}

void ActivityView::exportIntervals() {
    const QDate today = m_recorder.today();
    saveExport(QStringLiteral("activity-intervals.csv"),
               ActivityCsv::intervals(
                   m_recorder.intervals(today.addDays(1 - ActivityStore::kKeptDays), today)));
}

void ActivityView::saveExport(const QString& suggested, const QByteArray& bytes) {
    const QString path = askSavePath(this, QDir::home().filePath(suggested));
    if (!path.isEmpty() && !AtomicFile::write(path, bytes))
        emit exportFailed(path);
}

} // namespace ostrel
