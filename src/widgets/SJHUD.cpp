#include "widgets/SJHUD.h"

namespace ostrel {

namespace {
constexpr int kMargin = 20;
constexpr int kHorizontalPadding = 16;
constexpr int kVerticalPadding = 10;
} // namespace

SJHUD::SJHUD(const QString& text, QWidget* view) : QLabel(text, view) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setStyleSheet(QStringLiteral("background-color: rgba(32, 36, 42, 225); color: white;"
                                 "border-radius: 8px;"));
    // Margins rather than a style sheet's padding: the label counts them when it wraps.
    setContentsMargins(kHorizontalPadding, kVerticalPadding, kHorizontalPadding, kVerticalPadding);
}

SJHUD* SJHUD::showMessage(const QString& text, QWidget* view, Scheduler::Duration duration) {
    return show(text, view, duration);
}

SJHUD* SJHUD::showHeightMessage(const QString& text, QWidget* view, Scheduler::Duration duration) {
    return show(text, view, duration);
}

SJHUD* SJHUD::show(const QString& text, QWidget* view, Scheduler::Duration duration) {
    for (SJHUD* previous : view->findChildren<SJHUD*>(Qt::FindDirectChildrenOnly))
        previous->dismiss();

    auto* toast = new SJHUD(text, view);
    toast->fitInto(view);
    toast->raise();
    toast->QLabel::show();
    Scheduler::instance().after(duration, toast, [toast] { toast->dismiss(); });
    return toast;
}

// One line when the text fits the view; a label left to size itself wraps far earlier.
void SJHUD::fitInto(const QWidget* view) {
    const int widest = qMax(view->width() - 2 * kMargin, kMargin);
    const int oneLine = fontMetrics().horizontalAdvance(text()) + 2 * kHorizontalPadding + 2;
    const int width = qMin(oneLine, widest);
    resize(width, heightForWidth(width));
    move((view->width() - width) / 2, view->height() - height() - kMargin);
}

void SJHUD::dismiss() {
    hide();
    deleteLater();
}

} // namespace ostrel
