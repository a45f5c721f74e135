#include "session/PresetButtonRow.h"

#include "session/DeskSession.h"
#include "session/HeldKeyOwner.h"
#include "session/PresetKeys.h"
#include "session/ShortcutsHeightSetVC.h"
#include "widgets/OMHoverButton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kPresetButtonSize{64, 64};
const QColor kHoverBackground = QColor::fromRgbF(0.945f, 0.945f, 0.945f);

} // namespace

PresetButtonRow::PresetButtonRow(DeskSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_tip(new QLabel(this)) {
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    row->addStretch();
    for (int slot = 0; slot < kPresetCount; ++slot) {
        auto* button = new OMHoverButton(PresetKeys::presetImageName(slot, false), this);
        button->setFixedSize(kPresetButtonSize);
        button->setRound(true);
        m_presets[std::size_t(slot)] = button;
        row->addWidget(button);
        connect(button, &OMHoverButton::touchHoverDwon, this, &PresetButtonRow::touchHoverDwon);
        connect(button, &OMHoverButton::touchHoverUp, this, &PresetButtonRow::touchHoverUp);
        connect(button, &OMHoverButton::longHoverPress, this, &PresetButtonRow::longHoverPress);
        connect(button, &OMHoverButton::hoverStart, this, &PresetButtonRow::hoverStart);
        connect(button, &OMHoverButton::hoverEnd, this, &PresetButtonRow::hoverEnd);
    }
    row->addStretch();
    m_tip->setAlignment(Qt::AlignCenter);
    m_tip->setMinimumHeight(m_tip->fontMetrics().height());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addLayout(row);
    layout->addWidget(m_tip);

    refreshPresetImages();
    connect(&session.presetKeys(), &PresetKeys::presetsChanged, this,
            &PresetButtonRow::refreshPresetImages);
    connect(&HeldKeyOwner::instance(), &HeldKeyOwner::keyChanged, this, [this](int type) {
        if (command::presetSlot(type) < 0)
            showPresetsReleased();
    });
}

QString PresetButtonRow::tipText() const {
    return m_tip->text();
}

void PresetButtonRow::touchHoverDwon(OMHoverButton* button) {
    if (const int slot = slotOf(button); slot >= 0) {
        m_session.presetKeys().holdPresetKey(slot);
        // Pressed for as long as its key goes out; an unset preset sends none.
        button->setActive(m_session.presetKeys().memory(slot) >= 1);
    }
}

void PresetButtonRow::touchHoverUp(OMHoverButton*) {
    m_session.presetKeys().releasePresetKey();
}

void PresetButtonRow::longHoverPress(OMHoverButton* button) {
    const int slot = slotOf(button);
    if (slot < 0 || !m_session.canSavePreset())
        return;
    QPointer<PresetKeys> presets(&m_session.presetKeys());
    ShortcutsHeightSetVC::present(this, PresetKeys::presetImageName(slot, true),
                                  PresetKeys::presetSaveTip(slot), [presets, slot] {
                                      if (presets)
                                          presets->actionSetMemoryKeyWithtype(
                                              command::presetKey(slot));
                                  });
}

void PresetButtonRow::hoverStart(OMHoverButton* button) {
    button->setBackgroundColor(kHoverBackground);
    const int slot = slotOf(button);
    m_tip->setText(slot >= 0 ? m_session.presetKeys().presetTipText(slot) : QString());
}

void PresetButtonRow::hoverEnd(OMHoverButton* button) {
    button->setBackgroundColor(QColor());
    m_tip->clear();
}

void PresetButtonRow::refreshPresetImages() {
    for (int slot = 0; slot < kPresetCount; ++slot)
        button(slot)->setImageName(
            PresetKeys::presetImageName(slot, m_session.presetKeys().memory(slot) >= 1));
}

void PresetButtonRow::showPresetsReleased() {
    for (OMHoverButton* preset : m_presets)
        preset->setActive(false);
}

int PresetButtonRow::slotOf(const QObject* button) const {
    const auto found = std::find(m_presets.begin(), m_presets.end(), button);
    return found == m_presets.end() ? -1 : int(found - m_presets.begin());
}

} // namespace ostrel
