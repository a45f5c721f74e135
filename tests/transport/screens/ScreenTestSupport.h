#pragma once

#include "store/CurrentDeskModel.h"
#include "transport/BluetoothCenterManager.h"
#include "transport/TransportTestSupport.h"
#include "widgets/OMAlert.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"
#include "widgets/WidgetTestSupport.h"

#include <QDir>
#include <QStandardPaths>
#include <QStringList>
#include <memory>
#include <ostream>

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace ostrel::test {

// The screens on a virtual radio in virtual time, inside a home window whose router records
// every screen it is asked for (and shows a plain stand-in for it), with alerts answered at once.
class ScreenTest : public TransportTest {
protected:
    void SetUp() override {
        TransportTest::SetUp();
        QDir documents(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        documents.removeRecursively();
        documents.mkpath(QStringLiteral("."));
        CurrentDeskModel::setName(QStringLiteral("D5"));

        home = std::make_unique<QWidget>();
        OMWindowIdentifier::assign(home.get(), OMWindowIdentifier::home());
        OMScreenRouter& router = OMScreenRouter::instance();
        for (const char* name : {screens::kBluetoothSearch, screens::kNoBluetooth,
                                 screens::kDeskType, screens::kDeskControl}) {
            router.registerScreen(QString::fromLatin1(name), [this, name] {
                routed.append(QString::fromLatin1(name));
                return new QWidget;
            });
        }
        router.setHost([this](QWidget* screen) { screen->setParent(home.get()); });
        OMAlert::setPresenter([this](QWidget*, const OMAlertContent& content) {
            alerts.push_back(content);
            return OMAlert::kFirstButton;
        });
        BluetoothCenterManager::setAlertHandler(
            [this](const QString&, const QString& text, const QString&) {
                radioAlerts.append(text);
            });
    }

    void TearDown() override {
        BluetoothCenterManager::setAlertHandler(nullptr);
        OMAlert::setPresenter(nullptr);
        OMScreenRouter::instance().clear();
        home.reset();
        TransportTest::TearDown();
    }

    static void click(QWidget* widget) {
        sendMouse(widget, QEvent::MouseButtonPress);
        sendMouse(widget, QEvent::MouseButtonRelease);
    }

    std::unique_ptr<QWidget> home;
    QStringList routed;
    std::vector<OMAlertContent> alerts;
    QStringList radioAlerts; // what the radio asked to tell the user
};

} // namespace ostrel::test
