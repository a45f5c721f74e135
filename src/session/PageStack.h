#pragma once

#include <QStackedLayout>

namespace ostrel {

// A base view with pages over it: the page on top shows until it closes, then the one below.
// The control screen opens its settings pages this way while its session keeps running.
class PageStack : public QStackedLayout {
    Q_OBJECT
public:
    // `base` is shown while no page is open and never goes.
    PageStack(QWidget* base, QWidget* parent);

    // Takes ownership of `page`.
    void push(QWidget* page);
    void pop();
    // The page on top, or nullptr while the base shows.
    QWidget* top() const;
    int pageCount() const { return count() - 1; }
};

} // namespace ostrel
