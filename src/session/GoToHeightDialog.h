#pragma once

#include "session/GoToHeightSheet.h"

#include <QDialog>

class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace ostrel {

class GoToHeight;

// The go-to-height question: the height in the shown unit, with the desk's range beside it.
// Once a move starts it stays up and says so, with Stop, until the desk arrives or stops.
class GoToHeightDialog : public QDialog {
    Q_OBJECT
public:
    // The chosen value in the asked unit; true when the desk now moves.
    using Choose = std::function<bool(double value)>;

    GoToHeightDialog(QWidget* parent, const GoToHeightSheet::Question& question, GoToHeight& moves,
                     Choose choose, std::function<void()> stop);

    QDoubleSpinBox* heightField() const { return m_field; }
    QPushButton* goButton() const { return m_go; }
    QPushButton* stopButton() const { return m_stop; }
    bool showsMoving() const;
    QString rangeText() const;

    void accept() override;
    // Escape or the window's close while the desk moves stops it too.
    void reject() override;

private:
    QWidget* buildQuestion(const GoToHeightSheet::Question& question);
    QWidget* buildMoving();

    Choose m_choose;
    std::function<void()> m_stopFn;
    QString m_unit;
    QStackedWidget* m_pages;
    QLabel* m_range = nullptr;
    QDoubleSpinBox* m_field = nullptr;
    QPushButton* m_go = nullptr;
    QLabel* m_moving = nullptr;
    QPushButton* m_stop = nullptr;
};

} // namespace ostrel
