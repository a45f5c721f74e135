#include "AppTestSupport.h"
#include "app/ScreenFactories.h"
#include "session/DeskControlVC.h"
#include "store/OMPlistManager.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QTest>

namespace ostrel::test {
namespace {

// The shell with the real screens: from launch to a desk under control.
class ShellFlowTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        ScreenFactories::registerAll();
    }

    template <class Screen> Screen* content() const {
        return qobject_cast<Screen*>(delegate->modalWindow()->content());
    }
};

TEST_F(ShellFlowTest, LaunchListsTheDeskAndAClickPutsItUnderControl) {
    VirtualDesk& desk = addDesk();
    launch();
    auto* search = content<BluetoothSearchVC>();
    ASSERT_TRUE(search);
    advance(1s);
    ASSERT_EQ(search->rows().size(), 1);

    QTest::mouseClick(search->rows().first(), Qt::LeftButton);
    advance(1s);
    ASSERT_TRUE(content<DeskControlVC>());
    EXPECT_TRUE(desk.isSubscribed());
    EXPECT_EQ(OMPlistManager::getBindDevice().size(), 1);
}

TEST_F(ShellFlowTest, LaunchWithTheRadioOffShowsTheNoBluetoothScreen) {
    central->setPowered(false);
    launch();
    EXPECT_TRUE(delegate->modalWindow()->content()->inherits("ostrel::NoBluetoothVC"));
}

} // namespace
} // namespace ostrel::test
