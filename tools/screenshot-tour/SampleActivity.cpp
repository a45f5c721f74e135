#include "SampleActivity.h"

#include "session/ActivityRecorder.h"
#include "settings/ActivityView.h"
#include "sim/ActivitySample.h"
#include "store/ActivityStore.h"

#include <QVBoxLayout>

namespace ostrel {

SampleActivity::SampleActivity() = default;
SampleActivity::~SampleActivity() = default;

void SampleActivity::show() {
    m_store = std::make_unique<ActivityStore>(m_folder.filePath(QStringLiteral("a.sqlite")));
    ActivitySample::fill(*m_store, QDateTime::currentDateTime(), 30);
    m_recorder = std::make_unique<ActivityRecorder>(*m_store);
    m_window = std::make_unique<QWidget>();
    m_window->resize(460, 640);
    auto* view = new ActivityView(*m_recorder, m_window.get());
    view->setChartDays(30);
    (new QVBoxLayout(m_window.get()))->addWidget(view);
    m_window->show();
}

} // namespace ostrel
