#include "widgets/SJHUD.h"

#include "WidgetTestSupport.h"

#include <QPointer>

using namespace ostrel;
using std::chrono::milliseconds;

namespace {

class SJHUDTest : public test::VirtualTimeTest {
protected:
    SJHUDTest() { view.resize(400, 300); }

    QList<SJHUD*> toasts() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return view.findChildren<SJHUD*>();
    }

    QWidget view;
};

TEST_F(SJHUDTest, ShowsTheTextAtTheBottomOfTheViewForTheGivenTimeOnly) {
    QPointer<SJHUD> toast = SJHUD::showMessage("Setting successful", &view, milliseconds(1500));
    ASSERT_EQ(toasts(), QList<SJHUD*>{toast.data()});
    EXPECT_EQ(toast->text(), "Setting successful");
    EXPECT_FALSE(toast->isHidden());
    EXPECT_NEAR(toast->geometry().center().x(), view.rect().center().x(), 1);
    EXPECT_TRUE(view.rect().contains(toast->geometry()));
    EXPECT_GT(toast->geometry().top(), view.height() * 3 / 4) << "covers the middle of the view";

    at(1499);
    EXPECT_EQ(toasts().size(), 1);
    at(1500);
    EXPECT_TRUE(toasts().isEmpty());
}

TEST_F(SJHUDTest, ANewMessageReplacesTheOldOneAndKeepsItsOwnTime) {
    SJHUD::showMessage("Setting failed", &view, milliseconds(2000));
    at(1000);
    QPointer<SJHUD> second =
        SJHUD::showHeightMessage("Height presets not set", &view, milliseconds(2000));
    ASSERT_EQ(toasts(), QList<SJHUD*>{second.data()});
    EXPECT_GT(second->geometry().center().y(), view.rect().center().y());

    at(2000); // the first toast's time is up; it must not take the second one with it
    EXPECT_EQ(toasts(), QList<SJHUD*>{second.data()});
    at(3000);
    EXPECT_TRUE(toasts().isEmpty());
}

} // namespace
