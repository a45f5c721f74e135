#pragma once

#include "transport/TransportTestSupport.h"
#include "widgets/OMAlert.h"
#include "widgets/OMScreenRouter.h"

#include <QDir>
#include <QLabel>
#include <QStandardPaths>
#include <QStringList>
#include <memory>
#include <vector>

namespace ostrel::test {

// Screens over a virtual radio in virtual time, with an empty data folder. Alerts are recorded
// and answered with `alertAnswer`; the router records each screen it is asked for and makes a
// stand-in named after it, kept in `hosted` unless the test or the shell hosts screens itself.
class ShellTest : public TransportTest {
protected:
    void SetUp() override {
        TransportTest::SetUp();
        QDir documents(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        documents.removeRecursively();
        ASSERT_TRUE(documents.mkpath(QStringLiteral(".")));
        OMAlert::setPresenter([this](QWidget*, const OMAlertContent& content) {
            alerts.push_back(content);
            return alertAnswer;
        });
        OMScreenRouter& router = OMScreenRouter::instance();
        for (const char* name : {screens::kBluetoothSearch, screens::kNoBluetooth,
                                 screens::kDeskType, screens::kDeskControl})
            router.registerScreen(QString::fromLatin1(name), [this, name] {
                routed.append(QString::fromLatin1(name));
                auto* screen = new QLabel(QString::fromLatin1(name));
                screen->setObjectName(QString::fromLatin1(name));
                return screen;
            });
        router.setHost([this](QWidget* screen) { hosted.emplace_back(screen); });
    }

    void TearDown() override {
        OMAlert::setPresenter(nullptr);
        OMScreenRouter::instance().clear();
        hosted.clear();
        TransportTest::TearDown();
    }

    std::vector<OMAlertContent> alerts;
    int alertAnswer = OMAlert::kFirstButton;
    QStringList routed;
    std::vector<std::unique_ptr<QWidget>> hosted;
};

} // namespace ostrel::test
