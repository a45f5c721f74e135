#include "Tour.h"

#include "app/AppDelegate.h"
#include "app/OMBaseModalWindow.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QProcess>
#include <QScreen>

namespace ostrel {

namespace {

constexpr Scheduler::Duration kPollInterval{100};
constexpr int kMaxPolls = 200;

} // namespace

Tour::Tour(QString outDir, AppDelegate& delegate, DemoDesks& demo)
    : m_outDir(std::move(outDir)), m_delegate(delegate), m_demo(demo) {}

void Tour::run(std::deque<Step> steps) {
    m_steps = std::move(steps);
    next();
}

OMBaseModalWindow& Tour::home() {
    return *m_delegate.modalWindow();
}

void Tour::next() {
    if (m_steps.empty()) {
        QApplication::quit();
        return;
    }
    Step step = std::move(m_steps.front());
    m_steps.pop_front();
    if (step.action)
        step.action();
    whenReady(std::move(step), kMaxPolls);
}

void Tour::whenReady(Step step, int pollsLeft) {
    if (!step.ready() && pollsLeft > 0) {
        Scheduler::instance().after(kPollInterval, nullptr,
                                    [this, step, pollsLeft] { whenReady(step, pollsLeft - 1); });
        return;
    }
    if (pollsLeft == 0)
        qWarning("step %s: not ready in time", qPrintable(step.name));
    Scheduler::instance().after(step.settle, nullptr, [this, name = step.name] {
        if (!name.isEmpty())
            shoot(name);
        next();
    });
}

void Tour::shoot(const QString& name) const {
    const QString path = QDir(m_outDir).filePath(name + QStringLiteral(".png"));
    if (m_grim) {
        qInfo("%s %s", shootWithGrim(path) ? "saved" : "FAILED", qPrintable(path));
        return;
    }
    QRect area;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !qobject_cast<const QMenu*>(window))
            area = area.united(window->frameGeometry());
    }
    QScreen* screen = QGuiApplication::primaryScreen();
    const bool saved =
        screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(path);
    qInfo("%s %s", saved ? "saved" : "FAILED", qPrintable(path));
}

bool Tour::shootWithGrim(const QString& path) const {
    const QSize size = m_delegate.modalWindow()->size();
    return QProcess::execute(QStringLiteral("grim"),
                             {QStringLiteral("-g"),
                              QStringLiteral("0,0 %1x%2").arg(size.width()).arg(size.height()),
                              path}) == 0;
}

} // namespace ostrel
