#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

namespace ostrel {

// What an alert or confirmation sheet shows.
struct OMAlertContent {
    QString message;         // the bold first line
    QString informativeText; // the explanation below it
    QStringList buttons;     // left to right as read; the first is the default
    bool warning = false;
};

// Alerts and sheets. On screen they are window-modal message boxes that never block the caller;
// the answer arrives through `done` as 1000 + the button's index (1000 is the first button).
// Tests install a presenter instead, which answers at once, so no test ever waits on a dialog.
class OMAlert {
public:
    static constexpr int kFirstButton = 1000;
    using Done = std::function<void(int response)>;
    using Presenter = std::function<int(QWidget* parent, const OMAlertContent& content)>;

    static void show(QWidget* parent, const OMAlertContent& content, Done done = {});
    // Replaces the on-screen presentation (nullptr restores it) and returns the previous one.
    static Presenter setPresenter(Presenter presenter);
};

} // namespace ostrel
