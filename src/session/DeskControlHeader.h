#pragma once

#include <QWidget>

namespace ostrel {

class CountdownView;
class OMHoverButton;
class OMImageButton;

// The control screen's top row: help, the reminder's countdown, the light strip (shown once the
// desk reports one) and the settings entry, which turns while hovered. It only tells what was
// clicked; the screen decides what that opens.
class DeskControlHeader : public QWidget {
    Q_OBJECT
public:
    explicit DeskControlHeader(QWidget* parent = nullptr);

    CountdownView* countdown() const { return m_countdown; }
    OMImageButton* help() const { return m_help; }
    OMImageButton* lightStrip() const { return m_lightStrip; }
    OMHoverButton* settings() const { return m_settings; }

signals:
    void helpRequested();
    void lightStripRequested();
    void settingsRequested();

private:
    void turnSettings(bool hovered);

    OMImageButton* m_help;
    CountdownView* m_countdown;
    OMImageButton* m_lightStrip;
    OMHoverButton* m_settings;
};

} // namespace ostrel
