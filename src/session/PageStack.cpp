#include "session/PageStack.h"

#include <QWidget>

namespace ostrel {

PageStack::PageStack(QWidget* base, QWidget* parent) : QStackedLayout(parent) {
    addWidget(base);
}

void PageStack::push(QWidget* page) {
    addWidget(page);
    setCurrentWidget(page);
}

void PageStack::pop() {
    QWidget* page = top();
    if (!page)
        return;
    removeWidget(page);
    setCurrentIndex(count() - 1);
    // The page may be closing itself from one of its own handlers.
    page->hide();
    page->deleteLater();
}

QWidget* PageStack::top() const {
    return pageCount() > 0 ? widget(count() - 1) : nullptr;
}

} // namespace ostrel
