#include "settings/ShortcutCommandsView.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>

namespace ostrel {

namespace {

constexpr char kProgramName[] = "ostrel-motion";

struct Action {
    const char* title;
    const char* arguments;
};

// The six keys' actions, then what only a command does.
constexpr Action kActions[] = {
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Up"), "--up"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Down"), "--down"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Sitting"), "--preset sit"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Standing"), "--preset stand"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "M1"), "--preset m1"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "M2"), "--preset m2"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Stop"), "--stop"},
    {QT_TRANSLATE_NOOP("ostrel::ShortcutCommandsView", "Move to 110 cm"), "--move-to 110"},
};

} // namespace

ShortcutCommandsView::ShortcutCommandsView(QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(12, 4, 12, 4);
    auto* intro = new QLabel(tr("Bind these commands to keys in your desktop's keyboard "
                                "settings; each acts as the shortcut would."),
                             this);
    intro->setWordWrap(true);
    grid->addWidget(intro, 0, 0, 1, 2);
    const QString prefix = program() + u' ';
    for (const Action& action : kActions)
        addRow({tr(action.title), prefix + QLatin1String(action.arguments)});
}

QString ShortcutCommandsView::program() {
    const QString self = QCoreApplication::applicationFilePath();
    const QString found = QStandardPaths::findExecutable(QLatin1String(kProgramName));
    if (!found.isEmpty() &&
        QFileInfo(found).canonicalFilePath() == QFileInfo(self).canonicalFilePath())
        return QLatin1String(kProgramName);
    return QFileInfo(self).fileName() == QLatin1String(kProgramName) ? self
                                                                     : QLatin1String(kProgramName);
}

// The title and its button on one line, the whole command below: commands do not wrap well.
void ShortcutCommandsView::addRow(const Command& command) {
    auto* grid = static_cast<QGridLayout*>(layout());
    const int row = grid->rowCount();
    auto* line = new QLabel(command.line, this);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* copy = new QPushButton(tr("Copy"), this);
    connect(copy, &QPushButton::clicked, this,
            [text = command.line] { QGuiApplication::clipboard()->setText(text); });
    grid->addWidget(new QLabel(command.title, this), row, 0);
    grid->addWidget(copy, row, 1);
    grid->addWidget(line, row + 1, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    m_commands.append(command);
    m_copyButtons.append(copy);
}

} // namespace ostrel
