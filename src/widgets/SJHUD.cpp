#include "widgets/SJHUD.h"

namespace ostrel {

namespace {
constexpr int kMargin = 20;
constexpr qreal kCentre = 0.5;
constexpr qreal kHeightArea = 0.25;
} // namespace

SJHUD::SJHUD(const QString& text, QWidget* view) : QLabel(text, view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setStyleSheet(QStringLiteral("background-color: rgba(32, 36, 42, 225); color: white;"
                                 "border-radius: 8px; padding: 10px 16px;"));
}

SJHUD* SJHUD::showMessage(const QString& text, QWidget* view, Scheduler::Duration duration) {
    return show(text, view, duration, kCentre);
}

SJHUD* SJHUD::showHeightMessage(const QString& text, QWidget* view, Scheduler::Duration duration) {
    return show(text, view, duration, kHeightArea);
}

SJHUD* SJHUD::show(const QString& text, QWidget* view, Scheduler::Duration duration,
                   qreal verticalCentre) {
    for (SJHUD* previous : view->findChildren<SJHUD*>(Qt::FindDirectChildrenOnly))
        previous->dismiss();

    auto* toast = new SJHUD(text, view);
    toast->setMaximumWidth(qMax(view->width() - 2 * kMargin, kMargin));
    toast->adjustSize();
    const QPoint centre(view->width() / 2, qRound(view->height() * verticalCentre));
    toast->move(centre - toast->rect().center());
    toast->raise();
    toast->QLabel::show();
    Scheduler::instance().after(duration, toast, [toast] { toast->dismiss(); });
    return toast;
}

void SJHUD::dismiss() {
    hide();
    deleteLater();
}

} // namespace ostrel
