#pragma once

#include <QPoint>
#include <QWidget>

class QLabel;
class QPushButton;

namespace ostrel {

// The small window that says a desk could not be paired. It has no title bar buttons: "Pair"
// is the only way out, and the window is moved by dragging its background.
class BluetoothConnectTipVC : public QWidget {
    Q_OBJECT
public:
    static QString windowIdentifier();

    // The tip already open, updated for `deskName`, or a new one belonging to `owner`; shown
    // window-modal over `owner`'s window. "Pair" closes it.
    static BluetoothConnectTipVC* showForDesk(QWidget* owner, const QString& deskName);
    static BluetoothConnectTipVC* find();

    QString message() const;
    QPushButton* pairButton() const { return m_buttonPair; }

signals:
    void pairClicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    explicit BluetoothConnectTipVC(QWidget* owner);
    void setDeskName(const QString& deskName);

    QLabel* m_labelMessage;
    QPushButton* m_buttonPair;
    QPoint m_dragOffset;
};

} // namespace ostrel
