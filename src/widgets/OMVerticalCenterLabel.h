#pragma once

#include <QWidget>

namespace ostrel {

// One line of text centred vertically in whatever height the layout gives it. Text that does not
// fit is cut with an ellipsis and shown whole in the tool tip (desk names have no length limit).
class OMVerticalCenterLabel : public QWidget {
    Q_OBJECT
public:
    explicit OMVerticalCenterLabel(const QString& text = {}, QWidget* parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString& text);
    // Horizontal placement only; the vertical one is always centred.
    void setAlignment(Qt::Alignment horizontal);
    // The text as drawn at the current width.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateToolTip();

    QString m_text;
    Qt::Alignment m_alignment = Qt::AlignLeft;
};

} // namespace ostrel
