#pragma once

#include "store/CurrentDeskModel.h"
#include "support/ShellTestSupport.h"
#include "widgets/OMWindowIdentifier.h"
#include "widgets/WidgetTestSupport.h"

#include <ostream>

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace ostrel::test {

// The screens inside a home window whose router records every screen it is asked for (and
// shows a stand-in for it), with alerts answered at once.
class ScreenTest : public ShellTest {
protected:
    void SetUp() override {
        ShellTest::SetUp();
        CurrentDeskModel::setName(QStringLiteral("D5"));
        home = std::make_unique<QWidget>();
        OMWindowIdentifier::assign(home.get(), OMWindowIdentifier::home());
        OMScreenRouter::instance().setHost(
            [this](QWidget* screen) { screen->setParent(home.get()); });
    }

    void TearDown() override {
        home.reset();
        ShellTest::TearDown();
    }

    std::unique_ptr<QWidget> home;
};

} // namespace ostrel::test
