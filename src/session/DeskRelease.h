#pragma once

#include <QObject>
#include <QString>

namespace ostrel {

class DeskLink;
class PlannedDisconnect;

// Letting go of the desk so that a phone or another computer can link it: every movement ends
// and the link goes once the desk heard no key, as a planned disconnect (no alert), and nothing
// links the desk again, neither the reconnection scan nor a write that finds no link, until the
// user connects it. The released state lasts for the run.
class DeskRelease : public QObject {
    Q_OBJECT
public:
    DeskRelease(DeskLink& link, PlannedDisconnect& disconnect, QObject* parent = nullptr);

    bool isReleased() const { return m_released; }
    void releaseDesk();
    // The reconnection scan links the desk again once it is in range.
    void connectDesk();
    // Whichever of the two the screen's and the tray's action offers now.
    void toggle();
    // Another desk was linked from the device list: that ends a release.
    void end();

    // "Release desk" or, while released, "Connect desk".
    static QString actionText(bool released);
    // The line beside "Connect desk" while released.
    static QString releasedText();
    // What releasing is for.
    static QString releaseHint();

signals:
    void releasedChanged(bool released);

private:
    DeskLink& m_link;
    PlannedDisconnect& m_disconnect;
    bool m_released = false;
};

} // namespace ostrel
