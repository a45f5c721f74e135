#include "settings/ViewHomeAutomation.h"

#include "homeautomation/HomeAutomationBridge.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace ostrel {

namespace {

std::string flagText(const QCheckBox* box) {
    return box->isChecked() ? "1" : "0";
}

std::string fieldText(const QLineEdit* field) {
    return field->text().trimmed().toStdString();
}

} // namespace

ViewHomeAutomation::ViewHomeAutomation(DeskControlVC* fatherVC, HomeAutomationBridge& bridge)
    : OMSettingPage(fatherVC, tr("Home automation")), m_bridge(bridge),
      m_enabled(new QCheckBox(tr("Publish the desk to Home Assistant over MQTT"), this)),
      m_host(new QLineEdit(this)), m_port(new QLineEdit(this)), m_user(new QLineEdit(this)),
      m_password(new QLineEdit(this)), m_tls(new QCheckBox(tr("Use TLS"), this)),
      m_caFile(new QLineEdit(this)),
      m_allowControl(new QCheckBox(tr("Allow control from Home Assistant"), this)),
      m_status(new QLabel(this)), m_save(new QPushButton(tr("Save"), this)) {
    initView();
    loadSettings();
    refreshStatus();
    connect(&m_bridge, &HomeAutomationBridge::statusChanged, this,
            &ViewHomeAutomation::refreshStatus);
}

void ViewHomeAutomation::initView() {
    m_port->setInputMask(QStringLiteral("00000"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(tr("Unchanged"));
    m_caFile->setPlaceholderText(tr("The system's certificates"));
    m_status->setObjectName(QStringLiteral("homeAutomationStatus"));
    m_status->setWordWrap(true);

    auto* form = new QFormLayout;
    form->addRow(tr("Broker"), m_host);
    form->addRow(tr("Port"), m_port);
    form->addRow(tr("User name"), m_user);
    form->addRow(tr("Password"), m_password);
    form->addRow(QString(), m_tls);
    form->addRow(tr("CA file"), m_caFile);

    contentLayout()->addWidget(m_enabled);
    contentLayout()->addLayout(form);
    contentLayout()->addWidget(m_allowControl);
    contentLayout()->addSpacing(12);
    contentLayout()->addWidget(m_status);
    contentLayout()->addStretch();
    contentLayout()->addWidget(m_save, 0, Qt::AlignHCenter);
    connect(m_save, &QPushButton::clicked, this, &ViewHomeAutomation::actionSave);
}

void ViewHomeAutomation::loadSettings() {
    const Object_HomeAutomation& settings = m_bridge.settings();
    m_enabled->setChecked(HomeAutomationSettings::flag(settings.mqttEnabled));
    m_host->setText(HomeAutomationSettings::text(settings.mqttHost));
    m_port->setText(HomeAutomationSettings::text(settings.mqttPort));
    m_user->setText(HomeAutomationSettings::text(settings.mqttUser));
    m_tls->setChecked(HomeAutomationSettings::flag(settings.mqttTls));
    m_caFile->setText(HomeAutomationSettings::text(settings.mqttCaFile));
    m_allowControl->setChecked(HomeAutomationSettings::flag(settings.mqttAllowControl));
}

// A password field left as it was keeps the stored password.
void ViewHomeAutomation::actionSave() {
    Object_HomeAutomation settings;
    settings.mqttEnabled = flagText(m_enabled);
    settings.mqttAllowControl = flagText(m_allowControl);
    settings.mqttHost = fieldText(m_host);
    settings.mqttPort = fieldText(m_port);
    settings.mqttUser = fieldText(m_user);
    settings.mqttTls = flagText(m_tls);
    settings.mqttCaFile = fieldText(m_caFile);
    std::optional<QString> password;
    if (m_password->isModified())
        password = m_password->text();
    m_password->clear();
    m_password->setModified(false);
    m_bridge.applySettings(settings, password);
}

void ViewHomeAutomation::refreshStatus() {
    m_status->setText(m_bridge.statusText());
}

} // namespace ostrel
