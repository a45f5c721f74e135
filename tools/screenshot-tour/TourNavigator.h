#pragma once

#include "session/DeskControlVC.h"

#include <QWidget>
#include <functional>

namespace ostrel {

class Tour;
class VirtualDesk;

// How the tour's steps reach the home window's screens and pages, as a user would: what is on
// top, the control screen, the bound desk, and actions that do nothing unless their screen is
// the one showing (a busy machine may not have got there yet).
class TourNavigator {
public:
    using Action = std::function<void()>;

    explicit TourNavigator(Tour& tour) : m_tour(tour) {}

    Tour& tour() const { return m_tour; }
    QWidget& home() const;
    DeskControlVC* control() const;
    // The desk the application bound: the one it subscribed to.
    VirtualDesk& boundDesk() const;
    void logDesk() const;

    // The page on top of the control screen's stack, when it is a `Page`.
    template <class Page> Page* topPage() const {
        DeskControlVC* screen = control();
        return screen ? qobject_cast<Page*>(screen->topView()) : nullptr;
    }
    void closePages() const;
    void closeWindowsExceptHome() const;
    void clickFirstDesk() const;
    // Hides the error window the control screen opened, so the status line shows unobstructed.
    void hideErrorWindow() const;
    static bool promptShown();

    // Runs `action` on the control screen, when there is one.
    Action onControl(std::function<void(DeskControlVC&)> action) const;
    // Runs `action` on the page on top, when it is a `Page`.
    template <class Page> Action onPage(std::function<void(Page&)> action) const {
        return [this, action] {
            if (Page* page = topPage<Page>())
                action(*page);
        };
    }
    // Closes the page on top, then runs `action` on the one below, when it is a `Page`.
    template <class Page> Action backThen(std::function<void(Page&)> action) const {
        return [this, action] {
            if (DeskControlVC* screen = control())
                screen->popViewControl();
            onPage<Page>(action)();
        };
    }
    // Opens the settings menu from the control screen, with no other window in the way.
    Action openSettingsMenu() const;

private:
    Tour& m_tour;
};

} // namespace ostrel
