#pragma once

#include "protocol/CommandType.h"

#include <QWidget>
#include <array>

class QLabel;

namespace ostrel {

class DeskSession;
class OMHoverButton;

// The control screen's four presets and the line below them: click to recall, long press to
// save, hover to read what the preset holds. Kept apart from the screen because the presets'
// gestures, pictures and tips are a whole of their own.
class PresetButtonRow : public QWidget {
    Q_OBJECT
public:
    static constexpr int kPresetCount = command::kPresetCount;

    explicit PresetButtonRow(DeskSession& session, QWidget* parent = nullptr);

    OMHoverButton* button(int slot) const { return m_presets[std::size_t(slot)]; }
    QString tipText() const;

    void touchHoverDwon(OMHoverButton* button);
    void touchHoverUp(OMHoverButton* button);
    void longHoverPress(OMHoverButton* button);

private:
    void hoverStart(OMHoverButton* button);
    void hoverEnd(OMHoverButton* button);
    void refreshPresetImages();
    // A preset looks pressed for as long as its key goes out, whoever ends it.
    void showPresetsReleased();
    int slotOf(const QObject* button) const;

    DeskSession& m_session;
    std::array<OMHoverButton*, kPresetCount> m_presets{};
    QLabel* m_tip;
};

} // namespace ostrel
