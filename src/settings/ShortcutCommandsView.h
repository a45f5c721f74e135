#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QPushButton;

namespace ostrel {

// Where the desktop lets no application take global keys (wlroots desktops, GNOME before its
// shortcut portal): the command for each action, with a "Copy" button, to bind to keys in the
// desktop's own keyboard settings. Each command talks to the running application.
class ShortcutCommandsView : public QWidget {
    Q_OBJECT
public:
    struct Command {
        QString title;
        QString line; // the whole command line, program included
    };

    explicit ShortcutCommandsView(QWidget* parent = nullptr);

    const QList<Command>& commands() const { return m_commands; }
    QPushButton* copyButton(int row) const { return m_copyButtons.value(row); }

    // How the desktop starts this program: its name when that is what the PATH finds, else
    // the whole path (a build that is not installed).
    static QString program();

private:
    void addRow(const Command& command);

    QList<Command> m_commands;
    QList<QPushButton*> m_copyButtons;
};

} // namespace ostrel
