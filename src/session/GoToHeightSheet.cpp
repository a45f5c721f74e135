#include "session/GoToHeightSheet.h"

#include "session/DeskHeightDisplay.h"
#include "session/GoToHeightDialog.h"

#include <cmath>

namespace ostrel {

GoToHeightSheet::Presenter& GoToHeightSheet::presenter() {
    static Presenter installed;
    return installed;
}

GoToHeightSheet::Presenter GoToHeightSheet::setPresenter(Presenter replacement) {
    return std::exchange(presenter(), std::move(replacement));
}

void GoToHeightSheet::present(QWidget* host, GoToHeight::Limits limits, bool inches,
                              double currentTenthsCm, GoToHeight& moves, Chosen chosen,
                              std::function<void()> stop) {
    const double tenthsPerUnit = inches ? 10.0 * DeskHeightDisplay::kCmPerInch : 10.0;
    const Question question{inches ? QStringLiteral("in") : QStringLiteral("cm"),
                            limits.minHeight / tenthsPerUnit, limits.maxHeight / tenthsPerUnit,
                            currentTenthsCm / tenthsPerUnit};
    const auto choose = [chosen, tenthsPerUnit](double value) {
        return chosen(static_cast<int>(std::lround(value * tenthsPerUnit)));
    };
    if (presenter()) {
        if (const std::optional<double> answer = presenter()(question))
            choose(*answer);
        return;
    }
    auto* dialog = new GoToHeightDialog(host->window(), question, moves, choose, std::move(stop));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->open();
}

} // namespace ostrel
