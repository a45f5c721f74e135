#include "session/HeightReadout.h"

#include "session/DeskHeightDisplay.h"
#include "session/OMTimeManager.h"
#include "store/CurrentDeskModel.h"

namespace ostrel {

void HeightReadout::show(const QString& height, int minHeight, int maxHeight) {
    // Compared by value: a redraw may spell the same height otherwise ("725", "725.000000").
    const double tenths = DeskHeightDisplay::normalisedHeight(height).toDouble();
    OMTimeManager& countdown = OMTimeManager::sharedInstance();
    if (tenths != m_shownTenths && countdown.time() > 0)
        countdown.setTime(0);
    m_shownTenths = tenths;
    m_shownReport = 0;

    const QString shown = DeskHeightDisplay::heightText(tenths, DeskHeightDisplay::usesInches());
    if (shown != m_shownText) {
        m_shownText = shown;
        emit heightShown(shown);
    }

    const auto offsets = DeskHeightDisplay::pictureOffsets(
        static_cast<float>(tenths), minHeight, maxHeight,
        DeskHeightDisplay::legsForModel(CurrentDeskModel::name()));
    emit deskOffsetsChanged(offsets.top, offsets.middle);
}

void HeightReadout::showReport(int height, int minHeight, int maxHeight) {
    if (height == m_shownReport)
        return;
    show(QString::number(height), minHeight, maxHeight);
    m_shownReport = height;
}

void HeightReadout::forget() {
    m_shownTenths = 0;
    m_shownReport = 0;
}

} // namespace ostrel
