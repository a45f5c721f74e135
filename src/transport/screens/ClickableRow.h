#pragma once

#include <QWidget>

namespace ostrel {

// A list row that is clicked rather than selected, drawn as a rounded card that lights up
// while the pointer is over it. Tab reaches it; Space, Enter or Return click it.
class ClickableRow : public QWidget {
    Q_OBJECT
public:
    explicit ClickableRow(int height, QWidget* parent = nullptr);

    bool isHovered() const { return m_hovered; }

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setHovered(bool hovered);

    bool m_hovered = false;
};

} // namespace ostrel
