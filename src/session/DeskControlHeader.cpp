#include "session/DeskControlHeader.h"

#include "core/Scheduler.h"
#include "session/CountdownView.h"
#include "widgets/OMHoverButton.h"

#include <QHBoxLayout>
#include <QPointer>

namespace ostrel {

namespace {

constexpr QSize kSmallButtonSize{28, 28};
constexpr qreal kSettingsTurnDegrees = -30.0;
constexpr Scheduler::Duration kSettingsTurnDuration{300};

} // namespace

DeskControlHeader::DeskControlHeader(QWidget* parent)
    : QWidget(parent), m_help(new OMImageButton(QStringLiteral("control_help"), this)),
      m_countdown(new CountdownView(this)),
      m_lightStrip(new OMImageButton(QStringLiteral("control_light"), this)),
      m_settings(new OMHoverButton(QStringLiteral("control_set_normal"), this)) {
    m_help->setToolTip(tr("How to Save Height Presets"));
    m_lightStrip->hide(); // until the desk reports a light strip
    for (QWidget* button : {static_cast<QWidget*>(m_help), static_cast<QWidget*>(m_lightStrip),
                            static_cast<QWidget*>(m_settings)})
        button->setFixedSize(kSmallButtonSize);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_help);
    row->addStretch();
    row->addWidget(m_countdown);
    row->addStretch();
    row->addWidget(m_lightStrip);
    row->addWidget(m_settings);

    connect(m_help, &QAbstractButton::clicked, this, &DeskControlHeader::helpRequested);
    connect(m_lightStrip, &QAbstractButton::clicked, this, &DeskControlHeader::lightStripRequested);
    connect(m_settings, &OMHoverButton::touchHoverDwon, this,
            &DeskControlHeader::settingsRequested);
    connect(m_settings, &OMHoverButton::hoverStart, this, [this] { turnSettings(true); });
    connect(m_settings, &OMHoverButton::hoverEnd, this, [this] { turnSettings(false); });
}

// The cog turns while hovered and shows its resting picture once back.
void DeskControlHeader::turnSettings(bool hovered) {
    if (hovered) {
        m_settings->setImageName(QStringLiteral("control_set"));
        m_settings->turnTo(kSettingsTurnDegrees, kSettingsTurnDuration);
        return;
    }
    QPointer<OMHoverButton> settings(m_settings);
    m_settings->turnTo(0.0, kSettingsTurnDuration, [settings] {
        if (settings)
            settings->setImageName(QStringLiteral("control_set_normal"));
    });
}

} // namespace ostrel
