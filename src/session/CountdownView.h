#pragma once

#include <QFrame>

class QLabel;

namespace ostrel {

class OMImageButton;

// The sit-stand countdown on the control screen: a clock, what it counts down to and the time
// left, on a rounded backing.
// Pointing at it reveals the clear button; so does Tab reaching that button.
class CountdownView : public QFrame {
    Q_OBJECT
public:
    explicit CountdownView(QWidget* parent = nullptr);

    QString text() const;
    OMImageButton* clearButton() const { return m_clear; }
    bool isClearRevealed() const;

    // Shows `label`, or hides the whole countdown.
    void setCountdown(const QString& label, bool shown);

signals:
    void clearClicked();

protected:
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void revealClear();

    QLabel* m_label;
    OMImageButton* m_clear;
    bool m_pointedAt = false;
};

} // namespace ostrel
