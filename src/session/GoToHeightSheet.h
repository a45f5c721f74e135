#pragma once

#include "session/GoToHeight.h"

#include <QString>
#include <functional>
#include <optional>

class QWidget;

namespace ostrel {

// Asks which height to move the desk to, in the unit the screen shows, within the desk's
// limits, then shows the move under way. Window-modal over the control screen, so a key held
// from the screen ends with it.
class GoToHeightSheet {
public:
    struct Question {
        QString unit;   // "cm" or "in"
        double minimum; // in that unit
        double maximum;
        double current;
    };
    // The chosen height, tenths of a centimetre; true when the desk now moves there.
    using Chosen = std::function<bool(int tenthsCm)>;
    // Tests answer at once with a value in the asked unit, or none for Cancel.
    using Presenter = std::function<std::optional<double>(const Question& question)>;

    // The dialog follows `moves` while the desk goes there, and offers `stop`.
    static void present(QWidget* host, GoToHeight::Limits limits, bool inches,
                        double currentTenthsCm, GoToHeight& moves, Chosen chosen,
                        std::function<void()> stop);
    // Returns the previous presenter; nullptr restores the dialog.
    static Presenter setPresenter(Presenter presenter);

private:
    static Presenter& presenter();
};

} // namespace ostrel
