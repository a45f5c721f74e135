#pragma once

#include "core/Scheduler.h"

#include <QLabel>

namespace ostrel {

// A short message over a view that goes away by itself. One toast per view: a new message
// replaces the one showing. It ignores the mouse, so it never blocks the controls under it. It
// sits at the bottom of the view, clear of the height and the desk picture, as wide as its text
// needs, and wraps only a text wider than the view.
class SJHUD : public QLabel {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kDefaultDuration{2000};

    static SJHUD* showMessage(const QString& text, QWidget* view,
                              Scheduler::Duration duration = kDefaultDuration);
    // A message about a height: shown as every other, out of the way of the height itself.
    static SJHUD* showHeightMessage(const QString& text, QWidget* view,
                                    Scheduler::Duration duration = kDefaultDuration);

private:
    SJHUD(const QString& text, QWidget* view);
    static SJHUD* show(const QString& text, QWidget* view, Scheduler::Duration duration);
    void fitInto(const QWidget* view);
    void dismiss();
};

} // namespace ostrel
