#pragma once

#include "settings/OMSettingPage.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ostrel {

class HomeAutomationBridge;

// "Home automation": the MQTT broker the desk is published to, whether Home Assistant may move
// it, and how the connection is doing. Saving writes the settings file and the password (to the
// secret store, never the file) and reconnects.
class ViewHomeAutomation : public OMSettingPage {
    Q_OBJECT
public:
    ViewHomeAutomation(DeskControlVC* fatherVC, HomeAutomationBridge& bridge);

    QCheckBox* enabledBox() const { return m_enabled; }
    QLineEdit* hostField() const { return m_host; }
    QLineEdit* portField() const { return m_port; }
    QLineEdit* userField() const { return m_user; }
    QLineEdit* passwordField() const { return m_password; }
    QCheckBox* tlsBox() const { return m_tls; }
    QLineEdit* caFileField() const { return m_caFile; }
    QCheckBox* allowControlBox() const { return m_allowControl; }
    QLabel* statusLabel() const { return m_status; }

    void actionSave();

private:
    void initView();
    void loadSettings();
    void refreshStatus();

    HomeAutomationBridge& m_bridge;
    QCheckBox* m_enabled;
    QLineEdit* m_host;
    QLineEdit* m_port;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QCheckBox* m_tls;
    QLineEdit* m_caFile;
    QCheckBox* m_allowControl;
    QLabel* m_status;
    QPushButton* m_save;
};

} // namespace ostrel
