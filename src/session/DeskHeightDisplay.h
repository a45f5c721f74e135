#pragma once

#include <QString>

namespace ostrel {

// How a reported desk height is shown: as text in the chosen unit and as the desk picture's
// layer offsets. Heights are tenths of a centimetre.
class DeskHeightDisplay {
public:
    // Reports below this are tenths of an inch from a controller set to inches.
    static constexpr double kInchReportLimit = 580.0;
    static constexpr double kCmPerInch = 2.54;

    // The leg segment lengths of a model's picture, in picture points.
    struct Legs {
        float fir;
        float sec;
    };
    struct Offsets {
        float top;
        float middle;
    };

    // The reported height as tenths of a centimetre, in text.
    static QString normalisedHeight(const QString& reported);
    // "72.4cm" or "28.5in".
    static QString heightText(double tenthsCm, bool inches);
    // The unit text of a height that is not known yet.
    static QString unknownHeightText(bool inches) { return heightText(0.0, inches); }
    // The user's unit choice from the system settings (a fresh installation shows inches).
    static bool usesInches();

    static Legs legsForModel(const QString& foldName);
    // Lowering the desk pushes the top and middle layers down; the end stops bound the picture
    // while the number still shows the true height. Single precision, as the picture is drawn.
    static Offsets pictureOffsets(float heightTenths, int minHeight, int maxHeight, Legs legs);
};

} // namespace ostrel
