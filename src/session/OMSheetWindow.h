#pragma once

#include "widgets/OMWindowIdentifier.h"

#include <QWidget>

class QPushButton;

namespace ostrel {

// A borderless sheet over the home window, drawn with its own frame. Each kind of sheet
// has one window, found again by its identifier and reused. Escape cancels it; Enter presses
// the focused button, or else the default one. Its buttons stand in the desktop's order.
class OMSheetWindow : public QWidget {
    Q_OBJECT
public:
    // The sheet of that identifier, made over `host`'s window when there is none yet.
    template <class Sheet> static Sheet* findOrCreate(QWidget* host, const QString& identifier) {
        if (auto* sheet = qobject_cast<Sheet*>(OMWindowIdentifier::find(identifier)))
            return sheet;
        return new Sheet(host ? host->window() : nullptr);
    }

    // Window-modal, centred on the window it belongs to, in front.
    void presentCentred();

protected:
    OMSheetWindow(QWidget* parent, const QString& identifier);
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // What Escape does: by default the sheet just goes.
    virtual void cancelSheet();
    // The sheet's buttons in the order the desktop puts accept and cancel; `accept` is the
    // default. Either may be null.
    QWidget* buttonRow(QPushButton* accept, QPushButton* reject);
};

} // namespace ostrel
