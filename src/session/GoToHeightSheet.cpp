#include "session/GoToHeightSheet.h"

#include "session/DeskHeightDisplay.h"

#include <QInputDialog>
#include <cmath>

namespace ostrel {

namespace {

constexpr int kDecimals = 1;

} // namespace

GoToHeightSheet::Presenter& GoToHeightSheet::presenter() {
    static Presenter installed;
    return installed;
}

GoToHeightSheet::Presenter GoToHeightSheet::setPresenter(Presenter replacement) {
    return std::exchange(presenter(), std::move(replacement));
}

void GoToHeightSheet::present(QWidget* host, GoToHeight::Limits limits, bool inches,
                              double currentTenthsCm, Chosen chosen) {
    const double tenthsPerUnit = inches ? 10.0 * DeskHeightDisplay::kCmPerInch : 10.0;
    const Question question{inches ? QStringLiteral("in") : QStringLiteral("cm"),
                            limits.minHeight / tenthsPerUnit, limits.maxHeight / tenthsPerUnit,
                            currentTenthsCm / tenthsPerUnit};
    const auto choose = [chosen, tenthsPerUnit](double value) {
        chosen(static_cast<int>(std::lround(value * tenthsPerUnit)));
    };
    if (presenter()) {
        if (const std::optional<double> answer = presenter()(question))
            choose(*answer);
        return;
    }
    auto* dialog = new QInputDialog(host->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setWindowTitle(tr("Go to a height"));
    dialog->setLabelText(tr("Move the desk to (%1):").arg(question.unit));
    dialog->setInputMode(QInputDialog::DoubleInput);
    dialog->setDoubleDecimals(kDecimals);
    dialog->setDoubleRange(question.minimum, question.maximum);
    dialog->setDoubleValue(question.current);
    QObject::connect(dialog, &QInputDialog::doubleValueSelected, dialog, choose);
    dialog->open();
}

} // namespace ostrel
