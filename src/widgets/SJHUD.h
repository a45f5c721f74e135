#pragma once

#include "core/Scheduler.h"

#include <QLabel>

namespace ostrel {

// A short message over a view that goes away by itself. One toast per view: a new message
// replaces the one showing. It ignores the mouse, so it never blocks the controls under it.
class SJHUD : public QLabel {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kDefaultDuration{2000};

    // Centred in `view`.
    static SJHUD* showMessage(const QString& text, QWidget* view,
                              Scheduler::Duration duration = kDefaultDuration);
    // In the upper part of `view`, where the desk control screen shows the height.
    static SJHUD* showHeightMessage(const QString& text, QWidget* view,
                                    Scheduler::Duration duration = kDefaultDuration);

private:
    SJHUD(const QString& text, QWidget* view);
    static SJHUD* show(const QString& text, QWidget* view, Scheduler::Duration duration,
                       qreal verticalCentre);
    void dismiss();
};

} // namespace ostrel
